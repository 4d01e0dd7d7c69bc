// kelvane-demo OUTPUT_FOLDER
//
// Renders the built-in drum loop through the transient processor with a few settings, writes each
// rendering as a WAV file into OUTPUT_FOLDER and prints what every setting did to the hits.

#include "common/AudioFile.h"
#include "common/HitReport.h"
#include "dsp/DemoDrumLoop.h"
#include "dsp/TransientProcessor.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace
{
constexpr int blockSize = 512;

struct Setting
{
    const char* name;
    const char* fileName;
    std::function<void(TransientProcessor&)> apply;  // null: the dry loop, unprocessed
};

// Processes a copy of the loop in place, block by block, with the effect's default controls and
// then `apply`.
void render(const DemoDrumLoop& loop, const Setting& setting, std::vector<float>& left,
            std::vector<float>& right)
{
    left = loop.left();
    right = loop.right();
    if (!setting.apply)
        return;
    TransientProcessor processor;
    processor.setAttack(0.5f);
    processor.setRelease(0.5f);
    processor.setBypass(false);
    processor.setGain(0.5f);
    processor.setAttackTime(1.0f);
    processor.setReleaseTime(1.0f);
    processor.setDrive(0.0f);
    setting.apply(processor);
    for (int start = 0; start < DemoDrumLoop::frameCount; start += blockSize)
    {
        const int count = std::min(blockSize, DemoDrumLoop::frameCount - start);
        processor.processStereo(left.data() + start, right.data() + start, left.data() + start,
                                right.data() + start, count, false);
    }
}
}

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: kelvane-demo OUTPUT_FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
    {
        std::fprintf(stderr, "kelvane-demo: cannot create %s: %s\n", folder.c_str(), error.message().c_str());
        return 1;
    }

    const Setting settings[] = {
        {"dry", "dry.wav", nullptr},
        {"Attack +100%", "attack-plus-100.wav", [](TransientProcessor& p) { p.setAttack(1.0f); }},
        {"Attack -100%", "attack-minus-100.wav", [](TransientProcessor& p) { p.setAttack(0.0f); }},
        {"Release +100%", "release-plus-100.wav", [](TransientProcessor& p) { p.setRelease(1.0f); }},
    };

    const DemoDrumLoop loop;
    HitReport report(loop.hits(), DemoDrumLoop::sampleRate);
    std::vector<float> left;
    std::vector<float> right;
    for (const Setting& setting : settings)
    {
        render(loop, setting, left, right);
        const std::string path = (folder / setting.fileName).string();
        const std::string failure = AudioFile::writeFloatWav(path, {&left, &right}, DemoDrumLoop::sampleRate);
        if (!failure.empty())
        {
            std::fprintf(stderr, "kelvane-demo: %s\n", failure.c_str());
            return 1;
        }
        std::printf("wrote %s\n", path.c_str());
        report.addRendering(setting.name, left, right);
    }

    std::printf("\nKelvane on the demo drum loop (8 s, 44.1 kHz, stereo), first bar:\n");
    report.print(stdout, 2.0);
    return 0;
}
