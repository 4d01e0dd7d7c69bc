#pragma once

#include <atomic>
#include <thread>
#include <vector>

class PluginHost;

// The audio thread of kelvane-standalone: plays a stereo loop through the plug-in in real time,
// block by block through processReplacing. The output goes to the sound card through ALSA (the
// "default" device) when one opens; without one the blocks are paced by the clock and the sound
// goes nowhere, so that the plug-in, its meters and its lamp run all the same.
//
// Thread contract: made, started and stopped on the main thread; the plug-in's process runs on
// the thread of its own.
class AudioPlayer
{
public:
    static constexpr int blockSize = 512;

    // left and right: the loop, of equal length (at least one frame); rate in Hz.
    AudioPlayer(PluginHost& host, std::vector<float> left, std::vector<float> right, int rate);
    // Stops the thread.
    ~AudioPlayer();

    AudioPlayer(const AudioPlayer&) = delete;
    AudioPlayer& operator=(const AudioPlayer&) = delete;

    // Opens the sound card if there is one and starts the thread. Answers whether the sound goes
    // to a sound card.
    bool start();
    void stop();
    // Audio played so far, in seconds.
    double getSecondsPlayed() const;

private:
    void run();
    // The next block of the loop into in[0], in[1].
    void fillBlock();
    // Gives one processed block to the sound card; false when the card took none.
    bool deliverBlock();

    PluginHost& host;
    std::vector<float> left;
    std::vector<float> right;
    int rate;
    std::size_t position = 0;
    std::vector<float> input[2];
    std::vector<float> output[2];
    std::vector<float> interleaved;
    void* device = nullptr;  // the ALSA device, null without a sound card
    std::atomic<long long> framesPlayed{0};
    std::atomic<bool> running{false};
    std::thread thread;
};
