// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/effectpreview.h"

#include <QCoreApplication>
#include <QFont>
#include <QPainter>
#include <QRandomGenerator>
#include <utility>

namespace {

constexpr int kDrawnDpi = 300;

// A page to show something on before anything has been scanned: type of two sizes on yellowish paper, a seal
// and specks.
QImage drawnPage()
{
    QImage page(1240, 1748, QImage::Format_RGB888); // A6
    page.fill(QColor(238, 232, 214));
    QPainter painter(&page);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font;
    const QString line = QCoreApplication::translate("EffectPreview", "文件扫描示例：笔画、底色和杂点");
    painter.setPen(QColor(70, 70, 74));
    for (int row = 0; row < 22; ++row) {
        font.setPixelSize(row % 4 == 0 ? 58 : 40);
        painter.setFont(font);
        painter.drawText(120, 160 + row * 72, line);
    }
    painter.setPen(QPen(QColor(196, 40, 44), 8));
    painter.drawEllipse(QPoint(420, 480), 130, 130);
    QRandomGenerator random(1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(60, 60, 60));
    for (int speck = 0; speck < 2200; ++speck) {
        const int size = 1 + random.bounded(4);
        painter.drawRect(random.bounded(page.width()), random.bounded(page.height()), size, size);
    }
    return page;
}

SamplePage drawnSample(const QString& folder)
{
    const SamplePage made = readSample(folder);
    if (made.good())
        return made;
    const QString file = folder + QStringLiteral("drawn.ppm");
    if (!drawnPage().save(file) || !makeSample(file, kDrawnDpi, folder))
        return {};
    return readSample(folder);
}

} // namespace

EffectPreview::EffectPreview(QObject* parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

EffectPreview::~EffectPreview()
{
    m_waiting = nullptr;
    m_pool.waitForDone();
}

void EffectPreview::request(Work work)
{
    m_waiting = std::move(work);
    if (!m_busy)
        begin();
}

void EffectPreview::begin()
{
    m_busy = true;
    const QString folder = m_folder.isValid() ? m_folder.path() + QLatin1Char('/') : QString();
    m_pool.start([this, folder, work = std::exchange(m_waiting, nullptr)] {
        const bool usable = !folder.isEmpty(); // else there is no place for files
        const SamplePage last = lastPage();
        const SamplePage sample = last.good() || !usable ? last : drawnSample(folder);
        const QImage before(sample.detail);
        const Result after = sample.good() && usable ? work(sample, folder) : Result();
        QMetaObject::invokeMethod(
            this, [=] { finished(before, after, !last.good()); }, Qt::QueuedConnection);
    });
}

void EffectPreview::finished(const QImage& before, const Result& after, bool drawn)
{
    m_busy = false;
    if (m_waiting)
        begin();
    emit ready(before, after, drawn);
}
