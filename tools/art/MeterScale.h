#pragma once

#include <string>
#include <vector>

// The printed scale of a needle meter face, placed where the editor's needle points.
//
// The editor draws the needle over the face at run time; this scale is printed into the
// background picture, so the two must agree to the pixel. In the face's own pixels (origin at the
// face's top-left corner, pixel centres at half-integers, y down) the needle of a face `width` x
// `height` turns about the pivot (width / 2, height + 20), below the face. A needle position p
// from 0 to 1 gives the angle a = 1.82 p - 0.91 radians from upright, clockwise positive, and the
// needle's length there is 29 a^2 + height - 26 pixels, so its tip runs along a flat arc rather
// than a circle. The level-to-position mapping is the editor's table (linear level, piecewise
// linear between its rows).
namespace MeterScale
{
struct Point
{
    double x = 0.0;
    double y = 0.0;
};

// One graduation of the scale.
struct Mark
{
    double decibels = 0.0;
    double position = 0.0;  // needle position, 0..1
    double angle = 0.0;     // radians from upright, clockwise positive
    bool major = false;     // majors carry a number
    Point inner;            // the tick runs from inner to outer, along the needle
    Point outer;
};

// Needle position 0..1 for a linear level (1.0 is 0 dB): 1.0 at or above 1.412, 0.0 at or below
// 0.1, linear between the rows of the editor's table in between.
double positionOfLevel(double level);

// The needle's angle in radians for a position 0..1.
double angleOfPosition(double position);

// The needle's pivot, and its length in pixels at an angle, on a face of that size.
Point needlePivot(int width, int height);
double needleLength(double angle, int height);

// The graduations of a face of that size, left to right: the majors -20, -12, -6, -3, 0 and +3 dB
// and the minors between them.
std::vector<Mark> marks(int width, int height);

// The scale as an SVG document of `width` x `height` pixels, transparent where nothing is printed:
// the arc, the ticks, the red zone above 0 dB, the numbers, and `label` ("IN", "OUT") in the
// lower part of the face. Text is set in the "Inter" family.
std::string svg(int width, int height, const std::string& label);
}
