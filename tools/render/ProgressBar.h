#pragma once

#include <cstdint>
#include <cstdio>

// A one-line progress bar, redrawn in place with a carriage return, for renders long enough that
// a user would wonder whether anything happens. Draws nothing when it has no terminal.
class ProgressBar
{
public:
    // Inputs shorter than this play out before anyone looks at a bar.
    static constexpr double shortestInputSeconds = 5.0;

    // `terminal` is where to draw, or null for a bar that stays silent; `total` is the work in frames.
    ProgressBar(std::FILE* terminal, std::int64_t total);

    // The terminal to draw on for an input of `seconds`: stderr when it is a terminal and the
    // input is long enough, otherwise null.
    static std::FILE* terminalFor(double seconds);

    // Redraws when the shown percentage changes.
    void update(std::int64_t done);
    // Ends the bar's line, so that what follows starts on a line of its own.
    void finish();

private:
    std::FILE* terminal;
    std::int64_t total;
    int shownPercent = -1;
};
