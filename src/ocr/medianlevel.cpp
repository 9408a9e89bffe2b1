// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/medianlevel.h"

#include <opencv2/imgproc.hpp>

int medianLevel(const cv::Mat& levels)
{
    const int channel = 0, bins = 256;
    const float range[] = {0, 256};
    const float* ranges = range;
    cv::Mat histogram;
    cv::calcHist(&levels, 1, &channel, cv::noArray(), histogram, 1, &bins, &ranges);
    double below = 0;
    int level = 0;
    while (level < bins - 1 && (below += histogram.at<float>(level)) < levels.total() / 2.0)
        ++level;
    return level;
}
