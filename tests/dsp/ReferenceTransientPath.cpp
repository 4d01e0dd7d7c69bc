#include "ReferenceTransientPath.h"

#include "dsp/DenormalGuard.h"

#include <cmath>

namespace
{
void follow(TransientProcessor& p, float a)
{
    p.fastEnvelope = a > p.fastEnvelope ? a : p.fastEnvelope * p.fallCoeff;
    p.slowEnvelope = a > p.slowEnvelope ? p.slowEnvelope + (a - p.slowEnvelope) * p.attackRiseCoeff
                                        : p.slowEnvelope * p.fallCoeff;
    p.sustainEnvelope = a >= p.sustainEnvelope ? a : p.sustainEnvelope * p.sustainFallCoeff;
    p.releaseEnvelope = a >= p.releaseEnvelope ? a : p.releaseEnvelope * p.releaseFallCoeff;
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
            g1 = p.attackCurrent < 0.0f ? r : r > 10.0f ? 6.6f : 0.96f * r + ((-0.003f * r) * r) * r;
    }
    float g2 = 1.0f;
    if (p.releaseFollower > 0.000001f)
    {
        const float q = p.sustainEnvelope / p.releaseFollower;
        if (!(q < 1.0f))
            g2 = p.releaseCurrent < 0.0f ? q : q > 20.0f ? 12.0f : 0.84f * q + (q * (q * q)) * (-0.0006f);
    }
    const float s = (g1 - 1.0f) * p.attackCurrent + p.releaseCurrent * (g2 - 1.0f);
    return s >= 0.0f ? s + 1.0f : 1.0f / (1.0f - s);
}

float clipAndHold(TransientProcessor& p, float d)
{
    const float c = d < -3.0f ? -1.0f : d > 3.0f ? 1.0f : d * (d * d + 27.0f) / (d * (d * 9.0f) + 27.0f);
    if (std::fabs(c) > p.drivePeak)
        p.drivePeak = std::fabs(c);
    if (p.drivePeak > 1.0f)
        p.drivePeak = 1.0f;
    if (p.drivePeak < 0.0f)
        p.drivePeak = 0.0f;
    return c;
}
}

void referenceProcess(TransientProcessor& p, const float* inLeft, const float* inRight, float* outLeft,
                      float* outRight, int channels, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (p.bypassed)
    {
        for (int i = 0; i < count; ++i)
        {
            const float left = inLeft[i];
            const float right = channels == 2 ? inRight[i] : 0.0f;
            outLeft[i] = left;
            if (channels == 2)
                outRight[i] = right;
        }
        return;
    }
    const DenormalGuard guard;
    const float inverse = 1.0f / static_cast<float>(count);
    const float gainStep = inverse * (p.outputGainTarget * p.outputTrim - p.outputGainCurrent);
    const float attackStep = inverse * (p.attackTarget - p.attackCurrent);
    const float releaseStep = inverse * (p.releaseTarget - p.releaseCurrent);
    const float driveStep = inverse * (p.driveTarget - p.driveCurrent);
    for (int i = 0; i < count; ++i)
    {
        const float left = inLeft[i];
        const float right = channels == 2 ? inRight[i] : 0.0f;
        const float a = channels == 2 ? (std::fabs(left) + std::fabs(right)) * 0.5f : std::fabs(left);
        if (std::isfinite(a))
            follow(p, a);
        const float g = gain(p);
        float oLeft = 0.0f;
        float oRight = 0.0f;
        if (channels == 2 && accumulate)
        {
            // Output gain before the clip on the left, after it on the right.
            if (std::isfinite(left))
                oLeft = clipAndHold(p, p.driveCurrent * ((left * g) * p.outputGainCurrent)) / p.driveCurrent;
            if (std::isfinite(right))
                oRight = (clipAndHold(p, (right * g) * p.driveCurrent) / p.driveCurrent) * p.outputGainCurrent;
        }
        else
        {
            if (std::isfinite(left))
                oLeft = (clipAndHold(p, p.driveCurrent * (left * g)) / p.driveCurrent) * p.outputGainCurrent;
            if (channels == 2 && std::isfinite(right))
                oRight = (clipAndHold(p, p.driveCurrent * (right * g)) / p.driveCurrent) * p.outputGainCurrent;
        }
        outLeft[i] = accumulate ? oLeft + outLeft[i] : oLeft;
        if (channels == 2)
            outRight[i] = accumulate ? oRight + outRight[i] : oRight;
        p.outputGainCurrent += gainStep;
        p.attackCurrent += attackStep;
        p.releaseCurrent += releaseStep;
        p.driveCurrent += driveStep;
    }
}
