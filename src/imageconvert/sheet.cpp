// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/sheet.h"

#include "imageconvert/geometry.h"
#include "imageconvert/sheetedges.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kRingMm = 1.2;           // the strip along the frame in which the bed is looked for
constexpr double kDarkBedShare = 0.05;    // of the ring
constexpr double kLightBedShare = 0.62;   // of the ring that must be of one even colour
constexpr double kBedContrast = 40;       // grey levels from a dark bed to the paper
constexpr double kLeastSheetShare = 0.03; // of the frame
constexpr double kFullMm = 1.5;           // a sheet that comes this near to all sides fills the frame
constexpr double kLeastConfirmed = 0.7;
constexpr double kLeastRectangle = 0.88; // of the rectangle's visible area that is not bed

constexpr double kShadowMm = 4;        // what lies beside a sheet: its shadow, a rough edge
constexpr int kStrokeContrast = 25;    // grey levels
constexpr double kMostStrokesMm2 = 12; // six small characters
constexpr double kBedChroma = 30;      // levels between a bed's channels

// The ring's places, a little inside of the frame since the outermost pixels are often odd.
cv::Mat ringMask(const cv::Size& size, double dpi)
{
    const int width = std::max(2, static_cast<int>(std::lround(kRingMm * dpi / 25.4)));
    cv::Mat ring(size, CV_8UC1, cv::Scalar(255));
    const cv::Rect inner(width, width, size.width - 2 * width, size.height - 2 * width);
    if (inner.width > 0 && inner.height > 0)
        ring(inner).setTo(0);
    ring.row(0).setTo(0);
    ring.row(size.height - 1).setTo(0);
    ring.col(0).setTo(0);
    ring.col(size.width - 1).setTo(0);
    return ring;
}

// Grey levels counted, with an optional mask.
class Levels
{
public:
    explicit Levels(const cv::Mat& grey, const cv::Mat& mask = {})
    {
        for (int y = 0; y < grey.rows; ++y) {
            const uchar* row = grey.ptr(y);
            const uchar* use = mask.empty() ? nullptr : mask.ptr(y);
            for (int x = 0; x < grey.cols; ++x)
                if (!use || use[x])
                    ++m_counts[row[x]];
        }
    }
    int below(int level) const { return std::accumulate(m_counts, m_counts + std::clamp(level, 0, 256), 0); }
    int total() const { return below(256); }
    // The level that `count` pixels do not exceed.
    int level(double count) const
    {
        int sum = 0;
        for (int i = 0; i < 256; ++i) {
            sum += m_counts[i];
            if (sum > count)
                return i;
        }
        return 255;
    }

private:
    int m_counts[256] = {};
};

// The parts of a mask that reach the ring.
cv::Mat reachingRing(const cv::Mat& mask, const cv::Mat& ring)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(mask, labels, 4, CV_32S);
    std::vector<int> touching(static_cast<size_t>(count), 0);
    std::vector<cv::Point> places;
    cv::findNonZero(ring, places);
    for (const cv::Point& p : places)
        ++touching[static_cast<size_t>(labels.at<int>(p))];
    cv::Mat out(mask.size(), CV_8UC1, cv::Scalar(0));
    for (int y = 0; y < labels.rows; ++y) {
        const int* label = labels.ptr<int>(y);
        uchar* to = out.ptr(y);
        for (int x = 0; x < labels.cols; ++x)
            to[x] = label[x] != 0 && touching[static_cast<size_t>(label[x])] >= 6 ? 255 : 0;
    }
    return out;
}

// Bed darker than the paper; empty when there is none.
cv::Mat darkBed(const cv::Mat& grey, const cv::Mat& ring)
{
    const Levels all(grey), rim(grey, ring);
    const double paper = all.level(all.total() * 0.95);
    const double count = rim.below(static_cast<int>(paper - kBedContrast));
    if (count < kDarkBedShare * rim.total())
        return {};
    const double level = rim.level(count / 2);
    // An even bed; a picture that runs over the frame is not.
    if (rim.level(count * 0.8) - rim.level(count * 0.2) > 30)
        return {};
    return reachingRing(grey < (level + paper) / 2, ring);
}

struct Plane
{
    double a = 0, b = 0, c = 0; // level = a x + b y + c
    double at(double x, double y) const { return a * x + b * y + c; }
};

