#pragma once

// The per-sample signal path of Kelvane: a level-independent transient shaper followed by a
// soft-clipping drive stage and an output gain.
//
// One detector chain follows the signal. Two envelope pairs compare a fast and a slow view of the
// same level: their ratio rises at an onset (the attack side) and while a sound decays (the
// release side). The two curve values are weighted by the signed Attack and Release amounts and
// combined into one gain; cuts are the reciprocal of boosts of the same size. The drive factor
// stands before and after the soft clip, so a low drive is almost linear at unity gain and a high
// drive saturates without raising the level.
//
// All arithmetic is 32-bit float in a fixed order, so that results are reproducible bit for bit;
// the coefficient table is computed in 64-bit float from the time constants.
//
// Thread contract: the processing operations and takeDrivePeak run on the audio thread, the
// setters on a host thread; the owner serialises them (the plug-in's mutex). The structure has no
// lock and no atomic field of its own.
class TransientProcessor
{
public:
    // Main thread. Leaves the processor at attack and release amounts of 0, 0 dB, time factors of
    // 1.0 and a drive factor ramping from 0.01 to 0.1 during the first block.
    TransientProcessor();

    // ---- Control setters: main thread (or the audio thread under the owner's lock). ----------
    // Each takes a control value in 0..1 and writes one target; the processing ramps to it. A
    // value outside 0..1 counts as the nearer end of the range, and NaN as 0, so that no value a
    // host sends can make the processor's output non-finite.

    // Attack amount: +0.4 at 1, -0.6 at 0, 0 at 0.5 (a kink at the centre).
    void setAttack(float value);
    // Release amount: +0.6 at 1, -1.0 at 0, 0 at 0.5 (a kink at the centre).
    void setRelease(float value);
    // True selects a plain copy of input to output with every detector and ramp standing still.
    void setBypass(bool bypass);
    // Output gain from -9 dB at 0 through 0 dB at 0.5 to +9 dB at 1, as a linear factor.
    void setGain(float value);
    // Drive factor: linear from 0.1 at 0 to 1.0 at 0.1, then exponential up to 15.0 at 1.
    void setDrive(float value);
    // Multiplier of the attack detector's rise time (0.5, 1.0 or 2.0); recomputes the table.
    void setAttackTime(float factor);
    // Multiplier of the release detector's times (0.5, 1.0 or 2.0); recomputes the table.
    void setReleaseTime(float factor);
    // Recomputes the coefficient table for a rate in Hz. A rate that is not above 0 is ignored.
    // The detector times are fixed in samples at 44100 Hz: the host's rate never reaches here.
    void setSampleRate(float rate);

    // ---- Processing: audio thread. ------------------------------------------------------------
    // One block of `count` frames. Any of the buffers may be the same buffer as any other (a host
    // hands one buffer as both inputs of a mono track, and processes in place); buffers that are
    // not the same do not overlap. Both inputs of a frame are read before either output of it is
    // written, so every way of sharing gives the samples of separate buffers; outputs that share
    // a buffer keep the right channel. With `accumulate` the result is added to the output instead
    // of replacing it. A count below 1 does nothing.
    // A non-finite input sample gives 0.0 at the output and leaves the detectors and the drive
    // peak as they were; the ramps advance as for any other sample.
    void processStereo(const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                       int count, bool accumulate);
    void processMono(const float* in, float* out, int count, bool accumulate);

    // Audio thread (under the owner's lock). Returns the soft clip's peak output magnitude since
    // the last call, in 0..1, and clears it.
    float takeDrivePeak();

    // ---- The curves of the per-sample path, exposed so they can be checked on their own. ----

    // Gain contribution of the attack side for the ratio fast / slow envelope (r >= 1 at onsets).
    // Positive amounts follow a cubic that starts at 0.957 (a step below 1.0 that belongs to the
    // curve) and meets 6.6 at a ratio of 10; negative amounts follow the ratio without limit.
    static float attackCurve(float ratio, float attackAmount)
    {
        if (ratio < 1.0f)
            return 1.0f;
        if (attackAmount < 0.0f)
            return ratio;
        if (ratio > 10.0f)
            return 6.6f;
        return 0.96f * ratio + ((-0.003f * ratio) * ratio) * ratio;
    }

    // Gain contribution of the release side for the ratio sustain envelope / release follower:
    // a cubic that meets 12.0 at a ratio of 20 for positive amounts, the ratio for negative ones.
    static float releaseCurve(float ratio, float releaseAmount)
    {
        if (ratio < 1.0f)
            return 1.0f;
        if (releaseAmount < 0.0f)
            return ratio;
        if (ratio > 20.0f)
            return 12.0f;
        return 0.84f * ratio + (ratio * (ratio * ratio)) * -0.0006f;
    }

    // Combined gain for the weighted sum s of both curves: 1 + s for s >= 0, 1 / (1 - s) below,
    // so that cuts are the reciprocal of boosts of the same size.
    static float gainLaw(float weightedSum)
    {
        if (weightedSum >= 0.0f)
            return weightedSum + 1.0f;
        return 1.0f / (1.0f - weightedSum);
    }

    // Odd rational soft clip with unity slope at 0; exactly +-1.0 at +-3.0 and constant beyond.
    static float softClip(float drive)
    {
        if (drive < -3.0f)
            return -1.0f;
        if (drive > 3.0f)
            return 1.0f;
        return drive * (drive * drive + 27.0f) / (drive * (drive * 9.0f) + 27.0f);
    }

    // ---- State. Written only by the operations above; public so that owners and tests can
    // read it. Amounts and gains are linear factors, times are per-sample coefficients. ---------
    float drivePeak;          // peak |soft clip output| since takeDrivePeak, 0..1
    bool bypassed;            // plain copy instead of processing
    float driveCurrent;       // drive factor in use, ramped per sample
    float driveTarget;        // drive factor reached at the end of the next block
    float outputTrim;         // constant second factor of the output gain target
    float attackTimeFactor;   // 0.5, 1.0 or 2.0
    float releaseTimeFactor;  // 0.5, 1.0 or 2.0
    float sampleRate;         // Hz the coefficients are computed for; stays 44100
    float attackCurrent;      // signed attack amount in use
    float attackTarget;
    float releaseCurrent;     // signed release amount in use
    float releaseTarget;
    float outputGainCurrent;  // linear output gain in use
    float outputGainTarget;
    float fastEnvelope;       // attack side: instant rise, 0.2 s fall
    float slowEnvelope;       // attack side: timed rise, 0.2 s fall
    float releaseEnvelope;    // release side: instant rise, timed fall
    float releaseFollower;    // release side: adaptive smoother of releaseEnvelope
    float sustainEnvelope;    // release side: instant rise, 4 s fall
    float fallCoeff;          // per-sample multiplier of the attack side's fall
    float attackRiseCoeff;    // per-sample fraction of slowEnvelope's rise
    float followBase;         // smallest per-sample fraction of releaseFollower's approach
    float followRange;        // 1 - followBase
    float releaseFallCoeff;   // per-sample multiplier of releaseEnvelope's fall
    float spareCoeff;         // computed with the table, read by nothing
    float sustainFallCoeff;   // per-sample multiplier of sustainEnvelope's fall

};
