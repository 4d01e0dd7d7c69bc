#include "ReferenceTransientPath.h"

#include "dsp/DenormalGuard.h"

#include <cmath>

namespace
{
bool isFinite(float value)
{
    return std::isfinite(value);
}

struct Steps
{
    float outputGain, attack, release, drive;
};

Steps stepsFor(const TransientProcessor& p, int count)
{
    const float inverse = 1.0f / static_cast<float>(count);
    return {inverse * (p.outputGainTarget * p.outputTrim - p.outputGainCurrent), inverse * (p.attackTarget - p.attackCurrent),
            inverse * (p.releaseTarget - p.releaseCurrent), inverse * (p.driveTarget - p.driveCurrent)};
}

void advance(TransientProcessor& p, const Steps& steps)
{
    p.outputGainCurrent += steps.outputGain;
    p.attackCurrent += steps.attack;
    p.releaseCurrent += steps.release;
    p.driveCurrent += steps.drive;
}

void follow(TransientProcessor& p, float a)
{
    if (a > p.fastEnvelope)
        p.fastEnvelope = a;
    else
        p.fastEnvelope = p.fastEnvelope * p.fallCoeff;
    if (a > p.slowEnvelope)
        p.slowEnvelope = p.slowEnvelope + (a - p.slowEnvelope) * p.attackRiseCoeff;
    else
        p.slowEnvelope = p.slowEnvelope * p.fallCoeff;
    if (a >= p.sustainEnvelope)
        p.sustainEnvelope = a;
    else
        p.sustainEnvelope = p.sustainEnvelope * p.sustainFallCoeff;
    if (a >= p.releaseEnvelope)
        p.releaseEnvelope = a;
    else
        p.releaseEnvelope = p.releaseEnvelope * p.releaseFallCoeff;

    const float v = p.releaseEnvelope;
    const float w = p.releaseFollower;
    float t = 1.0f;
    if (v > 0.0f && p.releaseCurrent >= 0.0f)
    {
        const float vv = v + 0.0001f;
        t = (vv - w) / vv;
    }
    float u = t * 3.0f;
    if (u < 0.0f)
        u = 0.0f;
    if (u > 1.0f)
        u = 1.0f;
    p.releaseFollower = w + (v - w) * (u * p.followRange + p.followBase);
}

float gain(const TransientProcessor& p)
{
    float g1 = 1.0f;
    if (p.slowEnvelope > 0.0f)
    {
        const float r = p.fastEnvelope / p.slowEnvelope;
        if (!(r < 1.0f))
        {
            if (p.attackCurrent >= 0.0f)
                g1 = r > 10.0f ? 6.6f : 0.96f * r + ((-0.003f * r) * r) * r;
            else
                g1 = r;
        }
    }
    float g2 = 1.0f;
    if (p.releaseFollower > 0.000001f)
    {
        const float q = p.sustainEnvelope / p.releaseFollower;
        if (!(q < 1.0f))
        {
            if (p.releaseCurrent >= 0.0f)
                g2 = q > 20.0f ? 12.0f : 0.84f * q + (q * (q * q)) * (-0.0006f);
            else
                g2 = q;
        }
    }
    const float s = (g1 - 1.0f) * p.attackCurrent + p.releaseCurrent * (g2 - 1.0f);
    return s >= 0.0f ? s + 1.0f : 1.0f / (1.0f - s);
}

float clipAndHold(TransientProcessor& p, float d)
{
    float c;
    if (d < -3.0f)
        c = -1.0f;
    else if (d > 3.0f)
        c = 1.0f;
    else
        c = d * (d * d + 27.0f) / (d * (d * 9.0f) + 27.0f);
    if (std::fabs(c) > p.drivePeak)
        p.drivePeak = std::fabs(c);
    if (p.drivePeak > 1.0f)
        p.drivePeak = 1.0f;
    if (p.drivePeak < 0.0f)
        p.drivePeak = 0.0f;
    return c;
}
}

void referenceProcessMono(TransientProcessor& p, const float* in, float* out, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (p.bypassed)
    {
        for (int i = 0; i < count; ++i)
            out[i] = in[i];
        return;
    }
    const DenormalGuard guard;
    const Steps steps = stepsFor(p, count);
    for (int i = 0; i < count; ++i)
    {
        const float x = in[i];
        float o = 0.0f;
        if (isFinite(x))
        {
            follow(p, std::fabs(x));
            const float y = x * gain(p);
            const float c = clipAndHold(p, p.driveCurrent * y);
            o = (c / p.driveCurrent) * p.outputGainCurrent;
        }
        if (accumulate)
            o = o + out[i];
        out[i] = o;
        advance(p, steps);
    }
}

void referenceProcessStereo(TransientProcessor& p, const float* inLeft, const float* inRight, float* outLeft,
                            float* outRight, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (p.bypassed)
    {
        for (int i = 0; i < count; ++i)
            outLeft[i] = inLeft[i];
        for (int i = 0; i < count; ++i)
            outRight[i] = inRight[i];
        return;
    }
    const DenormalGuard guard;
    const Steps steps = stepsFor(p, count);
    for (int i = 0; i < count; ++i)
    {
        const float left = inLeft[i];
        const float right = inRight[i];
        const float a = (std::fabs(left) + std::fabs(right)) * 0.5f;
        if (isFinite(a))
            follow(p, a);
        const float g = gain(p);
        float oLeft = 0.0f;
        float oRight = 0.0f;
        if (!accumulate)
        {
            if (isFinite(left))
                oLeft = (clipAndHold(p, p.driveCurrent * (left * g)) / p.driveCurrent) * p.outputGainCurrent;
            if (isFinite(right))
                oRight = (clipAndHold(p, p.driveCurrent * (right * g)) / p.driveCurrent) * p.outputGainCurrent;
        }
        else
        {
            if (isFinite(left))
                oLeft = clipAndHold(p, p.driveCurrent * ((left * g) * p.outputGainCurrent)) / p.driveCurrent;
            if (isFinite(right))
                oRight = (clipAndHold(p, (right * g) * p.driveCurrent) / p.driveCurrent) * p.outputGainCurrent;
            oLeft = oLeft + outLeft[i];
            oRight = oRight + outRight[i];
        }
        outLeft[i] = oLeft;
        outRight[i] = oRight;
        advance(p, steps);
    }
}
