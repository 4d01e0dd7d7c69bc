#include "AudioPlayer.h"

#include "PluginHost.h"

#include <alsa/asoundlib.h>

#include <chrono>
#include <cstdarg>

namespace
{
// How much sound ALSA holds ahead of the speaker, in microseconds.
constexpr unsigned int deviceLatency = 80000;

// ALSA reports its failures on standard error by itself; the program says in one line what it
// does instead.
void quietAlsaErrors(const char*, int, const char*, int, const char*, ...) {}

snd_pcm_t* openDevice(int rate)
{
    snd_lib_error_set_handler(&quietAlsaErrors);
    snd_pcm_t* pcm = nullptr;
    if (snd_pcm_open(&pcm, "default", SND_PCM_STREAM_PLAYBACK, 0) < 0)
        return nullptr;
    if (snd_pcm_set_params(pcm, SND_PCM_FORMAT_FLOAT_LE, SND_PCM_ACCESS_RW_INTERLEAVED, 2, static_cast<unsigned>(rate),
                           1, deviceLatency)
        < 0)
    {
        snd_pcm_close(pcm);
        return nullptr;
    }
    return pcm;
}
}  // namespace

AudioPlayer::AudioPlayer(PluginHost& pluginHost, std::vector<float> loopLeft, std::vector<float> loopRight, int loopRate)
    : host(pluginHost), left(std::move(loopLeft)), right(std::move(loopRight)), rate(loopRate)
{
    for (int channel = 0; channel < 2; ++channel)
    {
        input[channel].resize(blockSize);
        output[channel].resize(blockSize);
    }
    interleaved.resize(2 * blockSize);
}

AudioPlayer::~AudioPlayer()
{
    stop();
}

bool AudioPlayer::start()
{
    device = openDevice(rate);
    running = true;
    thread = std::thread(&AudioPlayer::run, this);
    return device != nullptr;
}

void AudioPlayer::stop()
{
    running = false;
    if (thread.joinable())
        thread.join();
    if (device != nullptr)
    {
        snd_pcm_drop(static_cast<snd_pcm_t*>(device));
        snd_pcm_close(static_cast<snd_pcm_t*>(device));
        device = nullptr;
    }
}

double AudioPlayer::getSecondsPlayed() const
{
    return static_cast<double>(framesPlayed.load()) / rate;
}

void AudioPlayer::fillBlock()
{
    for (int frame = 0; frame < blockSize; ++frame)
    {
        input[0][static_cast<std::size_t>(frame)] = left[position];
        input[1][static_cast<std::size_t>(frame)] = right[position];
        position = position + 1 < left.size() ? position + 1 : 0;
    }
}

void AudioPlayer::run()
{
    const auto blockTime = std::chrono::duration<double>(static_cast<double>(blockSize) / rate);
    auto due = std::chrono::steady_clock::now();
    while (running)
    {
        fillBlock();
        float* inputs[2] = {input[0].data(), input[1].data()};
        float* outputs[2] = {output[0].data(), output[1].data()};
        host.process(inputs, outputs, blockSize);
        // The sound card sets the pace; without one, or when it fails, the clock does.
        due += std::chrono::duration_cast<std::chrono::steady_clock::duration>(blockTime);
        if (device == nullptr || !deliverBlock())
            std::this_thread::sleep_until(due);
        else
            due = std::chrono::steady_clock::now();
        framesPlayed += blockSize;
    }
}

bool AudioPlayer::deliverBlock()
{
    for (int frame = 0; frame < blockSize; ++frame)
    {
        interleaved[2 * static_cast<std::size_t>(frame)] = output[0][static_cast<std::size_t>(frame)];
        interleaved[2 * static_cast<std::size_t>(frame) + 1] = output[1][static_cast<std::size_t>(frame)];
    }
    auto* pcm = static_cast<snd_pcm_t*>(device);
    snd_pcm_sframes_t written = snd_pcm_writei(pcm, interleaved.data(), blockSize);
    // An underrun (the program was late) or a suspend: recover and write the block again.
    if (written < 0 && snd_pcm_recover(pcm, static_cast<int>(written), 1) == 0)
        written = snd_pcm_writei(pcm, interleaved.data(), blockSize);
    return written >= 0;
}
