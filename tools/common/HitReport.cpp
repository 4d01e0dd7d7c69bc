#include "common/HitReport.h"

#include <algorithm>
#include <cmath>

namespace
{
double toDecibels(double level)
{
    return 20.0 * std::log10(std::max(level, 1e-10));
}

// Windows of the measurement, in milliseconds after the start of a hit.
constexpr double peakWindowMs = 20.0;
constexpr double afterStartMs = 25.0;
constexpr double afterEndMs = 35.0;
}

HitReport::HitReport(const std::vector<DemoDrumLoop::Hit>& hits, int rate) : sampleRate(rate)
{
    // The loop's hits come in time order.
    for (const DemoDrumLoop::Hit& hit : hits)
    {
        const std::string instrument = DemoDrumLoop::instrumentName(hit.instrument);
        if (!onsets.empty() && onsets.back().frame == hit.frame)
        {
            onsets.back().name += "+" + instrument;
            onsets.back().velocity = std::max(onsets.back().velocity, hit.velocity);
        }
        else
        {
            onsets.push_back({hit.frame, instrument, hit.velocity});
        }
    }
}

HitReport::Levels HitReport::measure(const std::vector<float>& left, const std::vector<float>& right,
                                     int frame, int rate)
{
    const auto frameAt = [&](double ms) {
        const long offset = std::lround(ms * 0.001 * rate);
        return static_cast<std::size_t>(std::min<long>(frame + offset, static_cast<long>(left.size())));
    };
    double peak = 0.0;
    for (std::size_t i = static_cast<std::size_t>(frame); i < frameAt(peakWindowMs); ++i)
        peak = std::max({peak, static_cast<double>(std::fabs(left[i])), static_cast<double>(std::fabs(right[i]))});

    double energy = 0.0;
    std::size_t samples = 0;
    for (std::size_t i = frameAt(afterStartMs); i < frameAt(afterEndMs); ++i, samples += 2)
        energy += static_cast<double>(left[i]) * left[i] + static_cast<double>(right[i]) * right[i];
    const double rms = samples > 0 ? std::sqrt(energy / static_cast<double>(samples)) : 0.0;
    return {toDecibels(peak), toDecibels(rms)};
}

void HitReport::addRendering(const std::string& name, const std::vector<float>& left,
                             const std::vector<float>& right)
{
    Rendering rendering{name, {}};
    for (const Onset& onset : onsets)
        rendering.levels.push_back(measure(left, right, onset.frame, sampleRate));
    renderings.push_back(std::move(rendering));
}

void HitReport::print(std::FILE* out, double tableSeconds) const
{
    std::fprintf(out, "peak: first %.0f ms of each hit; +30ms: RMS %.0f-%.0f ms after it; dBFS\n\n",
                 peakWindowMs, afterStartMs, afterEndMs);
    std::fprintf(out, "%-23s", "");
    for (const Rendering& rendering : renderings)
        std::fprintf(out, "  %-14s", rendering.name.c_str());
    std::fprintf(out, "\n%6s  %-10s %4s", "time", "hit", "vel");
    for (std::size_t i = 0; i < renderings.size(); ++i)
        std::fprintf(out, "  %6s %7s", "peak", "+30ms");
    std::fprintf(out, "\n");
    for (std::size_t h = 0; h < onsets.size(); ++h)
    {
        const double seconds = static_cast<double>(onsets[h].frame) / sampleRate;
        if (seconds >= tableSeconds)
            break;
        std::fprintf(out, "%6.3f  %-10s %4.2f", seconds, onsets[h].name.c_str(), onsets[h].velocity);
        for (const Rendering& rendering : renderings)
            std::fprintf(out, "  %6.1f %7.1f", rendering.levels[h].peakDecibels, rendering.levels[h].afterDecibels);
        std::fprintf(out, "\n");
    }

    if (renderings.size() < 2)
        return;
    std::fprintf(out, "\nmean change against %s over the whole loop, dB (peak / +30ms):\n%-16s",
                 renderings.front().name.c_str(), "");
    for (std::size_t r = 1; r < renderings.size(); ++r)
        std::fprintf(out, "  %-15s", renderings[r].name.c_str());
    std::fprintf(out, "\n");
    std::vector<std::string> kinds;
    for (const Onset& onset : onsets)
        if (std::find(kinds.begin(), kinds.end(), onset.name) == kinds.end())
            kinds.push_back(onset.name);
    for (const std::string& kind : kinds)
    {
        int count = 0;
        for (const Onset& onset : onsets)
            count += onset.name == kind ? 1 : 0;
        char label[48];
        std::snprintf(label, sizeof label, "%s (%d)", kind.c_str(), count);
        std::fprintf(out, "%-16s", label);
        for (std::size_t r = 1; r < renderings.size(); ++r)
        {
            double peakChange = 0.0;
            double afterChange = 0.0;
            for (std::size_t h = 0; h < onsets.size(); ++h)
            {
                if (onsets[h].name != kind)
                    continue;
                peakChange += renderings[r].levels[h].peakDecibels - renderings[0].levels[h].peakDecibels;
                afterChange += renderings[r].levels[h].afterDecibels - renderings[0].levels[h].afterDecibels;
            }
            char cell[32];
            std::snprintf(cell, sizeof cell, "%+5.1f / %+5.1f", peakChange / count, afterChange / count);
            std::fprintf(out, "  %-15s", cell);
        }
        std::fprintf(out, "\n");
    }
}
