// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"

#include <QPainter>

namespace drawntext {

QString story()
{
    return QStringLiteral(
        "清晨的江边还笼罩着薄雾，渡口的老人已经把木船推进水里。远处的山坡上，几个孩子赶着羊群慢慢往上走，"
        "笑声顺着风飘过来。县里的档案馆今年要把全部旧文件整理一遍，图书馆也派了几位同志前去帮忙。大家先把"
        "发黄的纸页一张一张铺平，再按照年份放进新的盒子，中午就在院子里的大树下面吃饭休息。下午下了一场小"
        "雨，空气变得清凉，窗外的麦田显得更加翠绿。负责登记的王老师仔细核对每一个编号，遇到看不清楚的地方"
        "就请同事一起辨认，直到天色完全暗下来才锁门回家。");
}

QFont font(int pixelSize)
{
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(pixelSize);
    return font;
}

QImage paper(int width, int height)
{
    QImage page(width, height, QImage::Format_RGB888);
    page.fill(QColor(247, 246, 242));
    return page;
}

void fillLines(QImage& page, const QString& text, int pixelSize, int margin)
{
    QPainter painter(&page);
    painter.setFont(font(pixelSize));
    const int perLine = (page.width() - 2 * margin) / pixelSize;
    int from = 0;
    for (int y = margin; y + pixelSize < page.height() - margin; y += pixelSize * 8 / 5) {
        QString line;
        while (line.size() < perLine)
            line += text.at(from++ % text.size());
        painter.drawText(margin, y + pixelSize, line);
    }
}

void fillColumns(QImage& page, const QString& text, int pixelSize, int margin)
{
    QPainter painter(&page);
    painter.setFont(font(pixelSize));
    int from = 0;
    for (int x = page.width() - margin - pixelSize; x > margin; x -= pixelSize * 8 / 5)
        for (int y = margin; y + pixelSize < page.height() - margin; y += pixelSize)
            painter.drawText(x, y + pixelSize, text.mid(from++ % text.size(), 1));
}

cv::Mat toMat(const QImage& image)
{
    const QImage bgr = image.convertToFormat(QImage::Format_BGR888);
    return cv::Mat(bgr.height(), bgr.width(), CV_8UC3, const_cast<uchar*>(bgr.constBits()),
                   static_cast<std::size_t>(bgr.bytesPerLine()))
        .clone();
}

} // namespace drawntext
