// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawnpages.h"

#include <QFile>
#include <opencv2/imgproc.hpp>

namespace drawn {

cv::Mat page(const PageSpec& spec)
{
    cv::Mat out(spec.size, CV_8UC3, spec.paper);
    const cv::Scalar ink = spec.paper * (1 - 0.92 * spec.inkShare);
    cv::RNG random(11);
    const int margin = spec.size.width / 10, pitch = std::max(8, spec.size.height / 40), height = pitch / 2;
    for (int line = 0; line < spec.lines; ++line) {
        const int y = margin + line * pitch;
        if (y + pitch > spec.size.height - margin)
            break;
        const int end = spec.size.width - margin - (line % 5 == 4 ? spec.size.width / 3 : 0);
        // Box-like characters with a few strokes each.
        for (int x = margin; x + height < end; x += height + height / 4) {
            const int stroke = std::max(1, height / 8);
            for (int s = 0; s < 3; ++s) {
                const int at = y + random.uniform(0, height - stroke);
                cv::rectangle(out, {x, at, height - 2, stroke}, ink, cv::FILLED);
            }
            const int at = x + random.uniform(0, height - 2 - stroke);
            cv::rectangle(out, {at, y, stroke, height}, ink, cv::FILLED);
        }
    }
    cv::GaussianBlur(out, out, cv::Size(), 0.6);
    addNoise(out, spec.noise);
    return out;
}

cv::Mat photograph(const cv::Size& size)
{
    cv::RNG random(5);
    cv::Mat coarse(7, 5, CV_8UC3), out;
    random.fill(coarse, cv::RNG::UNIFORM, 20, 235);
    cv::resize(coarse, out, size, 0, 0, cv::INTER_CUBIC);
    for (int i = 0; i < 12; ++i)
        cv::circle(out, {random.uniform(0, size.width), random.uniform(0, size.height)},
                   random.uniform(size.width / 30, size.width / 8),
                   cv::Scalar(random.uniform(0, 255), random.uniform(0, 255), random.uniform(0, 255)),
                   cv::FILLED, cv::LINE_AA);
    addNoise(out, 3);
    return out;
}

cv::Mat onBed(const cv::Mat& page, double degrees, const cv::Size& bed, const cv::Scalar& bedColour,
              const cv::Point& shift)
{
    cv::Mat turn = cv::getRotationMatrix2D({page.cols / 2.0f, page.rows / 2.0f}, -degrees, 1.0);
    turn.at<double>(0, 2) += (bed.width - page.cols) / 2.0 + shift.x;
    turn.at<double>(1, 2) += (bed.height - page.rows) / 2.0 + shift.y;
    cv::Mat out;
    cv::warpAffine(page, out, turn, bed, cv::INTER_CUBIC, cv::BORDER_CONSTANT, bedColour);
    addNoise(out, 1.5, 3);
    return out;
}

cv::Mat turned(const cv::Mat& page, double degrees)
{
    const cv::Mat turn = cv::getRotationMatrix2D({page.cols / 2.0f, page.rows / 2.0f}, -degrees, 1.0);
    cv::Mat out;
    cv::warpAffine(page, out, turn, page.size(), cv::INTER_CUBIC, cv::BORDER_REPLICATE);
    return out;
}

void addNoise(cv::Mat& picture, double sigma, int seed)
{
    cv::RNG random(static_cast<uint64_t>(seed));
    cv::Mat noise(picture.size(), CV_16SC(picture.channels()));
    random.fill(noise, cv::RNG::NORMAL, 0, sigma);
    cv::add(picture, noise, picture, cv::noArray(), picture.type());
}

double darkShare(const cv::Mat& grey, int level)
{
    return cv::countNonZero(grey < level) / static_cast<double>(grey.total());
}

double meanDifference(const cv::Mat& a, const cv::Mat& b)
{
    cv::Mat difference;
    cv::absdiff(a, b, difference);
    const cv::Scalar mean = cv::mean(difference);
    return a.channels() == 1 ? mean[0] : (mean[0] + mean[1] + mean[2]) / 3;
}

void writePnm(const QString& path, const cv::Mat& picture, const char* magicEnd)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(picture.channels() == 3 ? "P6" : "P5");
    file.write(magicEnd);
    file.write(QByteArray::number(picture.cols) + ' ' + QByteArray::number(picture.rows) + "\n255\n");
    for (int y = 0; y < picture.rows; ++y)
        file.write(reinterpret_cast<const char*>(picture.ptr(y)),
                   static_cast<qint64>(picture.cols) * static_cast<qint64>(picture.elemSize()));
}

} // namespace drawn
