#pragma once

// The block path of TransientProcessor, for a lane width given at compile time.
//
// A block runs in two passes over chunks of up to `chunkFrames` frames:
//
// - The detector pass walks the frames in order and carries everything that depends on the
//   previous sample: the five envelopes and the four ramps. For every frame it records the
//   envelopes and the ramp values that the frame's gain and output stage read.
// - The shaping pass turns those records into gains and output samples a group of lanes at a
//   time. The ratios, the curves, the gain law, the soft clip and the output divisions depend on
//   nothing but the frame's own record, so the lanes are independent and the divider serves a
//   whole group of frames per instruction.
//
// Both passes perform the per-sample operations of the processor in their order, so the result is
// bit for bit that of processing one sample after the other.
//
// Included once per instruction set (TransientBlockPaths.h): like FloatLanes, everything here has
// internal linkage.

#include "dsp/FloatLanes.h"
#include "dsp/TransientBlockPaths.h"
#include "dsp/TransientProcessor.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace
{
constexpr int chunkFrames = 64;  // a multiple of every lane width; 2 KiB of records on the stack

// Per-sample increments of the four ramps for one block.
struct RampSteps
{
    float outputGain;
    float attack;
    float release;
    float drive;
};

// What the detector pass leaves for the shaping pass: one entry per frame of a chunk, padded to
// whole lanes with values that give a gain of 1 and a silent output.
struct ChunkRecord
{
    alignas(64) float fast[chunkFrames];
    alignas(64) float slow[chunkFrames];
    alignas(64) float sustain[chunkFrames];
    alignas(64) float follower[chunkFrames];
    alignas(64) float attack[chunkFrames];
    alignas(64) float release[chunkFrames];
    alignas(64) float outputGain[chunkFrames];
    alignas(64) float drive[chunkFrames];
};

inline RampSteps rampStepsFor(const TransientProcessor& p, int count)
{
    const float inverse = 1.0f / static_cast<float>(count);
    return {inverse * (p.outputGainTarget * p.outputTrim - p.outputGainCurrent),
            inverse * (p.attackTarget - p.attackCurrent),
            inverse * (p.releaseTarget - p.releaseCurrent),
            inverse * (p.driveTarget - p.driveCurrent)};
}

// The detector pass's state, held in locals while a block runs.
struct Detector
{
    Detector(const TransientProcessor& p, const RampSteps& rampSteps)
        : fast(p.fastEnvelope),
          slow(p.slowEnvelope),
          sustain(p.sustainEnvelope),
          release(p.releaseEnvelope),
          follower(p.releaseFollower),
          attackAmount(p.attackCurrent),
          releaseAmount(p.releaseCurrent),
          outputGain(p.outputGainCurrent),
          drive(p.driveCurrent),
          steps(rampSteps),
          fall(p.fallCoeff),
          rise(p.attackRiseCoeff),
          sustainFall(p.sustainFallCoeff),
          releaseFall(p.releaseFallCoeff),
          followBase(p.followBase),
          followRange(p.followRange),
          followLagging(p.followRange + p.followBase)
    {
    }

    void storeInto(TransientProcessor& p) const
    {
        p.fastEnvelope = fast;
        p.slowEnvelope = slow;
        p.sustainEnvelope = sustain;
        p.releaseEnvelope = release;
        p.releaseFollower = follower;
        p.attackCurrent = attackAmount;
        p.releaseCurrent = releaseAmount;
        p.outputGainCurrent = outputGain;
        p.driveCurrent = drive;
    }

    // Follows `frames` frames of one or two channels into the record, then pads it to whole groups
    // of `width` lanes. A frame whose detector level is not finite leaves the envelopes standing;
    // the ramps advance on every frame.
    template <int channels, int width>
    [[gnu::noinline]] void follow(const float* left, const float* right, int frames, ChunkRecord& record)
    {
        // The detector levels of the chunk first, a group of lanes at a time: one channel's
        // magnitude, or the mean magnitude of two.
        using Lanes = FloatLanes<width>;
        alignas(64) float levels[chunkFrames];
        typename Lanes::Mask notFinite = {};
        for (int i = 0; i < frames; i += width)
        {
            const int count = frames - i < width ? frames - i : width;
            const auto read = [count, i](const float* channel) {
                return count == width ? Lanes::load(channel + i) : Lanes::loadPartial(channel + i, count);
            };
            typename Lanes::Float level;
            if constexpr (channels == 2)
                level = (Lanes::abs(read(left)) + Lanes::abs(read(right))) * 0.5f;
            else
                level = Lanes::abs(read(left));
            notFinite |= ~Lanes::isFinite(level);
            Lanes::store(levels + i, level);
        }
        const bool everyLevelFinite = !Lanes::any(notFinite);

        const bool ramping = !(standing(outputGain, steps.outputGain) && standing(attackAmount, steps.attack)
                               && standing(releaseAmount, steps.release) && standing(drive, steps.drive));
        if (ramping)
            followFramesChecked<true, false>(levels, frames, record, everyLevelFinite);
        else if (releaseAmount < 0.0f)
            followFramesChecked<false, true>(levels, frames, record, everyLevelFinite);
        else
            followFramesChecked<false, false>(levels, frames, record, everyLevelFinite);
        for (int i = frames; i % width != 0; ++i)
        {
            record.fast[i] = record.slow[i] = record.sustain[i] = record.follower[i] = 0.0f;
            record.attack[i] = record.release[i] = record.outputGain[i] = 0.0f;
            record.drive[i] = 1.0f;
        }
    }

    // A ramp stands when adding its step leaves its value as it is, bit for bit; then every further
    // addition does too. That is the usual case between automation moves: the step is 0, or so
    // small against the value that the sum rounds back to it.
    static bool standing(float value, float step)
    {
        const float next = value + step;
        return std::memcmp(&next, &value, sizeof value) == 0;
    }

    // With all ramps standing the ramp values are the same for every frame and are filled in once;
    // a standing negative release amount (`followerJumps`) then makes the follower close in all
    // the way at every frame, with no test of its lag. The loop runs on locals, not fields: the
    // record's stores cannot alias them, so they stay in registers across the frames.
    // A chunk whose levels are all finite, the usual case, runs without the per-frame test.
    template <bool ramping, bool followerJumps>
    void followFramesChecked(const float* levels, int frames, ChunkRecord& record, bool everyLevelFinite)
    {
        if (everyLevelFinite)
            followFrames<ramping, followerJumps, false>(levels, frames, record);
        else
            followFrames<ramping, followerJumps, true>(levels, frames, record);
    }

    template <bool ramping, bool followerJumps, bool checkFinite>
    void followFrames(const float* levels, int frames, ChunkRecord& record)
    {
        float fastNow = fast, slowNow = slow, sustainNow = sustain, releaseNow = release, followerNow = follower;
        float attackNow = attackAmount, releaseAmountNow = releaseAmount, outputGainNow = outputGain,
              driveNow = drive;
        for (int i = 0; i < frames; ++i)
        {
            const float level = levels[i];
            // The level is a magnitude, so the test is false exactly for infinities and NaN.
            if (!checkFinite || level <= std::numeric_limits<float>::max())
            {
                fastNow = level > fastNow ? level : fastNow * fall;
                slowNow = level > slowNow ? slowNow + (level - slowNow) * rise : slowNow * fall;
                sustainNow = level >= sustainNow ? level : sustainNow * sustainFall;
                releaseNow = level >= releaseNow ? level : releaseNow * releaseFall;
                const float approach =
                    followerJumps ? followLagging : followerApproach(releaseNow, followerNow, releaseAmountNow);
                followerNow = followerNow + (releaseNow - followerNow) * approach;
            }
            record.fast[i] = fastNow;
            record.slow[i] = slowNow;
            record.sustain[i] = sustainNow;
            record.follower[i] = followerNow;
            if constexpr (ramping)
            {
                record.attack[i] = attackNow;
                record.release[i] = releaseAmountNow;
                record.outputGain[i] = outputGainNow;
                record.drive[i] = driveNow;
                outputGainNow += steps.outputGain;
                attackNow += steps.attack;
                releaseAmountNow += steps.release;
                driveNow += steps.drive;
            }
        }
        if constexpr (!ramping)
        {
            for (int i = 0; i < frames; ++i)
            {
                record.attack[i] = attackNow;
                record.release[i] = releaseAmountNow;
                record.outputGain[i] = outputGainNow;
                record.drive[i] = driveNow;
            }
        }
        fast = fastNow;
        slow = slowNow;
        sustain = sustainNow;
        release = releaseNow;
        follower = followerNow;
        attackAmount = attackNow;
        releaseAmount = releaseAmountNow;
        outputGain = outputGainNow;
        drive = driveNow;
    }

    // The fraction by which the follower closes in on the release envelope: three times its lag
    // relative to the envelope, limited to 0..1, times followRange, plus followBase. So base when
    // it does not lag, all the way when it lags by a third or more, and all the way always for
    // negative release amounts. A lag of 0 or below settles the limit without the division.
    float followerApproach(float envelope, float followerValue, float amount) const
    {
        if (!(envelope > 0.0f && amount >= 0.0f))
            return followLagging;
        const float guarded = envelope + 0.0001f;
        const float lag = guarded - followerValue;
        if (lag <= 0.0f)
            return followBase;
        const float scaled = (lag / guarded) * 3.0f;
        return scaled < 1.0f ? scaled * followRange + followBase : followLagging;
    }

    float fast, slow, sustain, release, follower;
    float attackAmount, releaseAmount, outputGain, drive;
    const RampSteps steps;
    const float fall, rise, sustainFall, releaseFall, followBase, followRange;
    const float followLagging;  // the approach when lagging by a third or more: 1 x range + base
};

// The shaping pass, `Width` frames at a time.
template <int Width>
struct Shaper
{
    using Lanes = FloatLanes<Width>;
    using Float = typename Lanes::Float;
    using Mask = typename Lanes::Mask;

    static Float attackCurve(Float ratio, Float amount)
    {
        Float curve = 0.96f * ratio + ((-0.003f * ratio) * ratio) * ratio;
        curve = Lanes::select(ratio > 10.0f, Lanes::splat(6.6f), curve);
        curve = Lanes::select(amount < 0.0f, ratio, curve);
        return Lanes::select(ratio < 1.0f, Lanes::splat(1.0f), curve);
    }

    static Float releaseCurve(Float ratio, Float amount)
    {
        Float curve = 0.84f * ratio + (ratio * (ratio * ratio)) * -0.0006f;
        curve = Lanes::select(ratio > 20.0f, Lanes::splat(12.0f), curve);
        curve = Lanes::select(amount < 0.0f, ratio, curve);
        return Lanes::select(ratio < 1.0f, Lanes::splat(1.0f), curve);
    }

    static Float softClip(Float drive)
    {
        const Float rational = drive * (drive * drive + 27.0f) / (drive * (drive * 9.0f) + 27.0f);
        return Lanes::select(drive < -3.0f, Lanes::splat(-1.0f), Lanes::select(drive > 3.0f, Lanes::splat(1.0f), rational));
    }

    // The gains of a group of frames from their records. Divisions and curves whose lanes would
    // all be replaced by 1 are skipped: after silence the detector is at rest and every gain is 1.
    static Float gainAt(const ChunkRecord& record, int frame)
    {
        const Float one = Lanes::splat(1.0f);
        const Float attack = Lanes::load(record.attack + frame);
        const Float release = Lanes::load(record.release + frame);

        Float attackValue = one;
        const Float slow = Lanes::load(record.slow + frame);
        const Mask slowPositive = slow > 0.0f;
        if (Lanes::any(slowPositive))
        {
            const Float ratio = Lanes::load(record.fast + frame) / Lanes::select(slowPositive, slow, one);
            attackValue = Lanes::select(slowPositive, attackCurve(ratio, attack), one);
        }

        Float releaseValue = one;
        const Float follower = Lanes::load(record.follower + frame);
        const Mask followerPositive = follower > 0.000001f;
        if (Lanes::any(followerPositive))
        {
            const Float ratio = Lanes::load(record.sustain + frame) / Lanes::select(followerPositive, follower, one);
            releaseValue = Lanes::select(followerPositive, releaseCurve(ratio, release), one);
        }

        const Float sum = (attackValue - 1.0f) * attack + release * (releaseValue - 1.0f);
        const Mask boost = sum >= 0.0f;
        if (Lanes::all(boost))
            return sum + 1.0f;
        return Lanes::select(boost, sum + 1.0f, 1.0f / Lanes::select(boost, one, 1.0f - sum));
    }

    // A group of one channel's frames through drive, clip and output gain: `count` lanes from
    // `frame` of the buffers and of the record. Non-finite input samples give 0.0 (added to the
    // output when accumulating) and are left out of the peak. With `gainBeforeClip` the output
    // gain scales the clip's input instead of its output, which is what the left channel of the
    // accumulating stereo path does.
    template <bool gainBeforeClip, bool accumulate>
    static void shape(const float* in, float* out, int frame, int count, Float gain, const ChunkRecord& record,
                      int recordFrame, Float& peak)
    {
        const bool whole = count == Width;
        const Mask valid = Lanes::laneIndex() < count;
        const Float input = whole ? Lanes::load(in + frame) : Lanes::loadPartial(in + frame, count);
        if (!accumulate && Lanes::allZero(input))
        {
            // Zeros pass through drive, clip and gain unchanged, sign included, with a clip
            // output of zero for the peak.
            const Float zero = Lanes::splat(0.0f);
            peak = Lanes::select(valid & (zero > peak), zero, peak);
            if (whole)
                Lanes::store(out + frame, input);
            else
                Lanes::storePartial(out + frame, input, count);
            return;
        }
        const Float drive = Lanes::load(record.drive + recordFrame);
        const Float outputGain = Lanes::load(record.outputGain + recordFrame);
        Float clipped;
        Float output;
        if constexpr (gainBeforeClip)
        {
            clipped = softClip(drive * ((input * gain) * outputGain));
            output = clipped / drive;
        }
        else
        {
            clipped = softClip(drive * (input * gain));
            output = (clipped / drive) * outputGain;
        }
        const Mask finite = Lanes::isFinite(input) & valid;
        const Float magnitude =
            Lanes::select(finite, Lanes::abs(clipped), Lanes::splat(-std::numeric_limits<float>::infinity()));
        peak = Lanes::select(magnitude > peak, magnitude, peak);
        output = Lanes::select(finite, output, Lanes::splat(0.0f));
        if constexpr (accumulate)
            output = output + (whole ? Lanes::load(out + frame) : Lanes::loadPartial(out + frame, count));
        if (whole)
            Lanes::store(out + frame, output);
        else
            Lanes::storePartial(out + frame, output, count);
    }

    // One chunk whose records are ready: `frames` frames from `start` of the buffers. First the
    // gains of all its frames, then each channel: short loops of independent iterations let the
    // processor overlap many groups' divisions. The left channel goes first, as in the per-sample
    // order; the drive peak is a maximum, so the lanes may add to it in any order.
    //
    // A host may hand one buffer as the left output and the right input. Then the right input of
    // the chunk is copied aside before the left output overwrites it, so that both inputs of a
    // frame are read before either output of it is written, as frame by frame.
    template <int channels, bool accumulate>
    [[gnu::noinline]] static void shapeChunk(const TransientBlockPaths::Buffers& buffers, int start, int frames,
                                             bool leftOutputIsRightInput, const ChunkRecord& record, Float& peak)
    {
        alignas(64) float gains[chunkFrames];
        for (int frame = 0; frame < frames; frame += Width)
            Lanes::store(gains + frame, gainAt(record, frame));
        alignas(64) float rightInputCopy[channels == 2 ? chunkFrames : 1];
        const float* rightInput = channels == 2 ? buffers.inRight + start : nullptr;
        if (channels == 2 && leftOutputIsRightInput)
        {
            std::memcpy(rightInputCopy, rightInput, sizeof(float) * static_cast<std::size_t>(frames));
            rightInput = rightInputCopy;
        }
        for (int frame = 0; frame < frames; frame += Width)
            shape<channels == 2 && accumulate, accumulate>(buffers.inLeft + start, buffers.outLeft + start, frame,
                                                           frames - frame < Width ? frames - frame : Width,
                                                           Lanes::load(gains + frame), record, frame, peak);
        if constexpr (channels == 2)
            for (int frame = 0; frame < frames; frame += Width)
                shape<false, accumulate>(rightInput, buffers.outRight + start, frame,
                                         frames - frame < Width ? frames - frame : Width, Lanes::load(gains + frame),
                                         record, frame, peak);
    }

    // Whether the left output and the right input share memory within a block of `count` frames.
    static bool overlap(const float* output, const float* input, int count)
    {
        const auto outputStart = reinterpret_cast<std::uintptr_t>(output);
        const auto inputStart = reinterpret_cast<std::uintptr_t>(input);
        const std::uintptr_t bytes = sizeof(float) * static_cast<std::uintptr_t>(count);
        return outputStart < inputStart + bytes && inputStart < outputStart + bytes;
    }

    template <int channels, bool accumulate>
    static void process(TransientProcessor& p, const TransientBlockPaths::Buffers& buffers, int count)
    {
        Detector detector(p, rampStepsFor(p, count));
        ChunkRecord record;
        Float peak = Lanes::splat(-std::numeric_limits<float>::infinity());
        const bool leftOutputIsRightInput = channels == 2 && overlap(buffers.outLeft, buffers.inRight, count);
        for (int start = 0; start < count; start += chunkFrames)
        {
            const int frames = count - start < chunkFrames ? count - start : chunkFrames;
            detector.follow<channels, Width>(buffers.inLeft + start, channels == 2 ? buffers.inRight + start : nullptr,
                                             frames, record);
            shapeChunk<channels, accumulate>(buffers, start, frames, leftOutputIsRightInput, record, peak);
        }
        detector.storeInto(p);

        const float largest = Lanes::largest(peak);
        if (largest > -std::numeric_limits<float>::infinity())
        {
            float drivePeak = p.drivePeak;
            if (largest > drivePeak)
                drivePeak = largest;
            if (drivePeak > 1.0f)
                drivePeak = 1.0f;
            if (drivePeak < 0.0f)
                drivePeak = 0.0f;
            p.drivePeak = drivePeak;
        }
    }
};

// The block path with `Width` lanes for one or two channels.
template <int Width>
void processBlock(TransientProcessor& p, const TransientBlockPaths::Buffers& buffers, int channels, int count,
                  bool accumulate)
{
    if (channels == 2)
    {
        if (accumulate)
            Shaper<Width>::template process<2, true>(p, buffers, count);
        else
            Shaper<Width>::template process<2, false>(p, buffers, count);
    }
    else
    {
        if (accumulate)
            Shaper<Width>::template process<1, true>(p, buffers, count);
        else
            Shaper<Width>::template process<1, false>(p, buffers, count);
    }
}
}
