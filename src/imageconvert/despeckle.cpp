// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/despeckle.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

// True when a larger mark comes within `reach` pixels of the speck's box.
bool besideLargerMark(const cv::Mat& labels, const cv::Mat& stats, int speck, const cv::Rect& box, int reach,
                      int largestSpeck)
{
    const cv::Rect around =
        cv::Rect(box.x - reach, box.y - reach, box.width + 2 * reach, box.height + 2 * reach) &
        cv::Rect(0, 0, labels.cols, labels.rows);
    for (int y = around.y; y < around.br().y; ++y) {
        const int* row = labels.ptr<int>(y);
        for (int x = around.x; x < around.br().x; ++x) {
            const int other = row[x];
            if (other != 0 && other != speck &&
                std::max(stats.at<int>(other, cv::CC_STAT_WIDTH), stats.at<int>(other, cv::CC_STAT_HEIGHT)) >
                    largestSpeck)
                return true;
        }
    }
    return false;
}

} // namespace

cv::Mat despeckled(const cv::Mat& twoLevel, int size, double dpi)
{
    if (size < 1)
        return twoLevel;
    const int largest = std::max(1, static_cast<int>(std::lround(size * dpi / 300)));
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(255 - twoLevel, labels, stats, centres, 8, CV_32S);
    cv::Mat out = twoLevel.clone();
    for (int i = 1; i < count; ++i) {
        const int* s = stats.ptr<int>(i);
        const cv::Rect box(s[cv::CC_STAT_LEFT], s[cv::CC_STAT_TOP], s[cv::CC_STAT_WIDTH],
                           s[cv::CC_STAT_HEIGHT]);
        if (std::max(box.width, box.height) > largest)
            continue;
        // Tiny dots go even beside letters; a mark half as large as the limit may be a dot of the script.
        const bool tiny = std::max(box.width, box.height) <= (largest + 1) / 2;
        if (!tiny && besideLargerMark(labels, stats, i, box, 3 * largest, largest))
            continue;
        out(box).setTo(255, labels(box) == i);
    }
    return out;
}

} // namespace imageconvert
