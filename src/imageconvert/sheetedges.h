// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>

namespace imageconvert {

// A rectangle in a picture by its direction and the places of its four sides in the frame turned by that
// direction: u = x cos + y sin, v = y cos - x sin.
struct TurnedRect
{
    double angleDeg = 0;
    std::array<double, 4> sides{}; // u of left and right, v of top and bottom
    double width() const { return sides[1] - sides[0]; }
    double height() const { return sides[3] - sides[2]; }
    cv::Point2d toPicture(double u, double v) const;
    cv::Point2d centre() const;
};

struct EdgeReport
{
    TurnedRect rect;
    double confirmed = 0; // share of the outline inside the picture where an edge was found
    double evenPaper = 0; // share of the outline along which the sheet's colour is even
};

// Moves the sides of a roughly known sheet to where its paper ends, and corrects its direction. Profiles
// across each side are gathered in groups along it (their median takes ink and dust out); the edge is where
// the colour has gone half of the way from the paper to what lies outside, be it bed or the sheet's shadow on
// it.
EdgeReport refineEdges(const cv::Mat& colour, const TurnedRect& rough, double dpi);

} // namespace imageconvert
