// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/noiseset.h"

#include "config/settingtable.h"
#include "forms/beforeafter.h"
#include "imaging/pageoptions.h"
#include "imaging/pagepipeline.h"

#include <QComboBox>
#include <QFormLayout>
#include <QSlider>
#include <QVBoxLayout>

namespace {

constexpr int kCustom = 1; // of both modes

} // namespace

NoiseSet::NoiseSet(const QString& group, const Modes& modes, QWidget* parent)
    : SettingsDialog(tr("杂点与阈值"),
                     tr("只用于黑白扫描：阈值决定多深的颜色变成黑色，去除杂点会擦掉零散的小黑点。"), group,
                     parent),
      m_ownNoiseMode(!modes.noise), m_thresholdMode(new QComboBox(this)), m_noiseMode(new QComboBox(this)),
      m_noiseLevel(new QComboBox(this)), m_preview(new BeforeAfter(Qt::Horizontal, this))
{
    addControls();
    bindControls();
    m_thresholdMode->setCurrentIndex(qBound(0, modes.threshold, kCustom));
    if (modes.noise)
        m_noiseMode->setCurrentIndex(*modes.noise);
    showStored();
}

void NoiseSet::addControls()
{
    m_thresholdMode->addItems({tr("自动"), tr("自定义")});
    m_noiseMode->addItems({tr("无"), tr("自定义"), tr("自动")});
    for (int level = 1; level <= 3; ++level)
        m_noiseLevel->addItem(tr("%1 级：不超过 %2 点").arg(level).arg(noiseSize(kCustom, level)));
    auto* form = new QFormLayout;
    addRow(form, tr("黑白阈值(&T):"), m_thresholdMode, "thresholdMode",
           tr("自动时使用中等的阈值，适合大多数文件"));
    m_threshold = addSlider(form, tr("自定义阈值(&V):"), keys::WBThreshold, 0, 255,
                            tr("数值越大，变成黑色的内容越多；太大时底色也会变黑，太小时笔画会断开"));
    addRow(form, tr("去除杂点(&N):"), m_noiseMode, keys::noiseMode,
           tr("自动时去除不超过 3 点的杂点；笔画旁边的点会保留"));
    addRow(form, tr("杂点级别(&L):"), m_noiseLevel, keys::noiseThreshold,
           tr("自定义时去除多大的杂点（300 dpi 下的点数）；1 级去除得最多"));
    body()->addLayout(form);
    body()->addWidget(m_preview, 1);
}

void NoiseSet::bindControls()
{
    binding().bind(keys::WBThreshold, m_threshold);
    binding().bind(
        keys::noiseThreshold,
        [this](const QSettings& settings) {
            const int level = readInt(settings, keys::noiseThreshold);
            m_noiseLevel->setCurrentIndex(qBound(1, level, m_noiseLevel->count()) - 1);
        },
        [this] { return m_noiseLevel->currentIndex() + 1; });
    if (m_ownNoiseMode)
        binding().bind(keys::noiseMode, m_noiseMode);
}

NoiseSet::Modes NoiseSet::modes() const
{
    return {m_thresholdMode->currentIndex(), m_noiseMode->currentIndex()};
}

void NoiseSet::setOwnDefaults()
{
    m_thresholdMode->setCurrentIndex(0);
    if (!m_ownNoiseMode)
        m_noiseMode->setCurrentIndex(0);
}

void NoiseSet::valuesChanged()
{
    const bool customThreshold = m_thresholdMode->currentIndex() == kCustom;
    m_threshold->setEnabled(customThreshold);
    m_noiseLevel->setEnabled(m_noiseMode->currentIndex() == kCustom);
    PageOptions options;
    options.colorMode = ColorMode::BlackAndWhite;
    if (customThreshold)
        options.blackWhiteThreshold = m_threshold->value();
    options.noiseSize = noiseSize(m_noiseMode->currentIndex(), m_noiseLevel->currentIndex() + 1);
    m_preview->showEffect(
        [options](ImageConvertFunction& library, MagickWand* image) {
            return PagePipeline(library, {}).convertColorMode(image, options);
        },
        tr("处理后（黑白）"));
}
