// kelvane-demo FOLDER
//
// Prints what each setting of the demo did to every hit of the built-in drum loop: reads the four
// renderings of the loop that scripts/demo.sh makes with kelvane-render through the installed
// plug-in (dry.wav, attack-plus-100.wav, attack-minus-100.wav, release-plus-100.wav in FOLDER)
// and measures each hit against the dry loop.

#include "common/AudioFileReader.h"
#include "common/HitReport.h"
#include "dsp/DemoDrumLoop.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
struct Rendering
{
    const char* name;
    const char* fileName;
};

constexpr Rendering renderings[] = {
    {"dry", "dry.wav"},
    {"Attack +100%", "attack-plus-100.wav"},
    {"Attack -100%", "attack-minus-100.wav"},
    {"Release +100%", "release-plus-100.wav"},
};

// Reads a stereo rendering of the whole loop at its rate into two channels. Returns an empty
// string on success, otherwise a one-line reason.
std::string readRendering(const std::string& path, std::vector<float>& left, std::vector<float>& right)
{
    AudioFileReader file;
    std::string failure = file.open(path);
    if (!failure.empty())
        return failure + "; run scripts/demo.sh to make it";
    if (file.channels() != 2 || file.sampleRate() != DemoDrumLoop::sampleRate
        || file.frames() != DemoDrumLoop::frameCount)
        return path + " is not a rendering of the demo loop (stereo, 44100 Hz, 8 s); run scripts/demo.sh again";
    std::vector<float> interleaved(2 * static_cast<std::size_t>(DemoDrumLoop::frameCount));
    if (file.read(interleaved.data(), DemoDrumLoop::frameCount) != DemoDrumLoop::frameCount)
        return "cannot read all of " + path + "; run scripts/demo.sh again";
    left.resize(static_cast<std::size_t>(DemoDrumLoop::frameCount));
    right.resize(static_cast<std::size_t>(DemoDrumLoop::frameCount));
    for (std::size_t frame = 0; frame < left.size(); ++frame)
    {
        left[frame] = interleaved[2 * frame];
        right[frame] = interleaved[2 * frame + 1];
    }
    return {};
}
}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: kelvane-demo FOLDER (the renderings that scripts/demo.sh writes)\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const DemoDrumLoop loop;
    HitReport report(loop.hits(), DemoDrumLoop::sampleRate);
    std::vector<float> left;
    std::vector<float> right;
    for (const Rendering& rendering : renderings)
    {
        const std::string failure = readRendering((folder / rendering.fileName).string(), left, right);
        if (!failure.empty())
        {
            std::fprintf(stderr, "kelvane-demo: %s\n", failure.c_str());
            return 1;
        }
        report.addRendering(rendering.name, left, right);
    }

    std::printf("\nKelvane on the demo drum loop (8 s, 44.1 kHz, stereo), first bar:\n");
    report.print(stdout, 2.0);
    return 0;
}
