// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/papersizeset.h"

#include "config/settingtable.h"
#include "forms/papersketch.h"
#include "imaging/pageoptions.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

namespace {

constexpr int kUnitsPerMm = 10; // the file holds hundredths of a centimetre

QDoubleSpinBox* lengthBox(QWidget* parent)
{
    const Setting* setting = table(groups::scanScanPaperSize).find(keys::width);
    auto* box = new QDoubleSpinBox(parent);
    box->setRange(setting->min / kUnitsPerMm, setting->max / kUnitsPerMm);
    box->setDecimals(1);
    box->setSuffix(PaperSizeSet::tr(" 毫米"));
    return box;
}

} // namespace

PaperSizeSet::PaperSizeSet(const QString& group, QWidget* parent)
    : SettingsDialog(tr("自定义纸张大小"),
                     tr("页面按 A4（210 × 297 毫米）扫描，再裁切成这里设定的大小；不能超过 A4。"), group,
                     parent),
      m_usual(new QComboBox(this)), m_width(lengthBox(this)), m_height(lengthBox(this)),
      m_topLeft(new QRadioButton(tr("从左上角开始(&U)"), this)),
      m_middle(new QRadioButton(tr("在页面中间(&M)"), this)), m_sketch(new PaperSketch(this))
{
    addControls();
    bindMillimetres(keys::width, m_width);
    bindMillimetres(keys::height, m_height);
    bindPlace();
    connect(m_usual, QOverload<int>::of(&QComboBox::activated), this, &PaperSizeSet::takeUsualSize);
    showStored();
}

void PaperSizeSet::addControls()
{
    m_usual->addItem(tr("选择常用大小"));
    m_usual->addItem(tr("身份证 85.6 × 54"), QSizeF(85.6, 54));
    m_usual->addItem(tr("名片 90 × 54"), QSizeF(90, 54));
    m_usual->addItem(tr("A6 105 × 148"), QSizeF(105, 148));
    m_usual->addItem(tr("大 32 开 140 × 203"), QSizeF(140, 203));
    m_usual->addItem(tr("16 开 184 × 260"), QSizeF(184, 260));
    auto* form = new QFormLayout;
    addRow(form, tr("常用大小(&S):"), m_usual, "usualSize", tr("把常用的大小填入下面的宽度和高度"));
    addRow(form, tr("宽度(&W):"), m_width, keys::width, tr("裁切出的页面的宽度，A4 的宽度是 210 毫米"));
    addRow(form, tr("高度(&H):"), m_height, keys::height, tr("裁切出的页面的高度，A4 的高度是 297 毫米"));
    m_topLeft->setObjectName(QLatin1String(keys::leftUp));
    m_topLeft->setToolTip(tr("保留扫描图像左上角的部分"));
    m_middle->setObjectName(QStringLiteral("middle"));
    m_middle->setToolTip(tr("保留扫描图像正中间的部分"));
    form->addRow(tr("裁切位置:"), m_topLeft);
    form->addRow(QString(), m_middle);
    auto* columns = new QHBoxLayout;
    columns->addLayout(form);
    columns->addSpacing(12);
    columns->addWidget(m_sketch, 1);
    body()->addLayout(columns);
    m_result = addHelp(QString());
    m_result->setObjectName(QStringLiteral("resultLabel"));
}

void PaperSizeSet::bindMillimetres(const char* key, QDoubleSpinBox* box)
{
    const int whenMissing = table(group()).find(key)->factory.toInt();
    binding().bind(
        key,
        [=](const QSettings& settings) {
            const int stored = readInt(settings, key);
            box->setValue((stored > 0 ? stored : whenMissing) / double(kUnitsPerMm));
        },
        [=] { return qRound(box->value() * kUnitsPerMm); });
}

void PaperSizeSet::bindPlace()
{
    binding().bind(
        keys::leftUp,
        [this](const QSettings& settings) {
            (readBool(settings, keys::leftUp) ? m_topLeft : m_middle)->setChecked(true);
        },
        [this] { return m_topLeft->isChecked(); });
}

void PaperSizeSet::takeUsualSize(int item)
{
    const QSizeF size = m_usual->itemData(item).toSizeF();
    if (size.isEmpty())
        return;
    m_width->setValue(size.width());
    m_height->setValue(size.height());
}

void PaperSizeSet::valuesChanged()
{
    constexpr double kMmPerCm = 10;
    const auto cut = customCut({true, m_width->value() / kMmPerCm, m_height->value() / kMmPerCm, true});
    const QSizeF size = cut ? QSizeF(cut->widthCm, cut->heightCm) * kMmPerCm : QSizeF();
    m_sketch->setCut(size, m_topLeft->isChecked());
    if (!cut)
        m_result->setText(tr("这个大小不裁切：保留 A4 整页。宽度要小于 210 毫米，或高度小于 297 毫米。"));
    else if (size == QSizeF(m_width->value(), m_height->value()))
        m_result->setText(
            tr("页面将裁切为 %1 × %2 毫米。").arg(size.width(), 0, 'f', 1).arg(size.height(), 0, 'f', 1));
    else
        m_result->setText(tr("超过 A4 的一边按 A4 计算：页面将裁切为 %1 × %2 毫米。")
                              .arg(size.width(), 0, 'f', 1)
                              .arg(size.height(), 0, 'f', 1));
}
