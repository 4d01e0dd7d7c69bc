// kelvane-standalone: Kelvane's editor in a window of its own, for people without a DAW. It loads
// the plug-in as a host does, opens the editor in its window, idles it at 50 Hz, and plays the
// demo drum loop or an audio file through the plug-in in real time. With --screenshot it writes a
// picture of the editor after two seconds of audio and exits. See StandaloneOptions::usage.

#include "AudioPlayer.h"
#include "HostWindow.h"
#include "PluginHost.h"
#include "PluginSearch.h"
#include "RenderInput.h"
#include "StandaloneOptions.h"
#include "common/CommandLine.h"
#include "common/PendingFile.h"
#include "Extraction.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr int failureStatus = 1;
constexpr int usageStatus = 2;
// The host's idle rate, 50 Hz.
constexpr auto idlePeriod = std::chrono::milliseconds(20);
// Audio played before the picture is taken, in seconds: the meters have risen and fallen.
constexpr double screenshotAfter = 2.0;

std::atomic<bool> interrupted{false};

void interrupt(int)
{
    interrupted = true;
}

int fail(const std::string& reason, int status = failureStatus)
{
    std::fprintf(stderr, "kelvane-standalone: %s\n", reason.c_str());
    return status;
}

// The whole of the audio, as two channels of equal length (a mono file on both). Returns an
// empty string on success, otherwise a one-line reason.
std::string readAudio(const std::string& path, std::vector<float>& left, std::vector<float>& right, int& rate)
{
    RenderInput input;
    if (path.empty())
        input.openDemo();
    else if (std::string failure = input.openFile(path); !failure.empty())
        return failure;
    std::vector<float> block(2 * 4096);
    while (const std::int64_t frames = input.read(block.data(), 4096))
        for (std::int64_t frame = 0; frame < frames; ++frame)
        {
            const int channels = input.channels();
            left.push_back(block[static_cast<std::size_t>(frame * channels)]);
            right.push_back(block[static_cast<std::size_t>(frame * channels + channels - 1)]);
        }
    if (!input.failure().empty())
        return input.failure();
    if (left.empty())
        return path + " holds no audio";
    rate = input.sampleRate();
    return {};
}

std::string writePicture(const q1framework::Image& picture, const std::string& path, bool force)
{
    std::string bytes;
    if (std::string failure = encodePng(picture, bytes); !failure.empty())
        return failure;
    PendingFile file;
    if (std::string failure = file.create(path); !failure.empty())
        return failure;
    if (write(file.descriptor(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        return "cannot write " + path;
    return file.publish(force);
}
}  // namespace

int main(int argc, char** argv)
{
    StandaloneOptions options;
    if (std::string failure = StandaloneOptions::parse(std::vector<std::string>(argv + 1, argv + argc), options);
        !failure.empty())
        return fail(failure, usageStatus);
    if (options.help)
    {
        std::fputs(StandaloneOptions::usage(), stdout);
        return 0;
    }

    std::string pluginPath = options.pluginPath;
    if (pluginPath.empty())
        if (std::string failure = PluginSearch::find(
                PluginSearch::candidates(std::getenv("VST_PATH"), std::getenv("HOME"), KELVANE_BUILT_PLUGIN), pluginPath);
            !failure.empty())
            return fail(failure);
    if (!options.screenshot.empty())
        if (std::string failure = CommandLine::checkWritable(options.screenshot, {options.audioFile, pluginPath},
                                                             options.force);
            !failure.empty())
            return fail(failure);

    std::vector<float> left, right;
    int rate = 0;
    if (std::string failure = readAudio(options.audioFile, left, right, rate); !failure.empty())
        return fail(failure);

    std::string failure;
    std::unique_ptr<PluginHost> plugin = PluginHost::load(pluginPath, failure);
    if (!plugin)
        return fail(failure);
    if (!plugin->hasEditor())
        return fail(pluginPath + " has no editor");
    plugin->prepare(rate, AudioPlayer::blockSize);
    if (options.width > 0 && !plugin->setEditorSize(options.width, options.height))
        return fail(pluginPath + " keeps no editor size in its state; --size works with Kelvane only");

    std::unique_ptr<HostWindow> window = HostWindow::open(750, 175, "Kelvane", failure);
    if (!window)
        return fail(failure);
    HostWindow& shown = *window;
    plugin->setSizeWindowHandler([&shown](int width, int height) {
        shown.resize(width, height);
        return true;
    });
    if (!plugin->openEditor(window->getId()))
        return fail(pluginPath + " opened no editor in the window");
    int width = 0, height = 0;
    plugin->getEditorSize(width, height);
    window->resize(width, height);

    AudioPlayer player(*plugin, std::move(left), std::move(right), rate);
    const bool soundCard = player.start();
    if (options.screenshot.empty())
        std::printf("kelvane-standalone: playing %s through %s, %s. Close the window to stop.\n",
                    options.audioFile.empty() ? "the demo drum loop" : options.audioFile.c_str(), pluginPath.c_str(),
                    soundCard ? "to the sound card" : "silently (no sound card opened), at the same pace");
    std::signal(SIGINT, &interrupt);
    std::signal(SIGTERM, &interrupt);

    auto due = std::chrono::steady_clock::now();
    int status = 0;
    while (!interrupted && window->handleEvents())
    {
        plugin->idleEditor();
        if (!options.screenshot.empty() && player.getSecondsPlayed() >= screenshotAfter)
        {
            const q1framework::Image picture = window->captureEditor();
            failure = picture.isNull() ? "the editor showed no window to take a picture of"
                                       : writePicture(picture, options.screenshot, options.force);
            status = failure.empty() ? 0 : fail(failure);
            break;
        }
        due += idlePeriod;
        std::this_thread::sleep_until(due);
    }
    player.stop();
    plugin->closeEditor();
    return status;
}
