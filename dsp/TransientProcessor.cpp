#include "dsp/TransientProcessor.h"

#include "dsp/DenormalGuard.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace
{
// About 1 / 0.9, one float step below its nearest float (bit pattern 0x3F8E38E3): maps the drive
// range 0.1..1 onto the exponent range 0..1 of the power law.
float driveExponentScale()
{
    const std::uint32_t bits = 0x3F8E38E3u;
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// True for every value but the infinities and NaN, by the exponent bits alone so that it costs
// one compare in the per-sample loop.
inline bool isFinite(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return (bits & 0x7F800000u) != 0x7F800000u;
}

// Per-sample factor that moves a value by a factor of 0.1 (-20 dB) in `seconds` at `rate`.
float tenthPerSeconds(double seconds, double rate)
{
    return static_cast<float>(std::pow(0.1, 1.0 / (seconds * rate)));
}
}

struct TransientProcessor::BlockSteps
{
    float outputGain;
    float attack;
    float release;
    float drive;
};

TransientProcessor::TransientProcessor()
    : drivePeak(0.0f),
      bypassed(false),
      driveCurrent(0.01f),
      driveTarget(0.1f),
      outputTrim(1.0f),
      attackTimeFactor(1.0f),
      releaseTimeFactor(1.0f),
      sampleRate(44100.0f),
      attackCurrent(0.0f),
      attackTarget(0.0f),
      releaseCurrent(0.0f),
      releaseTarget(0.0f),
      outputGainCurrent(1.0f),
      outputGainTarget(1.0f),
      fastEnvelope(0.0f),
      slowEnvelope(0.0f),
      releaseEnvelope(0.0f),
      releaseFollower(0.0f),
      sustainEnvelope(0.0f),
      fallCoeff(0.0f),
      attackRiseCoeff(0.0f),
      followBase(0.0f),
      followRange(0.0f),
      releaseFallCoeff(0.0f),
      spareCoeff(0.0f),
      sustainFallCoeff(0.0f)
{
    setSampleRate(44100.0f);
}

void TransientProcessor::setAttack(float value)
{
    const float amount = (value - 0.5f) * 2.0f;
    attackTarget = amount >= 0.0f ? amount * 0.4f : amount * 0.6f;
}

void TransientProcessor::setRelease(float value)
{
    const float amount = (value - 0.5f) * 2.0f;
    releaseTarget = amount < 0.0f ? amount : amount * 0.6f;
}

void TransientProcessor::setBypass(bool bypass)
{
    bypassed = bypass;
}

void TransientProcessor::setGain(float value)
{
    const float amount = (value - 0.5f) * 2.0f;
    const float decibels = amount * 9.0f;
    outputGainTarget = static_cast<float>(std::pow(10.0, static_cast<double>(decibels) / 20.0));
}

void TransientProcessor::setDrive(float value)
{
    if (value < 0.1f)
        driveTarget = (value * 10.0f) * 0.9f + 0.1f;
    else
        driveTarget = std::pow(15.0f, (value - 0.1f) * driveExponentScale());
}

void TransientProcessor::setAttackTime(float factor)
{
    attackTimeFactor = factor;
    setSampleRate(sampleRate);
}

void TransientProcessor::setReleaseTime(float factor)
{
    releaseTimeFactor = factor;
    setSampleRate(sampleRate);
}

void TransientProcessor::setSampleRate(float rate)
{
    if (!(rate > 0.0f))
        return;
    sampleRate = rate;
    const double r = rate;
    const double attackTime = static_cast<double>(attackTimeFactor) * 0.01;
    const double followTime = static_cast<double>(releaseTimeFactor) * 0.02;
    const double releaseTime = static_cast<double>(releaseTimeFactor) * 0.1;

    fallCoeff = tenthPerSeconds(0.2, r);
    attackRiseCoeff = 1.0f - tenthPerSeconds(attackTime, r);
    followBase = 1.0f - tenthPerSeconds(followTime, r);
    followRange = 1.0f - followBase;
    releaseFallCoeff = tenthPerSeconds(releaseTime, r);
    spareCoeff = 1.0f - tenthPerSeconds(0.07, r);
    sustainFallCoeff = tenthPerSeconds(4.0, r);
}

float TransientProcessor::takeDrivePeak()
{
    const float peak = drivePeak;
    drivePeak = 0.0f;
    return peak;
}

[[gnu::always_inline]] inline TransientProcessor::BlockSteps TransientProcessor::beginBlock(int count) const
{
    const float inverse = 1.0f / static_cast<float>(count);
    return {inverse * (outputGainTarget * outputTrim - outputGainCurrent),
            inverse * (attackTarget - attackCurrent),
            inverse * (releaseTarget - releaseCurrent),
            inverse * (driveTarget - driveCurrent)};
}

[[gnu::always_inline]] inline void TransientProcessor::advanceRamps(const BlockSteps& steps)
{
    outputGainCurrent += steps.outputGain;
    attackCurrent += steps.attack;
    releaseCurrent += steps.release;
    driveCurrent += steps.drive;
}

[[gnu::always_inline]] inline void TransientProcessor::followLevel(float level)
{
    // Attack side: the ratio of an instant and a timed rise is large at onsets.
    if (level > fastEnvelope)
        fastEnvelope = level;
    else
        fastEnvelope = fastEnvelope * fallCoeff;
    if (level > slowEnvelope)
        slowEnvelope = slowEnvelope + (level - slowEnvelope) * attackRiseCoeff;
    else
        slowEnvelope = slowEnvelope * fallCoeff;

    // Release side: the ratio of a very slow and an adaptive fall is large while a sound decays.
    if (level >= sustainEnvelope)
        sustainEnvelope = level;
    else
        sustainEnvelope = sustainEnvelope * sustainFallCoeff;
    if (level >= releaseEnvelope)
        releaseEnvelope = level;
    else
        releaseEnvelope = releaseEnvelope * releaseFallCoeff;

    // The follower jumps to the envelope while it lags by a third of it or more and closes in at
    // followBase as the lag vanishes; with a negative release amount it equals the envelope.
    const float envelope = releaseEnvelope;
    const float follower = releaseFollower;
    float lag = 1.0f;
    if (envelope > 0.0f && releaseCurrent >= 0.0f)
    {
        const float guarded = envelope + 0.0001f;
        lag = (guarded - follower) / guarded;
    }
    float approach = lag * 3.0f;
    if (approach < 0.0f)
        approach = 0.0f;
    else if (approach > 1.0f)
        approach = 1.0f;
    releaseFollower = follower + (envelope - follower) * (approach * followRange + followBase);
}

[[gnu::always_inline]] inline float TransientProcessor::currentGain() const
{
    float attackValue = 1.0f;
    if (slowEnvelope > 0.0f)
        attackValue = attackCurve(fastEnvelope / slowEnvelope, attackCurrent);
    float releaseValue = 1.0f;
    if (releaseFollower > 0.000001f)
        releaseValue = releaseCurve(sustainEnvelope / releaseFollower, releaseCurrent);
    return gainLaw((attackValue - 1.0f) * attackCurrent + releaseCurrent * (releaseValue - 1.0f));
}

[[gnu::always_inline]] inline float TransientProcessor::driveAndClip(float driveInput)
{
    const float clipped = softClip(driveCurrent * driveInput);
    const float magnitude = std::fabs(clipped);
    if (magnitude > drivePeak)
        drivePeak = magnitude;
    if (drivePeak > 1.0f)
        drivePeak = 1.0f;
    if (drivePeak < 0.0f)
        drivePeak = 0.0f;
    return clipped;
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
    // The loop runs on a local copy: the caller's buffers cannot alias it, so its fields stay in
    // registers instead of being reloaded after every store to the output.
    TransientProcessor local = *this;
    local.runMono(in, out, count, accumulate);
    *this = local;
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
    TransientProcessor local = *this;
    local.runStereo(inLeft, inRight, outLeft, outRight, count, accumulate);
    *this = local;
}

void TransientProcessor::runMono(const float* in, float* out, int count, bool accumulate)
{
    const BlockSteps steps = beginBlock(count);
    for (int i = 0; i < count; ++i)
    {
        const float x = in[i];
        float result = 0.0f;
        if (isFinite(x))
        {
            followLevel(std::fabs(x));
            const float clipped = driveAndClip(x * currentGain());
            result = (clipped / driveCurrent) * outputGainCurrent;
        }
        if (accumulate)
            result = result + out[i];
        out[i] = result;
        advanceRamps(steps);
    }
}

void TransientProcessor::runStereo(const float* inLeft, const float* inRight, float* outLeft,
                                   float* outRight, int count, bool accumulate)
{
    const BlockSteps steps = beginBlock(count);
    for (int i = 0; i < count; ++i)
    {
        const float left = inLeft[i];
        const float right = inRight[i];
        // One linked detector for both channels. A non-finite level (a non-finite sample, or two
        // samples whose sum overflows) leaves the detector standing for this frame.
        const float level = (std::fabs(left) + std::fabs(right)) * 0.5f;
        if (isFinite(level))
            followLevel(level);
        const bool leftFinite = isFinite(left);
        const bool rightFinite = isFinite(right);
        const float gain = leftFinite || rightFinite ? currentGain() : 1.0f;

        float leftResult = 0.0f;
        float rightResult = 0.0f;
        if (!accumulate)
        {
            if (leftFinite)
                leftResult = (driveAndClip(left * gain) / driveCurrent) * outputGainCurrent;
            if (rightFinite)
                rightResult = (driveAndClip(right * gain) / driveCurrent) * outputGainCurrent;
        }
        else
        {
            // The accumulating path applies the output gain before the clip on the left and after
            // it on the right; mixers that rely on it get exactly this order.
            if (leftFinite)
                leftResult = driveAndClip((left * gain) * outputGainCurrent) / driveCurrent;
            if (rightFinite)
                rightResult = (driveAndClip(right * gain) / driveCurrent) * outputGainCurrent;
            leftResult = leftResult + outLeft[i];
            rightResult = rightResult + outRight[i];
        }
        outLeft[i] = leftResult;
        outRight[i] = rightResult;
        advanceRamps(steps);
    }
}
