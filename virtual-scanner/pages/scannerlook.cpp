// SPDX-License-Identifier: GPL-3.0-or-later
#include "scannerlook.h"

#include <QPainter>
#include <QVector>

namespace scannerlook {

namespace {

// A small generator whose sequence is the same on every machine (xorshift, Marsaglia 2003).
class Noise
{
public:
    explicit Noise(quint32 seed) : m_state(seed * 2654435761u | 1u) {}
    quint32 next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return m_state;
    }
    // About normal, standard deviation 2: the sum of four uniform values.
    int grain()
    {
        const quint32 bits = next();
        return int((bits & 7) + (bits >> 8 & 7) + (bits >> 16 & 3) + (bits >> 24 & 3)) - 10;
    }

private:
    quint32 m_state;
};

int clamped(int value)
{
    return qBound(0, value, 255);
}

// Loss of light in grey levels at `place` of `length` pixels: none in the middle, 6 at both ends.
int falloff(int place, int length)
{
    const double fromMiddle = 2.0 * place / length - 1.0;
    return qRound(6 * fromMiddle * fromMiddle * fromMiddle * fromMiddle);
}

} // namespace

QImage onDarkBed(const QImage& sheet, double degrees)
{
    QImage bed(kWidth, kHeight, QImage::Format_RGB32);
    bed.fill(QColor(46, 47, 50));
    QPainter painter(&bed);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(kWidth / 2.0, kHeight / 2.0);
    painter.rotate(degrees);
    painter.drawImage(QPointF(-sheet.width() / 2.0, -sheet.height() / 2.0), sheet);
    return bed;
}

QImage blankBack(const QImage& front)
{
    QImage back(front.size(), QImage::Format_RGB32);
    back.fill(Qt::white);
    QPainter painter(&back);
    painter.setOpacity(0.02);
    painter.drawImage(0, 0, front.mirrored(true, false));
    painter.setOpacity(1);
    Noise noise(7);
    for (int speck = 0; speck < 6; ++speck) {
        const int x = int(noise.next() % uint(back.width()));
        const int y = int(noise.next() % uint(back.height()));
        painter.fillRect(x, y, 2, 3, QColor(150, 148, 144));
    }
    return back;
}

QImage scanned(const QImage& page, quint32 seed)
{
    QImage picture = page.convertToFormat(QImage::Format_RGB32);
    QVector<int> columnLoss(picture.width());
    for (int x = 0; x < picture.width(); ++x)
        columnLoss[x] = falloff(x, picture.width());
    Noise noise(seed);
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        const int rowLoss = falloff(y, picture.height());
        for (int x = 0; x < picture.width(); ++x) {
            const int change = noise.grain() - rowLoss - columnLoss[x];
            row[x] = qRgb(clamped(qRed(row[x]) - 5 + change), clamped(qGreen(row[x]) - 6 + change),
                          clamped(qBlue(row[x]) - 10 + change));
        }
    }
    picture.setDotsPerMeterX(11811); // 300 dpi
    picture.setDotsPerMeterY(11811);
    return picture;
}

} // namespace scannerlook