// Robust plane through the ring's levels of one channel: least squares, three times without the outliers.
Plane ringPlane(const cv::Mat& level, const cv::Mat& ring, double* scatter)
{
    Plane plane;
    const Levels levels(level, ring);
    plane.c = levels.level(levels.total() / 2.0);
    std::vector<cv::Point> places;
    cv::findNonZero(ring, places);
    double bound = 14;
    for (int round = 0; round < 5; ++round) {
        cv::Matx33d normal = cv::Matx33d::zeros();
        cv::Vec3d right(0, 0, 0);
        double sum = 0, count = 0;
        for (const cv::Point& p : places) {
            const double v = level.at<uchar>(p), rest = v - plane.at(p.x, p.y);
            if (std::abs(rest) > bound)
                continue;
            const cv::Vec3d row(p.x, p.y, 1);
            normal += row * row.t();
            right += row * v;
            sum += rest * rest;
            ++count;
        }
        if (count < 100)
            break;
        const cv::Vec3d solved = normal.solve(right, cv::DECOMP_CHOLESKY);
        plane = {solved[0], solved[1], solved[2]};
        *scatter = std::sqrt(sum / count);
        bound = std::max(3.0, 3 * *scatter);
    }
    return plane;
}

// Bed of one even light colour; empty when the ring is not of one colour.
cv::Mat lightBed(const cv::Mat& colour, const cv::Mat& ring)
{
    std::vector<cv::Mat> channels;
    cv::split(colour, channels);
    cv::Mat other(colour.size(), CV_8UC1, cv::Scalar(0));
    for (const cv::Mat& channel : channels) {
        double scatter = 1;
        const Plane plane = ringPlane(channel, ring, &scatter);
        const double bound = std::max(3.0, 4 * scatter);
        for (int y = 0; y < colour.rows; ++y) {
            const uchar* from = channel.ptr(y);
            uchar* to = other.ptr(y);
            for (int x = 0; x < colour.cols; ++x)
                to[x] |= std::abs(from[x] - plane.at(x, y)) > bound ? 255 : 0;
        }
    }
    const double even = cv::countNonZero(ring & ~other) / std::max(1.0, double(cv::countNonZero(ring)));
    if (even < kLightBedShare)
        return {};
    cv::Mat closed;
    cv::morphologyEx(other, closed, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    cv::morphologyEx(closed, closed, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    return reachingRing(255 - closed, ring);
}

// The convex hull of the largest thing that is not bed; empty when it is too small.
std::vector<cv::Point> sheetHull(const cv::Mat& bed)
{
    cv::Mat labels, stats, centres, sheet = 255 - bed;
    cv::morphologyEx(sheet, sheet, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    const int count = cv::connectedComponentsWithStats(sheet, labels, stats, centres, 4, CV_32S);
    int largest = 0;
    for (int i = 1; i < count; ++i)
        if (largest == 0 || stats.at<int>(i, cv::CC_STAT_AREA) > stats.at<int>(largest, cv::CC_STAT_AREA))
            largest = i;
    std::vector<cv::Point> hull;
    if (largest == 0 ||
        stats.at<int>(largest, cv::CC_STAT_AREA) < kLeastSheetShare * static_cast<double>(bed.total()))
        return hull;
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(labels == largest, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    if (!contours.empty())
        cv::convexHull(contours.front(), hull);
    return hull;
}

// Direction of the sides that do not lie on the frame: the angle that gathers most of the hull's length.
double hullAngle(const std::vector<cv::Point>& hull, const cv::Size& size)
{
    struct Edge
    {
        double angle, length;
    };
    std::vector<Edge> edges;
    for (size_t i = 0; i < hull.size(); ++i) {
        const cv::Point a = hull[i], b = hull[(i + 1) % hull.size()];
        const auto onFrame = [&](int p, int q, int end) {
            return (p <= 2 && q <= 2) || (p >= end - 3 && q >= end - 3);
        };
        if (onFrame(a.x, b.x, size.width) || onFrame(a.y, b.y, size.height))
            continue;
        const double angle = std::atan2(b.y - a.y, b.x - a.x) * 180 / CV_PI;
        edges.push_back({angle - 90 * std::round(angle / 90), std::hypot(b.x - a.x, b.y - a.y)});
    }
    double best = 0, bestLength = 0;
    for (const Edge& centre : edges) {
        double length = 0, sum = 0;
        for (const Edge& e : edges) {
            double turn = e.angle - centre.angle;
            turn -= 90 * std::round(turn / 90);
            if (std::abs(turn) < 1.2) {
                length += e.length;
                sum += e.length * turn;
            }
        }
        if (length > bestLength) {
            bestLength = length;
            best = centre.angle + sum / length;
        }
    }
    return best - 90 * std::round(best / 90);
}

TurnedRect around(const std::vector<cv::Point>& hull, double angleDeg)
{
    TurnedRect rect;
    rect.angleDeg = angleDeg;
    rect.sides = {1e9, -1e9, 1e9, -1e9};
    const double c = std::cos(angleDeg * CV_PI / 180), s = std::sin(angleDeg * CV_PI / 180);
    for (const cv::Point& p : hull) {
        const double u = p.x * c + p.y * s, v = p.y * c - p.x * s;
        rect.sides[0] = std::min(rect.sides[0], u);
        rect.sides[1] = std::max(rect.sides[1], u);
        rect.sides[2] = std::min(rect.sides[2], v);
        rect.sides[3] = std::max(rect.sides[3], v);
    }
    return rect;
}

cv::Mat maskOf(const TurnedRect& rect, const cv::Size& size, double grow)
{
    std::vector<cv::Point> corners;
    const auto& s = rect.sides;
    for (const cv::Point2d& p :
         {rect.toPicture(s[0] - grow, s[2] - grow), rect.toPicture(s[1] + grow, s[2] - grow),
          rect.toPicture(s[1] + grow, s[3] + grow), rect.toPicture(s[0] - grow, s[3] + grow)})
        corners.emplace_back(cvRound(p.x), cvRound(p.y));
    cv::Mat mask(size, CV_8UC1, cv::Scalar(0));
    cv::fillConvexPoly(mask, corners, cv::Scalar(255));
    return mask;
}

// How many sides of the sheet lie on the frame.
int sidesOnFrame(const TurnedRect& rect, const cv::Size& size, double dpi)
{
    const double near = kFullMm * dpi / 25.4;
    if (std::abs(rect.angleDeg) >= 0.25)
        return 0;
    return (rect.sides[0] <= near) + (rect.sides[2] <= near) + (rect.sides[1] >= size.width - 1 - near) +
           (rect.sides[3] >= size.height - 1 - near);
}

// Square millimetres of strokes outside of the sheet: dark ones, with `bright` bright ones. `marginMm` beside
// it do not count.
double strokesOutside(const Reduced& reduced, const TurnedRect& rect, double marginMm, bool bright)
{
    const double pxPerMm = reduced.dpi / 25.4;
    const int widest = static_cast<int>(std::lround(2.5 * pxPerMm)) | 1;
    cv::Mat without, strokes;
    cv::morphologyEx(reduced.grey, without, bright ? cv::MORPH_OPEN : cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {widest, widest}), {-1, -1}, 1,
                     cv::BORDER_REPLICATE);
    cv::absdiff(without, reduced.grey, strokes);
    const cv::Mat outside = ~maskOf(rect, reduced.grey.size(), marginMm * pxPerMm);
    return cv::countNonZero((strokes > kStrokeContrast) & outside) / (pxPerMm * pxPerMm);
}

// A dark band at one end of a page, coloured or with writing on it, is printed; a bed is neither.
bool isPrinted(const cv::Mat& colour, const cv::Mat& bed)
{
    if (colour.channels() != 3)
        return false;
    const cv::Scalar mean = cv::mean(colour, bed);
    return std::max({mean[0], mean[1], mean[2]}) - std::min({mean[0], mean[1], mean[2]}) > kBedChroma;
}

// Why cutting to the sheet might lose something; null when nothing speaks against it.
const char* objection(const Reduced& reduced, const TurnedRect& rect, const cv::Mat& bed, bool dark)
{
    const cv::Size frame = reduced.grey.size();
    const double inside = cv::countNonZero(maskOf(rect, frame, -2));
    const cv::Mat outside = ~maskOf(rect, frame, kShadowMm * reduced.dpi / 25.4);
    if (cv::countNonZero(outside & ~bed) > 0.01 * inside)
        return "more than one thing on the bed";
    if (dark && sidesOnFrame(rect, frame, reduced.dpi) == 3 && isPrinted(reduced.colour, bed))
        return "a coloured band of the page rather than bed";
    // The shadow beside a sheet is no stroke, and on a dark bed there is none to see.
    const bool black = dark && cv::mean(reduced.grey, bed)[0] < 90;
    if (strokesOutside(reduced, rect, black ? 1 : kShadowMm, false) > kMostStrokesMm2 ||
        (dark && strokesOutside(reduced, rect, kShadowMm, true) > kMostStrokesMm2))
        return "writing outside of what looks like a sheet";
    return nullptr;
}

Sheet unsure(const char* reason)
{
    Sheet sheet;
    sheet.reason = reason;
    return sheet;
}

} // namespace

Sheet Sheet::scaled(int factor) const
{
    Sheet out = *this;
    out.centre = {(centre.x + 0.5) * factor - 0.5, (centre.y + 0.5) * factor - 0.5};
    out.size = {size.width * factor, size.height * factor};
    return out;
}

Sheet detectSheet(const Reduced& reduced)
{
    const cv::Size frame = reduced.grey.size();
    if (std::min(frame.width, frame.height) < 40)
        return unsure("too small");
    const cv::Mat ring = ringMask(frame, reduced.dpi);
    cv::Mat grey;
    cv::blur(reduced.grey, grey, {3, 3});
    cv::Mat bed = darkBed(grey, ring);
    const bool dark = !bed.empty();
    if (!dark) {
        cv::Mat colour;
        cv::blur(reduced.colour, colour, {3, 3});
        bed = lightBed(colour, ring);
    }
    if (bed.empty())
        return unsure("no bed along the frame");
    const std::vector<cv::Point> hull = sheetHull(bed);
    if (hull.size() < 3)
        return unsure("no sheet");
    const EdgeReport edges = refineEdges(reduced.colour, around(hull, hullAngle(hull, frame)), reduced.dpi);
    const TurnedRect& rect = edges.rect;
    if (sidesOnFrame(rect, frame, reduced.dpi) == 4)
        return unsure("the sheet fills the frame");
    const double minimum = 25 * reduced.dpi / 25.4;
    if (rect.width() < minimum || rect.height() < minimum)
        return unsure("no sheet");
    const cv::Mat inside = maskOf(rect, frame, -2);
    const double covered = cv::countNonZero(inside & ~bed) / std::max(1.0, double(cv::countNonZero(inside)));
    if (covered < kLeastRectangle)
        return unsure("what is not bed is no rectangle");
    if (edges.confirmed < kLeastConfirmed)
        return unsure("no clear edge of a sheet");
    if (!dark && edges.evenPaper < kLeastConfirmed)
        return unsure("a picture on a page rather than a sheet on a bed");
    if (const char* reason = objection(reduced, rect, bed, dark))
        return unsure(reason);
    Sheet sheet;
    sheet.found = true;
    sheet.centre = rect.centre();
    sheet.size = {rect.width(), rect.height()};
    sheet.angleDeg = rect.angleDeg;
    sheet.confidence = edges.confirmed;
    return sheet;
}

cv::Mat cutSheet(const cv::Mat& pixels, const Sheet& sheet, const cv::Scalar& fill)
{
    const cv::Size size(std::max(1, cvRound(sheet.size.width)), std::max(1, cvRound(sheet.size.height)));
    const double c = std::cos(sheet.angleDeg * CV_PI / 180), s = std::sin(sheet.angleDeg * CV_PI / 180);
    const double x = (size.width - 1) / 2.0, y = (size.height - 1) / 2.0;
    const bool straight = std::abs(s) * std::max(size.width, size.height) < 1;
    const cv::Rect upright(cvRound(sheet.centre.x - x), cvRound(sheet.centre.y - y), size.width, size.height);
    const cv::Rect visible = upright & cv::Rect(0, 0, pixels.cols, pixels.rows);
    if (straight && !visible.empty())
        return pixels(visible).clone();
    return warped(pixels, {c, -s, sheet.centre.x - c * x + s * y, s, c, sheet.centre.y - s * x - c * y}, size,
                  fill);
}

} // namespace imageconvert
