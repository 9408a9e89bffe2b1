// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QImage>
#include <QString>
#include <opencv2/core.hpp>

// Chinese text drawn as a page scanned straight would show it. Needs a QGuiApplication.
namespace drawntext {

QString story(); // about 230 characters of plain prose

QFont font(int pixelSize);

QImage paper(int width, int height);

// Fills `page` with lines of the text, over and over, within the margin.
void fillLines(QImage& page, const QString& text, int pixelSize, int margin);

// The same in columns read from top to bottom and from right to left.
void fillColumns(QImage& page, const QString& text, int pixelSize, int margin);

cv::Mat toMat(const QImage& image); // CV_8UC3, BGR

} // namespace drawntext
