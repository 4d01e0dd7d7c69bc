// Block processing of TransientProcessor.
//
// A block runs in two passes over chunks of up to `chunkFrames` frames:
//
// - The detector pass walks the frames in order and carries everything that depends on the
//   previous sample: the five envelopes and the four ramps. For every frame it records the
//   envelopes and the ramp values that the frame's gain and output stage read.
// - The shaping pass turns those records into gains and output samples four frames at a time. The
//   ratios, the curves, the gain law, the soft clip and the output divisions depend on nothing but
//   the frame's own record, so the lanes are independent and the divider serves four frames per
//   instruction.
//
// The detector pass is bound by the latency of its recurrences and the shaping pass by arithmetic
// throughput, so the two are interleaved: while the detector walks one chunk, the shaping pass
// works on the chunk before it, whose records were written a whole chunk earlier.
//
// Both passes perform the per-sample operations of the processor in their order, so the result is
// bit for bit that of processing one sample after the other.

#include "dsp/DenormalGuard.h"
#include "dsp/FloatLanes.h"
#include "dsp/TransientProcessor.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace
{
using FloatLanes::Float;
using FloatLanes::Mask;
using FloatLanes::select;
using FloatLanes::splat;

constexpr int lanes = FloatLanes::width;
constexpr int chunkFrames = 64;  // multiple of the lane count; 2 KiB of records on the stack

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
    alignas(16) float fast[chunkFrames];
    alignas(16) float slow[chunkFrames];
    alignas(16) float sustain[chunkFrames];
    alignas(16) float follower[chunkFrames];
    alignas(16) float attack[chunkFrames];
    alignas(16) float release[chunkFrames];
    alignas(16) float outputGain[chunkFrames];
    alignas(16) float drive[chunkFrames];
};

