// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/outputset.h"

#include "config/settingtable.h"
#include "output/extracopy.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

OutputSet::OutputSet(const Output& output, QWidget* parent)
    : SettingsDialog(tr("输出图像"),
                     output.images ? tr("扫描一页得到哪些图像，以及双面稿件的反面怎样放置。")
                                   : tr("双面稿件的反面在文档中怎样放置。"),
                     QLatin1String(groups::wholeSet), parent),
      m_given(output), m_color(new QComboBox(this)), m_grey(new QComboBox(this)), m_bw(new QComboBox(this)),
      m_copies(new QCheckBox(tr("输出多张图像(&M)"), this)), m_greyDpi(resolutionCombo()),
      m_bwDpi(resolutionCombo()), m_backs(new QComboBox(this))
{
    for (QComboBox* format : {m_color, m_grey, m_bw})
        format->addItems(output.formats);
    m_color->setCurrentIndex(output.colorFormat);
    m_grey->setCurrentIndex(output.greyFormat);
    m_bw->setCurrentIndex(output.bwFormat);
    m_copies->setChecked(output.copies);
    addImageControls();
    m_backs->addItems({tr("长边翻页（反面不旋转）"), tr("短边翻页（反面旋转 180 度）")});
    auto* form = new QFormLayout;
    addRow(form, tr("双面翻页方式(&L):"), m_backs, keys::longShortRotate,
           tr("只用于 PDF 和 OCR：短边翻页的稿件，反面旋转 180 度后与正面方向一致"));
    body()->addLayout(form);
    binding().bind(keys::fGrayDpi, m_greyDpi);
    binding().bind(keys::fWBDpi, m_bwDpi);
    binding().bind(keys::longShortRotate, m_backs);
    showStored();
}

void OutputSet::addImageControls()
{
    auto* formats = new QGroupBox(tr("文件类型"), this);
    auto* form = new QFormLayout(formats);
    addRow(form, tr("彩色(&R):"), m_color, keys::fileColor, tr("彩色图像保存成的文件类型"));
    addRow(form, tr("灰阶(&G):"), m_grey, keys::fileGrey, tr("灰阶图像保存成的文件类型"));
    addRow(form, tr("黑白(&B):"), m_bw, keys::fileBW, tr("黑白图像保存成的文件类型"));
    auto* copies = new QGroupBox(tr("另存的图像"), this);
    form = new QFormLayout(copies);
    m_copies->setObjectName(QLatin1String(keys::outMutiImg));
    m_copies->setToolTip(tr("每一页除了原来的图像，再保存颜色更少的图像"));
    form->addRow(m_copies);
    addRow(form, tr("灰阶图像分辨率(&Y):"), m_greyDpi, keys::fGrayDpi, tr("另存的灰阶图像的分辨率"));
    addRow(form, tr("黑白图像分辨率(&H):"), m_bwDpi, keys::fWBDpi, tr("另存的黑白图像的分辨率"));
    m_result = new QLabel(copies);
    m_result->setObjectName(QStringLiteral("resultLabel"));
    form->addRow(m_result);
    formats->setVisible(!m_given.formats.isEmpty());
    copies->setVisible(m_given.images);
    body()->addWidget(formats);
    body()->addWidget(copies);
}

QComboBox* OutputSet::resolutionCombo()
{
    auto* combo = new QComboBox(this);
    for (int index = 0; index < kExtraCopyDpis; ++index)
        combo->addItem(QStringLiteral("%1 dpi").arg(extraCopyDpi(index)));
    return combo;
}

OutputSet::Output OutputSet::output() const
{
    return {m_given.images,         m_given.formats,      m_color->currentIndex(),
            m_grey->currentIndex(), m_bw->currentIndex(), m_copies->isChecked()};
}

void OutputSet::setOwnDefaults()
{
    for (QComboBox* format : {m_color, m_grey, m_bw})
        format->setCurrentIndex(0);
    m_copies->setChecked(false);
}

void OutputSet::valuesChanged()
{
    m_greyDpi->setEnabled(m_copies->isChecked());
    m_bwDpi->setEnabled(m_copies->isChecked());
    const QString none = tr("每一页保存一张图像。");
    m_result->setText(m_copies->isChecked() ? tr("彩色扫描另存灰阶（%1）和黑白（%2）各一张，\n"
                                                 "灰阶扫描另存黑白（%2）一张，黑白扫描不另存。")
                                                  .arg(m_greyDpi->currentText(), m_bwDpi->currentText())
                                            : none + QLatin1Char('\n'));
}
