// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/compressset.h"

#include "config/settingtable.h"
#include "forms/beforeafter.h"
#include "imaging/pageoptions.h"
#include "imaging/pagepipeline.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLocale>
#include <QSlider>
#include <QVBoxLayout>

namespace {

EffectPreview::Result compressed(const SamplePage& sample, const QString& folder, ColorMode mode,
                                 const QString& type, int value)
{
    const auto compression = [=](int strength) {
        return [=](ImageConvertFunction& library, MagickWand* image) {
            PageOptions options;
            options.colorMode = mode;
            image = PagePipeline(library, {}).convertColorMode(image, options);
            return library.imageCompress(image, type, QString::number(strength));
        };
    };
    const QString file = folder + QStringLiteral("after.") + type;
    EffectPreview::Result result;
    if (!renderEffect(sample.detail, sample.dpi, compression(value), file))
        return result;
    result.picture.load(file);
    // a high level is too slow for a page on every move of the slider
    const int quick = type == QLatin1String("png") ? qMin(value, 1) : value;
    const qint64 bytes = estimatedBytes(sample, QFileInfo(file).size(), compression(quick), type, folder);
    if (bytes > 0)
        result.text = CompressSet::tr("这一页的文件约 %1。").arg(QLocale().formattedDataSize(bytes, 1));
    return result;
}

} // namespace

CompressSet::CompressSet(QWidget* parent)
    : SettingsDialog(
          tr("文件压缩"),
          tr("JPEG 的质量越高，图像越接近原样，文件也越大；PNG 不损失图像，级别越高文件越小，保存越慢。"),
          QLatin1String(groups::fileCompress), parent),
      m_same(new QCheckBox(tr("各种颜色使用相同的设置(&S)"), this)),
      m_preview(new BeforeAfter(Qt::Horizontal, this))
{
    auto* form = new QFormLayout;
    m_same->setObjectName(QLatin1String(keys::sameCompress));
    m_same->setToolTip(tr("灰阶和黑白图像也使用彩色图像的设置"));
    form->addRow(m_same);
    add(form, tr("彩色 JPEG 质量(&J):"), keys::colorJpg, ColorMode::Color, "jpg", tr("彩色 JPEG"));
    add(form, tr("灰阶 JPEG 质量(&G):"), keys::grayJpg, ColorMode::Grey, "jpg", tr("灰阶 JPEG"));
    add(form, tr("黑白 JPEG 质量(&B):"), keys::wbJpg, ColorMode::BlackAndWhite, "jpg", tr("黑白 JPEG"));
    add(form, tr("彩色 PNG 级别(&P):"), keys::colorTif, ColorMode::Color, "png", tr("彩色 PNG"));
    add(form, tr("灰阶 PNG 级别(&N):"), keys::grayTif, ColorMode::Grey, "png", tr("灰阶 PNG"));
    body()->addLayout(form);
    body()->addWidget(m_preview, 1);
    binding().bind(keys::sameCompress, m_same);
    showStored();
}

void CompressSet::add(QFormLayout* form, const QString& label, const char* key, ColorMode mode,
                      const char* type, const QString& name)
{
    const bool jpeg = qstrcmp(type, "jpg") == 0;
    QSlider* slider = addSlider(form, label, key, jpeg ? 1 : 0, jpeg ? 100 : 9,
                                jpeg ? tr("1 至 100：数值越大，图像越清晰，文件越大")
                                     : tr("0 至 9：数值越大，文件越小，保存越慢；图像没有损失"));
    binding().bindText(key, slider);
    const int index = m_qualities.size();
    connect(slider, &QSlider::valueChanged, this, [this, index] { m_shown = index; });
    m_qualities.push_back({slider, mode, type, name});
}

void CompressSet::valuesChanged()
{
    for (const Quality& quality : m_qualities)
        quality.slider->setEnabled(!m_same->isChecked() || quality.mode == ColorMode::Color);
    showQuality();
}

void CompressSet::showQuality()
{
    const Quality& quality = m_qualities.at(m_shown);
    const ColorMode mode = quality.mode;
    const QString type = QLatin1String(quality.type);
    const int value = quality.slider->value();
    m_preview->show([=](const SamplePage& sample,
                        const QString& folder) { return compressed(sample, folder, mode, type, value); },
                    tr("处理后（%1，%2）").arg(quality.name).arg(value));
}
