#include "MeterScale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace MeterScale
{
namespace
{
// The editor's level-to-position table, highest level first.
struct Row
{
    double level;
    double position;
};
const Row rows[] = {{1.412, 1.0}, {1.0, 0.66}, {0.707, 0.39}, {0.5, 0.22}, {0.25, 0.07}, {0.1, 0.0}};

// Tick and print geometry, in pixels along the needle from its tip. The arc runs inside the tips
// and the ticks stand outward from it, so a needle at rest on a mark crosses the arc and ends
// inside that mark's tick, as on a moving-coil meter.
constexpr double arcOffset = -8.0;
constexpr double majorTickEnd = 4.0;
constexpr double minorTickEnd = 1.5;
constexpr double redZoneEnd = -3.0;
constexpr double numberOffset = 13.0;
constexpr double numberSize = 13.0;
// How far the arc reaches past the outermost marks, in radians.
constexpr double arcOverhang = 0.03;
// The lowest mark's number stands beside its tick, this far left of the tick's outer end.
constexpr double besideGap = 3.0;

// Ink colours: printing on a warm, backlit face.
const char* const ink = "#2a231a";
const char* const red = "#b8321f";

const double majors[] = {-20.0, -12.0, -6.0, -3.0, 0.0, 3.0};
const double minors[] = {-15.0, -10.0, -8.0, -5.0, -4.0, -2.0, -1.0, 1.0, 2.0};

// The point `offset` pixels beyond the needle's tip (inside for negative offsets), at `angle`.
Point alongNeedle(double angle, double offset, int width, int height)
{
    const Point centre = needlePivot(width, height);
    const double radius = needleLength(angle, height) + offset;
    return {centre.x + radius * std::sin(angle), centre.y - radius * std::cos(angle)};
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string point(const Point& p) { return number(p.x) + "," + number(p.y); }

// A path along the scale at a fixed offset beyond the tips, from one angle to another.
std::string curve(double from, double to, double offset, int width, int height, bool moveFirst)
{
    const int steps = 48;
    std::string path;
    for (int step = 0; step <= steps; ++step)
    {
        const double angle = from + (to - from) * step / steps;
        path += (step == 0 && moveFirst ? "M" : "L") + point(alongNeedle(angle, offset, width, height)) + " ";
    }
    return path;
}

std::string decibelText(double decibels)
{
    if (decibels > 0.0)
        return "+" + std::to_string(static_cast<int>(decibels));
    if (decibels < 0.0)
        return "\u2212" + std::to_string(static_cast<int>(-decibels));  // a true minus sign
    return "0";
}

// Upright text centred on a point: the baseline sits 0.36 em below the centre (half of Inter's
// cap height).
std::string centredText(const Point& centre, double size, const char* colour, const std::string& text,
                        const char* anchor = "middle")
{
    return "<text font-family='Inter' font-weight='600' font-size='" + number(size) + "' text-anchor='" + anchor +
           "' fill='" + colour + "' x='" + number(centre.x) + "' y='" + number(centre.y + size * 0.36) + "'>" + text +
           "</text>\n";
}

}  // namespace

double positionOfLevel(double level)
{
    if (level >= rows[0].level)
        return 1.0;
    for (size_t index = 1; index < sizeof rows / sizeof rows[0]; ++index)
    {
        const Row& upper = rows[index - 1];
        const Row& lower = rows[index];
        if (level > lower.level)
            return lower.position +
                   (level - lower.level) / (upper.level - lower.level) * (upper.position - lower.position);
    }
    return 0.0;
}

double angleOfPosition(double position) { return position * 1.82 - 0.91; }

// The editor centres the needle on width / 2 in integers.
Point needlePivot(int width, int height) { return {static_cast<double>(width / 2), height + 20.0}; }

double needleLength(double angle, int height) { return 29.0 * angle * angle + height - 26.0; }

std::vector<Mark> marks(int width, int height)
{
    std::vector<Mark> result;
    auto add = [&](double decibels, bool major) {
        Mark mark;
        mark.decibels = decibels;
        mark.position = positionOfLevel(std::pow(10.0, decibels / 20.0));
        mark.angle = angleOfPosition(mark.position);
        mark.major = major;
        mark.inner = alongNeedle(mark.angle, arcOffset, width, height);
        mark.outer = alongNeedle(mark.angle, major ? majorTickEnd : minorTickEnd, width, height);
        result.push_back(mark);
    };
    for (double decibels : majors)
        add(decibels, true);
    for (double decibels : minors)
        add(decibels, false);
    std::sort(result.begin(), result.end(), [](const Mark& a, const Mark& b) { return a.position < b.position; });
    return result;
}

std::string svg(int width, int height, const std::string& label)
{
    const std::vector<Mark> scale = marks(width, height);
    const double first = scale.front().angle - arcOverhang;
    const double last = scale.back().angle + arcOverhang;
    const double zero = angleOfPosition(positionOfLevel(1.0));

    std::string out = "<svg xmlns='http://www.w3.org/2000/svg' width='" + std::to_string(width) + "' height='" +
                      std::to_string(height) + "' viewBox='0 0 " + std::to_string(width) + " " +
                      std::to_string(height) + "'>\n";

    // The red zone: a band from the arc outward, under the ticks' feet, from 0 dB to the scale's end.
    out += "<path fill='" + std::string(red) + "' d='" + curve(zero, last, arcOffset, width, height, true) +
           curve(last, zero, redZoneEnd, width, height, false) + "Z'/>\n";
    // The arc, in ink up to 0 dB and red beyond.
    out += "<path fill='none' stroke='" + std::string(ink) + "' stroke-width='1.3' d='" +
           curve(first, zero, arcOffset, width, height, true) + "'/>\n";
    out += "<path fill='none' stroke='" + std::string(red) + "' stroke-width='1.3' d='" +
           curve(zero, last, arcOffset, width, height, true) + "'/>\n";

    for (const Mark& mark : scale)
    {
        const char* colour = mark.decibels > 0.0 ? red : ink;
        out += "<line stroke='" + std::string(colour) + "' stroke-width='" + (mark.major ? "1.8" : "1.2") + "' x1='" +
               number(mark.inner.x) + "' y1='" + number(mark.inner.y) + "' x2='" + number(mark.outer.x) + "' y2='" +
               number(mark.outer.y) + "'/>\n";
        if (!mark.major)
            continue;
        // The marks crowd together at the low end, so the lowest number stands left of its tick,
        // where the scale ends, rather than over it.
        if (&mark == &scale.front())
            out += centredText({mark.outer.x - besideGap, mark.outer.y}, numberSize, colour,
                               decibelText(mark.decibels), "end");
        else
            out += centredText(alongNeedle(mark.angle, numberOffset, width, height), numberSize, colour,
                               decibelText(mark.decibels));
    }

    out += "<text font-family='Inter' font-weight='500' font-size='10' letter-spacing='1' text-anchor='middle' fill='" +
           std::string(ink) + "' fill-opacity='0.7' x='" + number(width - 30.0) + "' y='" + number(height - 14.0) +
           "'>dB</text>\n";
    out += "<text font-family='Inter' font-weight='700' font-size='17' letter-spacing='3' text-anchor='middle' fill='" +
           std::string(ink) + "' x='" + number(width / 2.0 + 1.5) + "' y='" + number(height - 30.0) + "'>" + label +
           "</text>\n";
    out += "</svg>\n";
    return out;
}
}  // namespace MeterScale
