// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/pageframe.h"

#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"
#include "ocr/layout.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kFrameDpi = 300;

} // namespace

LoadedPage loadPage(const QString& file)
{
    LoadedPage page;
    try {
        const imageconvert::ReadResult read =
            imageconvert::readPicture(QFile::encodeName(file).toStdString());
        page.pixels = read.pixels;
        if (page.pixels.channels() == 3)
            cv::cvtColor(page.pixels, page.pixels, cv::COLOR_RGB2BGR);
        page.dpi = read.dpi > 0 ? read.dpi : imageconvert::guessDpi(page.pixels.size());
    } catch (const std::exception& error) {
        page.pixels.release();
        page.problem = QString::fromUtf8(error.what());
    }
    return page;
}

cv::Mat layOnFrame(const cv::Mat& page, double dpi)
{
    if (page.empty() || page.size() == kPageFrame)
        return page;
    const double fit = std::min(static_cast<double>(kPageFrame.width) / page.cols,
                                static_cast<double>(kPageFrame.height) / page.rows);
    const double factor = std::min(dpi > 0 ? kFrameDpi / dpi : 1.0, fit);
    const cv::Size size(std::clamp(static_cast<int>(std::lround(page.cols * factor)), 1, kPageFrame.width),
                        std::clamp(static_cast<int>(std::lround(page.rows * factor)), 1, kPageFrame.height));
    cv::Mat frame(kPageFrame, page.type(), cv::Scalar::all(255));
    cv::Mat place = frame(cv::Rect(cv::Point(), size));
    if (size == page.size())
        page.copyTo(place);
    else
        cv::resize(page, place, size, 0, 0, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    return frame;
}
