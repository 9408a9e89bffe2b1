// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/copyfaxproperty.h"

#include "config/settingtable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>

copyfaxproperty::copyfaxproperty(const QString& group, QWidget* parent)
    : SettingsDialog(tr("复印属性"),
                     tr("这些设置只保存下来，随模板一起载入，供您打印时参考；本程序把图像保存到文件夹，"
                        "不直接打印。"),
                     group, parent),
      m_copies(new QSpinBox(this)), m_paper(new QComboBox(this)), m_color(new QComboBox(this)),
      m_sides(new QComboBox(this)), m_fit(new QCheckBox(tr("缩放到纸张大小(&F)"), this)),
      m_zoom(new QSpinBox(this)), m_collate(new QCheckBox(tr("逐份打印(&T)"), this))
{
    m_copies->setRange(1, 999);
    m_copies->setSuffix(tr(" 份"));
    m_zoom->setRange(25, 400);
    m_zoom->setSuffix(tr(" %"));
    for (const char* paper : {"A4", "A5", "B5", "Letter", "Legal"})
        m_paper->addItem(QLatin1String(paper));
    m_color->addItems({tr("彩色"), tr("灰阶"), tr("黑白")});
    m_sides->addItems({tr("单面"), tr("双面，沿长边翻转"), tr("双面，沿短边翻转")});
    auto* form = new QFormLayout;
    addRow(form, tr("份数(&N):"), m_copies, keys::copies, tr("每一页打印多少份"));
    addRow(form, tr("纸张(&P):"), m_paper, keys::printPaper, tr("打印机中的纸张"));
    addRow(form, tr("颜色(&L):"), m_color, keys::printColor, tr("打印时使用的颜色"));
    addRow(form, tr("双面(&S):"), m_sides, keys::printDuplex, tr("纸的一面还是两面都打印"));
    addRow(form, QString(), m_fit, keys::fitPaper, tr("图像放大或缩小到正好占满纸张"));
    addRow(form, tr("缩放比例(&Z):"), m_zoom, keys::zoom, tr("不缩放到纸张大小时使用的比例"));
    addRow(form, QString(), m_collate, keys::collate, tr("打印多份时，一份打印完再打印下一份"));
    body()->addLayout(form);
    binding().bind(keys::copies, m_copies);
    binding().bind(keys::zoom, m_zoom);
    binding().bind(keys::fitPaper, m_fit);
    binding().bind(keys::printPaper, m_paper);
    binding().bind(keys::printColor, m_color);
    binding().bind(keys::printDuplex, m_sides);
    binding().bind(keys::collate, m_collate);
    showStored();
}

void copyfaxproperty::valuesChanged()
{
    m_zoom->setEnabled(!m_fit->isChecked());
    m_collate->setEnabled(m_copies->value() > 1);
}