RampSteps rampStepsFor(const TransientProcessor& p, int count)
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
    explicit Detector(const TransientProcessor& p, const RampSteps& rampSteps)
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

    // Follows frames [first, first + count) of a chunk and records them. A frame whose detector
    // level is not finite leaves the envelopes standing; the ramps advance on every frame.
    template <int channels>
    [[gnu::always_inline]] void follow(const float* left, const float* right, int first, int count,
                                       ChunkRecord& record)
    {
        for (int i = first; i < first + count; ++i)
        {
            const float level = channels == 2 ? (std::fabs(left[i]) + std::fabs(right[i])) * 0.5f : std::fabs(left[i]);
            // The level is a magnitude, so this is false exactly for infinities and NaN.
            if (level <= std::numeric_limits<float>::max())
            {
                fast = level > fast ? level : fast * fall;
                slow = level > slow ? slow + (level - slow) * rise : slow * fall;
                sustain = level >= sustain ? level : sustain * sustainFall;
                release = level >= release ? level : release * releaseFall;
                follower = follower + (release - follower) * followerApproach();
            }
            record.fast[i] = fast;
            record.slow[i] = slow;
            record.sustain[i] = sustain;
            record.follower[i] = follower;
            record.attack[i] = attackAmount;
            record.release[i] = releaseAmount;
            record.outputGain[i] = outputGain;
            record.drive[i] = drive;
            outputGain += steps.outputGain;
            attackAmount += steps.attack;
            releaseAmount += steps.release;
            drive += steps.drive;
        }
    }

    // The fraction by which the follower closes in on the release envelope: three times its lag
    // relative to the envelope, limited to 0..1, times followRange, plus followBase. So base when
    // it does not lag, all the way when it lags by a third or more, and all the way always for
    // negative release amounts. A lag of 0 or below settles the limit without the division.
    [[gnu::always_inline]] float followerApproach() const
    {
        if (!(release > 0.0f && releaseAmount >= 0.0f))
            return followLagging;
        const float guarded = release + 0.0001f;
        const float lag = guarded - follower;
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

// Pads a record behind its last frame to whole lanes with values that give a gain of 1, a drive of
// 1 and silence.
void padRecord(ChunkRecord& record, int frames)
{
    for (int i = frames; i % lanes != 0; ++i)
    {
        record.fast[i] = record.slow[i] = record.sustain[i] = record.follower[i] = 0.0f;
        record.attack[i] = record.release[i] = record.outputGain[i] = 0.0f;
        record.drive[i] = 1.0f;
    }
}

inline Float attackCurve(Float ratio, Float amount)
{
    Float curve = 0.96f * ratio + ((-0.003f * ratio) * ratio) * ratio;
    curve = select(ratio > 10.0f, splat(6.6f), curve);
    curve = select(amount < 0.0f, ratio, curve);
    return select(ratio < 1.0f, splat(1.0f), curve);
}

inline Float releaseCurve(Float ratio, Float amount)
{
    Float curve = 0.84f * ratio + (ratio * (ratio * ratio)) * -0.0006f;
    curve = select(ratio > 20.0f, splat(12.0f), curve);
    curve = select(amount < 0.0f, ratio, curve);
    return select(ratio < 1.0f, splat(1.0f), curve);
}

inline Float softClip(Float drive)
{
    const Float rational = drive * (drive * drive + 27.0f) / (drive * (drive * 9.0f) + 27.0f);
    return select(drive < -3.0f, splat(-1.0f), select(drive > 3.0f, splat(1.0f), rational));
}

// The gains of four frames from their records. Divisions and curves whose lanes would all be
// replaced by 1 are skipped: after silence the detector is at rest and every gain is 1.
inline Float gainAt(const ChunkRecord& record, int frame)
{
    const Float one = splat(1.0f);
    const Float attack = FloatLanes::load(record.attack + frame);
    const Float release = FloatLanes::load(record.release + frame);

    Float attackValue = one;
    const Float slow = FloatLanes::load(record.slow + frame);
    const Mask slowPositive = slow > 0.0f;
    if (FloatLanes::any(slowPositive))
    {
        const Float ratio = FloatLanes::load(record.fast + frame) / select(slowPositive, slow, one);
        attackValue = select(slowPositive, attackCurve(ratio, attack), one);
    }

    Float releaseValue = one;
    const Float follower = FloatLanes::load(record.follower + frame);
    const Mask followerPositive = follower > 0.000001f;
    if (FloatLanes::any(followerPositive))
    {
        const Float ratio = FloatLanes::load(record.sustain + frame) / select(followerPositive, follower, one);
        releaseValue = select(followerPositive, releaseCurve(ratio, release), one);
    }

    const Float sum = (attackValue - 1.0f) * attack + release * (releaseValue - 1.0f);
    const Mask boost = sum >= 0.0f;
    if (FloatLanes::all(boost))
        return sum + 1.0f;
    return select(boost, sum + 1.0f, 1.0f / select(boost, one, 1.0f - sum));
}

// Reads `count` (1..lanes) floats into lanes padded with zeros.
inline Float loadPartial(const float* source, int count)
{
    float padded[lanes] = {};
    std::memcpy(padded, source, sizeof(float) * static_cast<std::size_t>(count));
    return FloatLanes::load(padded);
}

inline void storePartial(float* target, Float values, int count)
{
    float padded[lanes];
    FloatLanes::store(padded, values);
    std::memcpy(target, padded, sizeof(float) * static_cast<std::size_t>(count));
}

// One channel's input and output.
struct ChannelIo
{
    const float* in;
    float* out;
};

// Four frames of one channel through drive, clip and output gain, starting at `frame` of the
// buffers and at `recordFrame` of the record; `count` of the lanes are real frames. Non-finite
// input samples give 0.0 (added to the output when accumulating) and are left out of the peak.
// With `gainBeforeClip` the output gain scales the clip's input instead of its output, which is
// what the left channel of the accumulating stereo path does.
template <bool gainBeforeClip, bool accumulate>
[[gnu::always_inline]] inline void shapeLanes(const ChannelIo& channel, int frame, int count, Float gain,
                                              const ChunkRecord& record, int recordFrame, Float& peak)
{
    const Mask laneIndex = {0, 1, 2, 3};
    const bool whole = count == lanes;
    const Float input = whole ? FloatLanes::load(channel.in + frame) : loadPartial(channel.in + frame, count);
    if (!accumulate && FloatLanes::allZero(input))
    {
        // Zeros pass through drive, clip and gain unchanged, sign included, with a clip output
        // of zero for the peak.
        const Float zero = splat(0.0f);
        peak = select((laneIndex < count) & (zero > peak), zero, peak);
        if (whole)
            FloatLanes::store(channel.out + frame, input);
        else
            storePartial(channel.out + frame, input, count);
        return;
    }
    const Float drive = FloatLanes::load(record.drive + recordFrame);
    const Float outputGain = FloatLanes::load(record.outputGain + recordFrame);
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
    const Mask finite = FloatLanes::isFinite(input) & (laneIndex < count);
    const Float magnitude = select(finite, FloatLanes::abs(clipped), splat(-std::numeric_limits<float>::infinity()));
    peak = select(magnitude > peak, magnitude, peak);
    output = select(finite, output, splat(0.0f));
    if constexpr (accumulate)
        output = output + (whole ? FloatLanes::load(channel.out + frame) : loadPartial(channel.out + frame, count));
    if (whole)
        FloatLanes::store(channel.out + frame, output);
    else
        storePartial(channel.out + frame, output, count);
}

// The shaping pass for the four frames of a chunk's record at `recordFrame`, written to the
// buffers at `frame`. The left channel goes first, as in the per-sample order; the drive peak is a
// maximum, so the lanes may add to it in any order.
template <int channels, bool accumulate>
[[gnu::always_inline]] inline void shapeFrames(const ChannelIo& left, const ChannelIo& right, int frame, int count,
                                               const ChunkRecord& record, int recordFrame, Float& peak)
{
    const Float gain = gainAt(record, recordFrame);
    shapeLanes<channels == 2 && accumulate, accumulate>(left, frame, count, gain, record, recordFrame, peak);
    if constexpr (channels == 2)
        shapeLanes<false, accumulate>(right, frame, count, gain, record, recordFrame, peak);
}

template <int channels, bool accumulate>
void processBlock(TransientProcessor& p, const ChannelIo& left, const ChannelIo& right, int count)
{
    Detector detector(p, rampStepsFor(p, count));
    ChunkRecord record;
    Float peak = splat(-std::numeric_limits<float>::infinity());
    for (int start = 0; start < count; start += chunkFrames)
    {
        const int frames = count - start < chunkFrames ? count - start : chunkFrames;
        detector.follow<channels>(left.in + start, channels == 2 ? right.in + start : nullptr, 0, frames, record);
        padRecord(record, frames);
        for (int frame = 0; frame < frames; frame += lanes)
            shapeFrames<channels, accumulate>(left, right, start + frame, frames - frame < lanes ? frames - frame : lanes,
                                              record, frame, peak);
    }
    detector.storeInto(p);

    const float largest = FloatLanes::largest(peak);
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
}

void TransientProcessor::processMono(const float* in, float* out, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (bypassed)
    {
        for (int i = 0; i < count; ++i)
            out[i] = in[i];
        return;
    }
    const DenormalGuard denormalGuard;
    if (accumulate)
        processBlock<1, true>(*this, {in, out}, {}, count);
    else
        processBlock<1, false>(*this, {in, out}, {}, count);
}

void TransientProcessor::processStereo(const float* inLeft, const float* inRight, float* outLeft,
                                       float* outRight, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (bypassed)
    {
        for (int i = 0; i < count; ++i)
            outLeft[i] = inLeft[i];
        for (int i = 0; i < count; ++i)
            outRight[i] = inRight[i];
        return;
    }
    const DenormalGuard denormalGuard;
    if (accumulate)
        processBlock<2, true>(*this, {inLeft, outLeft}, {inRight, outRight}, count);
    else
        processBlock<2, false>(*this, {inLeft, outLeft}, {inRight, outRight}, count);
}
