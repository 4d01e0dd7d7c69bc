#include "dsp/TransientProcessor.h"

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

// A control value limited to 0..1, NaN read as 0: a host or a damaged state may send anything, and
// a value outside the range would take the power laws to infinity and the ramps to NaN for good.
float limitedToUnit(float value)
{
    if (!(value >= 0.0f))
        return 0.0f;
    return value <= 1.0f ? value : 1.0f;
}

// Per-sample factor that moves a value by a factor of 0.1 (-20 dB) in `seconds` at `rate`.
float tenthPerSeconds(double seconds, double rate)
{
    return static_cast<float>(std::pow(0.1, 1.0 / (seconds * rate)));
}
}

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

void TransientProcessor::setAttack(float control)
{
    const float value = limitedToUnit(control);
    const float amount = (value - 0.5f) * 2.0f;
    attackTarget = amount >= 0.0f ? amount * 0.4f : amount * 0.6f;
}

void TransientProcessor::setRelease(float control)
{
    const float value = limitedToUnit(control);
    const float amount = (value - 0.5f) * 2.0f;
    releaseTarget = amount < 0.0f ? amount : amount * 0.6f;
}

void TransientProcessor::setBypass(bool bypass)
{
    bypassed = bypass;
}

void TransientProcessor::setGain(float control)
{
    const float value = limitedToUnit(control);
    const float amount = (value - 0.5f) * 2.0f;
    const float decibels = amount * 9.0f;
    outputGainTarget = static_cast<float>(std::pow(10.0, static_cast<double>(decibels) / 20.0));
}

void TransientProcessor::setDrive(float control)
{
    const float value = limitedToUnit(control);
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
