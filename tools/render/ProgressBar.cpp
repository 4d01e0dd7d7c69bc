#include "ProgressBar.h"

#include <unistd.h>

#include <string>

namespace
{
constexpr int barWidth = 40;
}

ProgressBar::ProgressBar(std::FILE* terminal, std::int64_t total) : terminal(terminal), total(total)
{
}

std::FILE* ProgressBar::terminalFor(double seconds)
{
    return seconds > shortestInputSeconds && isatty(STDERR_FILENO) ? stderr : nullptr;
}

void ProgressBar::update(std::int64_t done)
{
    if (terminal == nullptr || total <= 0)
        return;
    const int percent = static_cast<int>(done * 100 / total);
    if (percent == shownPercent)
        return;
    shownPercent = percent;
    const int filled = percent * barWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#')
                            + std::string(static_cast<std::size_t>(barWidth - filled), '.');
    std::fprintf(terminal, "\rrendering [%s] %3d%%", bar.c_str(), percent);
    std::fflush(terminal);
}

void ProgressBar::finish()
{
    if (shownPercent >= 0)
        std::fputc('\n', terminal);
    shownPercent = -1;
}
