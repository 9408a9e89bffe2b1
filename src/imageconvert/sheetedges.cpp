// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/sheetedges.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace imageconvert {

namespace {

constexpr int kGroups = 16;
constexpr int kPerGroup = 9;
constexpr double kStep = 0.5;      // profile step in pixels
constexpr double kLeastEdge = 3.5; // grey levels between paper and outside in the best channel
constexpr double kEvenPaper = 14;  // levels by which even paper may vary along a side

using Colour = std::array<float, 3>;

bool sample(const cv::Mat& colour, const cv::Point2d& p, Colour& out)
{
    const int x = static_cast<int>(std::floor(p.x)), y = static_cast<int>(std::floor(p.y));
    if (x < 0 || y < 0 || x + 1 >= colour.cols || y + 1 >= colour.rows)
        return false;
    const float fx = static_cast<float>(p.x - x), fy = static_cast<float>(p.y - y);
    const int channels = colour.channels();
    const uchar *a = colour.ptr(y) + x * channels, *b = colour.ptr(y + 1) + x * channels;
    for (int c = 0; c < 3; ++c) {
        const int k = std::min(c, channels - 1);
        const float top = a[k] + fx * (a[k + channels] - a[k]), bottom = b[k] + fx * (b[k + channels] - b[k]);
        out[static_cast<size_t>(c)] = top + fy * (bottom - top);
    }
    return true;
}

template <class T>
T median(std::vector<T>& values)
{
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// One of the four sides; `along` runs on it, `out` is the sign of the direction that leaves the sheet.
struct Side
{
    int index;
    double from, to; // the part that is looked at
    double out() const { return index % 2 == 0 ? -1 : 1; }
    cv::Point2d at(const TurnedRect& rect, double along, double offset) const
    {
        const double across = rect.sides[static_cast<size_t>(index)] + out() * offset;
        return index < 2 ? rect.toPicture(across, along) : rect.toPicture(along, across);
    }
};

struct GroupEdge
{
    double along = 0, offset = 0; // offset outwards from the rough side
    Colour paper{};
    bool inPicture = false, confirmed = false;
};

double difference(const Colour& a, const Colour& b)
{
    return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
}

// The median profile of the group from `reach` outside to `reach` inside.
std::vector<Colour> profileOf(const cv::Mat& colour, const TurnedRect& rect, const Side& side, double from,
                              double to, double reach)
{
    std::vector<Colour> profile;
    for (double offset = reach; offset >= -reach; offset -= kStep) {
        std::vector<float> values[3];
        for (int i = 0; i < kPerGroup; ++i) {
            Colour c;
            if (sample(colour, side.at(rect, from + (to - from) * (i + 0.5) / kPerGroup, offset), c))
                for (size_t k = 0; k < 3; ++k)
                    values[k].push_back(c[k]);
        }
        if (values[0].size() < kPerGroup / 2 + 1)
            return {};
        profile.push_back({median(values[0]), median(values[1]), median(values[2])});
    }
    return profile;
}

GroupEdge findEdge(const std::vector<Colour>& profile, double along, double reach, double dpi)
{
    GroupEdge edge;
    edge.along = along;
    if (profile.empty())
        return edge;
    edge.inPicture = true;
    // The paper: the inner quarter of the profile.
    const size_t inner = profile.size() * 3 / 4;
    std::vector<float> values[3];
    for (size_t i = inner; i < profile.size(); ++i)
        for (size_t k = 0; k < 3; ++k)
            values[k].push_back(profile[i][k]);
    edge.paper = {median(values[0]), median(values[1]), median(values[2])};
    std::vector<double> away;
    for (const Colour& c : profile)
        away.push_back(difference(c, edge.paper));
    // A line printed on a page has the same paper on both sides.
    std::vector<double> ends(away.begin(),
                             away.begin() + static_cast<long>(std::max<size_t>(3, away.size() / 6)));
    if (median(ends) < kLeastEdge * 0.8)
        return edge;
    // From inside outwards to the first lasting departure; its height is the largest within 1.2 mm beyond.
    const auto beyond = static_cast<size_t>(std::max(2.0, dpi / 25.4 * 1.2 / kStep));
    for (size_t i = inner; i-- > 1;) {
        if (away[i] < kLeastEdge)
            continue;
        const size_t far = i > beyond ? i - beyond : 0;
        const double height =
            *std::max_element(away.begin() + static_cast<long>(far), away.begin() + static_cast<long>(i) + 1);
        double lasting = 0;
        for (size_t j = far; j <= i; ++j)
            lasting += away[j] >= kLeastEdge * 0.8;
        if (lasting < 0.8 * static_cast<double>(i - far + 1))
            continue;
        const double half = height / 2;
        size_t j = std::min(i + 1, away.size() - 1);
        while (j > 0 && away[j] < half)
            --j;
        const double part =
            j + 1 < away.size() && away[j] > away[j + 1] ? (away[j] - half) / (away[j] - away[j + 1]) : 0;
        edge.offset = reach - (static_cast<double>(j) + std::clamp(part, 0.0, 1.0)) * kStep;
        edge.confirmed = true;
        return edge;
    }
    return edge;
}

struct Line
{
    double slope = 0, offset = 0; // offset at the middle of the side
    double inliers = 0;
};

// Theil-Sen line through the groups' edges.
Line fitLine(const std::vector<GroupEdge>& edges, double middle)
{
    std::vector<double> slopes, offsets;
    for (size_t i = 0; i < edges.size(); ++i)
        for (size_t j = i + 3; j < edges.size(); ++j)
            slopes.push_back((edges[j].offset - edges[i].offset) / (edges[j].along - edges[i].along));
    Line line;
    if (slopes.empty())
        return line;
    line.slope = median(slopes);
    for (const GroupEdge& e : edges)
        offsets.push_back(e.offset - line.slope * (e.along - middle));
    line.offset = median(offsets);
    for (const GroupEdge& e : edges)
        line.inliers += std::abs(e.offset - line.slope * (e.along - middle) - line.offset) < 1.5;
    return line;
}

} // namespace

cv::Point2d TurnedRect::toPicture(double u, double v) const
{
    const double c = std::cos(angleDeg * CV_PI / 180), s = std::sin(angleDeg * CV_PI / 180);
    return {u * c - v * s, u * s + v * c};
}

cv::Point2d TurnedRect::centre() const
{
    return toPicture((sides[0] + sides[1]) / 2, (sides[2] + sides[3]) / 2);
}

EdgeReport refineEdges(const cv::Mat& colour, const TurnedRect& rough, double dpi)
{
    EdgeReport report;
    report.rect = rough;
    double seen = 0, confirmed = 0, even = 0, slopes = 0, slopeWeight = 0;
    std::array<Line, 4> lines;
    const double wish = dpi / 25.4 * 4.5; // the shadow beside a sheet and a rough side are within this
    for (int index = 0; index < 4; ++index) {
        const size_t along = index < 2 ? 2 : 0;
        const double length = rough.sides[along + 1] - rough.sides[along];
        const double reach = std::min(wish, length / 6);
        const Side side{index, rough.sides[along] + 0.04 * length, rough.sides[along + 1] - 0.04 * length};
        std::vector<GroupEdge> edges;
        std::vector<float> papers[3];
        std::vector<Colour> seenPapers;
        for (int g = 0; g < kGroups; ++g) {
            const double from = side.from + (side.to - side.from) * g / kGroups;
            const double to = side.from + (side.to - side.from) * (g + 1) / kGroups;
            const GroupEdge edge =
                findEdge(profileOf(colour, rough, side, from, to, reach), (from + to) / 2, reach, dpi);
            if (!edge.inPicture)
                continue;
            seen += length;
            seenPapers.push_back(edge.paper);
            for (size_t k = 0; k < 3; ++k)
                papers[k].push_back(edge.paper[k]);
            if (edge.confirmed)
                edges.push_back(edge);
        }
        if (seenPapers.empty())
            continue;
        const Colour usual{median(papers[0]), median(papers[1]), median(papers[2])};
        for (const Colour& c : seenPapers)
            even += length * (difference(c, usual) < kEvenPaper);
        Line& line = lines[static_cast<size_t>(index)];
        line = fitLine(edges, (side.from + side.to) / 2);
        confirmed += length * line.inliers;
        if (line.inliers >= kGroups / 2) {
            // An outward shift that grows along a side turns it; the sense differs between the sides.
            const double turn = index == 0 || index == 3 ? 1 : -1;
            slopes += length * turn * line.slope;
            slopeWeight += length;
        }
    }
    report.confirmed = seen > 0 ? confirmed / seen : 0;
    report.evenPaper = seen > 0 ? even / seen : 0;
    // The sides turn around their middles; as seen from the new frame these are elsewhere.
    TurnedRect& rect = report.rect;
    rect.angleDeg += slopeWeight > 0 ? std::atan(slopes / slopeWeight) * 180 / CV_PI : 0;
    const double c = std::cos(rect.angleDeg * CV_PI / 180), s = std::sin(rect.angleDeg * CV_PI / 180);
    for (int index = 0; index < 4; ++index) {
        const size_t along = index < 2 ? 2 : 0;
        const Side side{index, 0, 0};
        const cv::Point2d p = side.at(rough, (rough.sides[along] + rough.sides[along + 1]) / 2,
                                      lines[static_cast<size_t>(index)].offset);
        rect.sides[static_cast<size_t>(index)] = index < 2 ? p.x * c + p.y * s : p.y * c - p.x * s;
    }
    return report;
}

} // namespace imageconvert
