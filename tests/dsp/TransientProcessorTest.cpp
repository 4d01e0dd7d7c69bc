#include "dsp/DenormalGuard.h"
#include "dsp/TransientProcessor.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace
{
// A processor with the effect's default controls whose ramps already stand at their targets, so
// that the next block starts from steady values.
TransientProcessor settled()
{
    TransientProcessor processor;
    processor.setDrive(0.0f);
    processor.driveCurrent = processor.driveTarget;
    return processor;
}

void snapRamps(TransientProcessor& processor)
{
    processor.attackCurrent = processor.attackTarget;
    processor.releaseCurrent = processor.releaseTarget;
    processor.outputGainCurrent = processor.outputGainTarget * processor.outputTrim;
    processor.driveCurrent = processor.driveTarget;
}

// Every field but `bypassed`, in declaration order, for whole-state comparisons.
std::array<float, 26> fieldsOf(const TransientProcessor& p)
{
    return {p.drivePeak,        p.driveCurrent,    p.driveTarget,       p.outputTrim,
            p.attackTimeFactor, p.releaseTimeFactor, p.sampleRate,      p.attackCurrent,
            p.attackTarget,     p.releaseCurrent,  p.releaseTarget,     p.outputGainCurrent,
            p.outputGainTarget, p.fastEnvelope,    p.slowEnvelope,      p.releaseEnvelope,
            p.releaseFollower,  p.sustainEnvelope, p.fallCoeff,         p.attackRiseCoeff,
            p.followBase,       p.followRange,     p.releaseFallCoeff,  p.spareCoeff,
            p.sustainFallCoeff, p.bypassed ? 1.0f : 0.0f};
}

void expectSameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        ASSERT_EQ(std::memcmp(&a[i], &b[i], sizeof(float)), 0) << "sample " << i << ": " << a[i] << " vs " << b[i];
}

// Drum-like test signal: bursts of decaying noise of varying loudness on a quiet bed.
std::vector<float> bursts(int frames, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-1.0f, 1.0f);
    std::vector<float> signal(frames);
    float envelope = 0.0f;
    for (int i = 0; i < frames; ++i)
    {
        if (i % 3001 == 0)
            envelope = 0.2f + 0.8f * (noise(random) + 1.0f) * 0.5f;
        envelope *= 0.9995f;
        signal[i] = noise(random) * (envelope + 0.001f);
    }
    return signal;
}

// The per-sample multiplier that falls by a factor of ten in `seconds` at 44.1 kHz, worked out in
// long double from the logarithm.
float tenthIn(long double seconds)
{
    return static_cast<float>(std::exp(std::log(0.1L) / (seconds * 44100.0L)));
}

float ulpOf(float value)
{
    return std::nextafter(std::fabs(value), std::numeric_limits<float>::infinity()) - std::fabs(value);
}
}

// ---- Construction and setters ----------------------------------------------------------------

TEST(TransientProcessorSetters, ConstructorLeavesNeutralStateWithDriveRampPending)
{
    const TransientProcessor p;
    EXPECT_EQ(p.drivePeak, 0.0f);
    EXPECT_FALSE(p.bypassed);
    EXPECT_EQ(p.driveCurrent, 0.01f);
    EXPECT_EQ(p.driveTarget, 0.1f);
    EXPECT_EQ(p.outputTrim, 1.0f);
    EXPECT_EQ(p.attackTimeFactor, 1.0f);
    EXPECT_EQ(p.releaseTimeFactor, 1.0f);
    EXPECT_EQ(p.sampleRate, 44100.0f);
    EXPECT_EQ(p.attackCurrent, 0.0f);
    EXPECT_EQ(p.attackTarget, 0.0f);
    EXPECT_EQ(p.releaseCurrent, 0.0f);
    EXPECT_EQ(p.releaseTarget, 0.0f);
    EXPECT_EQ(p.outputGainCurrent, 1.0f);
    EXPECT_EQ(p.outputGainTarget, 1.0f);
    for (float envelope : {p.fastEnvelope, p.slowEnvelope, p.releaseEnvelope, p.releaseFollower, p.sustainEnvelope})
        EXPECT_EQ(envelope, 0.0f);
    EXPECT_GT(p.fallCoeff, 0.0f);
}

TEST(TransientProcessorSetters, AttackReachesPlusFourTenthsAndMinusSixTenthsWithKinkAtCentre)
{
    TransientProcessor p;
    const auto attack = [&p](float value) {
        p.setAttack(value);
        return p.attackTarget;
    };
    EXPECT_EQ(attack(0.0f), -0.6f);
    EXPECT_EQ(attack(1.0f), 0.4f);
    EXPECT_EQ(attack(0.5f), 0.0f);
    EXPECT_EQ(attack(0.75f), 0.5f * 0.4f);
    EXPECT_EQ(attack(0.25f), -0.5f * 0.6f);
    EXPECT_EQ(p.attackCurrent, 0.0f) << "setters must not move the ramp";
}

TEST(TransientProcessorSetters, ReleaseReachesPlusSixTenthsAndMinusOneWithKinkAtCentre)
{
    TransientProcessor p;
    const auto release = [&p](float value) {
        p.setRelease(value);
        return p.releaseTarget;
    };
    EXPECT_EQ(release(0.0f), -1.0f);
    EXPECT_EQ(release(1.0f), 0.6f);
    EXPECT_EQ(release(0.5f), 0.0f);
    EXPECT_EQ(release(0.25f), -0.5f);
    EXPECT_EQ(release(0.75f), 0.5f * 0.6f);
}

TEST(TransientProcessorSetters, GainSpansNineDecibelsEachWay)
{
    TransientProcessor p;
    p.setGain(0.5f);
    EXPECT_EQ(p.outputGainTarget, 1.0f);
    p.setGain(0.0f);
    EXPECT_NEAR(p.outputGainTarget, 0.354813f, 1e-6f);
    const float low = p.outputGainTarget;
    p.setGain(1.0f);
    EXPECT_NEAR(p.outputGainTarget, 2.818383f, 1e-6f);
    EXPECT_NEAR(low * p.outputGainTarget, 1.0f, 1e-6f);
    p.setGain(0.75f);
    EXPECT_NEAR(20.0 * std::log10(p.outputGainTarget), 4.5, 1e-5);
    EXPECT_EQ(p.outputGainCurrent, 1.0f);
}

TEST(TransientProcessorSetters, DriveIsLinearBelowTenPercentAndExponentialAbove)
{
    TransientProcessor p;
    const auto drive = [&p](float value) {
        p.setDrive(value);
        return p.driveTarget;
    };
    EXPECT_EQ(drive(0.0f), 0.1f);
    EXPECT_EQ(drive(0.1f), 1.0f) << "0.1 takes the power branch, where the exponent is exactly 0";
    EXPECT_NEAR(drive(0.05f), 0.55f, 1e-6f);
    EXPECT_NEAR(drive(0.099999994f), 1.0f, 2e-6f) << "the two branches meet";
    EXPECT_NEAR(drive(0.55f), std::sqrt(15.0f), 1e-5f);
    EXPECT_NEAR(drive(1.0f), 15.0f, 2e-5f);
}

TEST(TransientProcessorSetters, TimeFactorsRecomputeOnlyTheirRowsOfTheTable)
{
    TransientProcessor p;
    const std::array<float, 26> before = fieldsOf(p);
    p.setAttackTime(0.5f);
    EXPECT_EQ(p.attackTimeFactor, 0.5f);
    EXPECT_NEAR(p.attackRiseCoeff, 1.0f - tenthIn(0.005L), 2 * ulpOf(p.attackRiseCoeff));
    EXPECT_EQ(p.followBase, before[20]);
    EXPECT_EQ(p.releaseFallCoeff, before[22]);

    p.setReleaseTime(2.0f);
    EXPECT_EQ(p.releaseTimeFactor, 2.0f);
    EXPECT_NEAR(p.followBase, 1.0f - tenthIn(0.04L), 2 * ulpOf(p.followBase));
    EXPECT_NEAR(p.releaseFallCoeff, tenthIn(0.2L), ulpOf(p.releaseFallCoeff));
    EXPECT_EQ(p.fallCoeff, before[18]);
    EXPECT_EQ(p.sustainFallCoeff, before[24]);
    EXPECT_EQ(p.sampleRate, 44100.0f);
}

TEST(TransientProcessorSetters, SampleRateNotAboveZeroChangesNothing)
{
    TransientProcessor p;
    p.setAttackTime(2.0f);
    const std::array<float, 26> before = fieldsOf(p);
    for (float rate : {0.0f, -1.0f, -48000.0f, std::numeric_limits<float>::quiet_NaN()})
    {
        p.setSampleRate(rate);
        EXPECT_EQ(fieldsOf(p), before) << "rate " << rate;
    }
    p.setSampleRate(88200.0f);
    EXPECT_EQ(p.sampleRate, 88200.0f);
    EXPECT_NEAR(p.fallCoeff, static_cast<float>(std::exp(std::log(0.1L) / (0.2L * 88200.0L))), ulpOf(p.fallCoeff));
}

// ---- Coefficient table ---------------------------------------------------------------------

TEST(TransientProcessorCoefficients, TableAt44100MatchesTheTimeConstants)
{
    const TransientProcessor p;
    EXPECT_NEAR(p.fallCoeff, tenthIn(0.2L), ulpOf(p.fallCoeff));
    EXPECT_NEAR(p.attackRiseCoeff, 1.0f - tenthIn(0.01L), 2 * ulpOf(p.attackRiseCoeff));
    EXPECT_NEAR(p.followBase, 1.0f - tenthIn(0.02L), 2 * ulpOf(p.followBase));
    EXPECT_EQ(p.followRange, 1.0f - p.followBase);
    EXPECT_NEAR(p.releaseFallCoeff, tenthIn(0.1L), ulpOf(p.releaseFallCoeff));
    EXPECT_NEAR(p.spareCoeff, 1.0f - tenthIn(0.07L), 2 * ulpOf(p.spareCoeff));
    EXPECT_NEAR(p.sustainFallCoeff, tenthIn(4.0L), ulpOf(p.sustainFallCoeff));

    // Each multiplier moves a value by -20 dB in its time.
    EXPECT_NEAR(std::pow(static_cast<long double>(p.fallCoeff), 0.2L * 44100), 0.1L, 1e-4L);
    EXPECT_NEAR(std::pow(static_cast<long double>(p.sustainFallCoeff), 4.0L * 44100), 0.1L, 1e-3L);
}

// ---- Curves and gain law -------------------------------------------------------------------

TEST(TransientProcessorCurves, AttackCurveStepsDownAtOneAndPinsAtTen)
{
    EXPECT_EQ(TransientProcessor::attackCurve(0.999f, 0.4f), 1.0f);
    EXPECT_NEAR(TransientProcessor::attackCurve(1.0f, 0.4f), 0.957f, 1e-6f);
    EXPECT_NEAR(TransientProcessor::attackCurve(1.0f, 0.0f), 0.957f, 1e-6f) << "an amount of 0 is positive";
    EXPECT_NEAR(TransientProcessor::attackCurve(10.0f, 0.4f), 6.6f, 1e-5f);
    EXPECT_EQ(TransientProcessor::attackCurve(10.001f, 0.4f), 6.6f);
    EXPECT_EQ(TransientProcessor::attackCurve(1e6f, 0.1f), 6.6f);
    float previous = 0.0f;
    for (float ratio = 1.0f; ratio <= 10.0f; ratio += 0.25f)
    {
        const float value = TransientProcessor::attackCurve(ratio, 0.4f);
        EXPECT_GT(value, previous) << "rising at " << ratio;
        previous = value;
    }
}

TEST(TransientProcessorCurves, NegativeAmountsFollowTheRatioWithoutLimit)
{
    EXPECT_EQ(TransientProcessor::attackCurve(0.5f, -0.6f), 1.0f);
    EXPECT_EQ(TransientProcessor::attackCurve(250.0f, -0.01f), 250.0f);
    EXPECT_EQ(TransientProcessor::releaseCurve(0.9f, -1.0f), 1.0f);
    EXPECT_EQ(TransientProcessor::releaseCurve(1000.0f, -0.5f), 1000.0f);
}

TEST(TransientProcessorCurves, ReleaseCurveStepsDownAtOneAndPinsAtTwenty)
{
    EXPECT_EQ(TransientProcessor::releaseCurve(0.999f, 0.6f), 1.0f);
    EXPECT_NEAR(TransientProcessor::releaseCurve(1.0f, 0.6f), 0.8394f, 1e-6f);
    EXPECT_NEAR(TransientProcessor::releaseCurve(20.0f, 0.6f), 12.0f, 2e-5f);
    EXPECT_EQ(TransientProcessor::releaseCurve(20.5f, 0.0f), 12.0f);
}

TEST(TransientProcessorCurves, GainLawCutsAreReciprocalsOfBoosts)
{
    EXPECT_EQ(TransientProcessor::gainLaw(0.0f), 1.0f);
    EXPECT_EQ(TransientProcessor::gainLaw(2.0f), 3.0f);
    EXPECT_EQ(TransientProcessor::gainLaw(-2.0f), 1.0f / 3.0f);
    for (float s = 0.125f; s < 100.0f; s *= 1.7f)
        EXPECT_NEAR(TransientProcessor::gainLaw(s) * TransientProcessor::gainLaw(-s), 1.0f, 1e-6f) << s;
}

TEST(TransientProcessorCurves, SoftClipMeetsPlusMinusOneExactlyAtPlusMinusThree)
{
    EXPECT_EQ(TransientProcessor::softClip(3.0f), 1.0f);
    EXPECT_EQ(TransientProcessor::softClip(-3.0f), -1.0f);
    EXPECT_EQ(TransientProcessor::softClip(std::nextafter(3.0f, 4.0f)), 1.0f);
    EXPECT_EQ(TransientProcessor::softClip(-1e30f), -1.0f);
    EXPECT_EQ(TransientProcessor::softClip(0.0f), 0.0f);
    EXPECT_NEAR(TransientProcessor::softClip(1e-3f), 1e-3f, 1e-9f) << "unity slope at 0";
    EXPECT_EQ(TransientProcessor::softClip(2.0f), 62.0f / 63.0f);
    float previous = -1.0f;
    for (float d = -2.9f; d <= 3.0f; d += 0.1f)
    {
        EXPECT_EQ(TransientProcessor::softClip(-d), -TransientProcessor::softClip(d));
        EXPECT_GT(TransientProcessor::softClip(d), previous);
        previous = TransientProcessor::softClip(d);
    }
}

// ---- The per-sample path -------------------------------------------------------------------

TEST(TransientProcessorPath, EnvelopesFollowAnImpulseAndDecayWithoutFloor)
{
    TransientProcessor p;
    float x = 1.0f;
    float y = 0.0f;
    p.processMono(&x, &y, 1, false);
    EXPECT_EQ(p.fastEnvelope, 1.0f);
    EXPECT_EQ(p.slowEnvelope, p.attackRiseCoeff);
    EXPECT_EQ(p.sustainEnvelope, 1.0f);
    EXPECT_EQ(p.releaseEnvelope, 1.0f);
    EXPECT_EQ(p.releaseFollower, p.followRange + p.followBase) << "a lag of more than a third jumps";
    // Amounts of 0 leave the gain at 1; drive 0.01 is all but linear.
    EXPECT_NEAR(y, 1.0f, 1e-4f);

    // The multiplicative falls, sample by sample for a few samples ...
    std::vector<float> silence(8820, 0.0f);
    float fast = 1.0f;
    float slow = p.attackRiseCoeff;
    float release = 1.0f;
    for (int i = 0; i < 3; ++i)
    {
        p.processMono(&silence[0], &silence[0], 1, false);
        fast *= p.fallCoeff;
        slow *= p.fallCoeff;
        release *= p.releaseFallCoeff;
        EXPECT_EQ(p.fastEnvelope, fast);
        EXPECT_EQ(p.slowEnvelope, slow);
        EXPECT_EQ(p.releaseEnvelope, release);
        EXPECT_GE(p.releaseFollower, p.releaseEnvelope) << "the follower lags a fall from above";
    }
    // ... and by -20 dB over their time constants.
    p.processMono(silence.data(), silence.data(), 8820 - 3, false);
    EXPECT_NEAR(p.fastEnvelope, 0.1f, 1e-4f);
    EXPECT_NEAR(p.sustainEnvelope, std::pow(0.1f, 8821.0f / (4.0f * 44100.0f)), 1e-4f);
    EXPECT_NEAR(p.releaseEnvelope, 0.01f, 1e-4f) << "-40 dB after twice its time";

    // Twelve seconds of silence take everything to exactly zero; the gain is then 1.
    std::vector<float> longSilence(44100 * 12, 0.0f);
    p.processMono(longSilence.data(), longSilence.data(), static_cast<int>(longSilence.size()), false);
    EXPECT_EQ(p.fastEnvelope, 0.0f);
    EXPECT_EQ(p.slowEnvelope, 0.0f);
    EXPECT_EQ(p.releaseEnvelope, 0.0f);
    EXPECT_EQ(p.releaseFollower, 0.0f);
    EXPECT_GE(p.sustainEnvelope, 0.0f);
    x = 0.25f;
    p.processMono(&x, &y, 1, false);
}

TEST(TransientProcessorPath, OnsetGainFollowsTheSignOfTheAttackAmount)
{
    for (float control : {1.0f, 0.0f})
    {
        TransientProcessor p = settled();
        p.setAttack(control);
        snapRamps(p);
        const float step = 0.5f;
        float y = 0.0f;
        p.processMono(&step, &y, 1, false);
        const float ratio = step / (step * p.attackRiseCoeff);
        const float amount = p.attackCurrent;
        // Positive amounts pin at 6.6 beyond a ratio of 10; negative ones follow the ratio.
        const float curve = amount >= 0.0f ? 6.6f : ratio;
        const float s = (curve - 1.0f) * amount;
        const float gain = s >= 0.0f ? 1.0f + s : 1.0f / (1.0f - s);
        const float expected = TransientProcessor::softClip(0.1f * (step * gain)) / 0.1f;
        EXPECT_NEAR(y, expected, 1e-6f * std::fabs(expected) + 1e-9f) << "control " << control;
        if (amount > 0.0f)
        {
            EXPECT_NEAR(y, step * 3.24f, 0.02f) << "a boost of 3.24 through a gentle clip";
        }
        else
        {
            EXPECT_LT(y, step * 0.01f) << "a cut of the size of the boost's reciprocal and more";
        }
    }
}

TEST(TransientProcessorPath, ReleaseAmountLiftsOrLowersTheTail)
{
    const std::vector<float> signal = bursts(44100, 7);
    std::vector<float> neutral(signal.size());
    TransientProcessor reference = settled();
    reference.processMono(signal.data(), neutral.data(), static_cast<int>(signal.size()), false);

    for (float control : {1.0f, 0.0f})
    {
        TransientProcessor p = settled();
        p.setRelease(control);
        snapRamps(p);
        std::vector<float> shaped(signal.size());
        double tailRatio = 0.0;
        int tailSamples = 0;
        for (std::size_t i = 0; i < signal.size(); ++i)
        {
            p.processMono(&signal[i], &shaped[i], 1, false);
            if (control == 0.0f)
            {
                ASSERT_NEAR(p.releaseFollower, p.releaseEnvelope, 1e-6f * p.releaseEnvelope)
                    << "with a negative amount the follower is the envelope, sample " << i;
            }
            if (i % 3001 > 1500 && std::fabs(neutral[i]) > 1e-3f)
            {
                tailRatio += std::fabs(shaped[i] / neutral[i]);
                ++tailSamples;
            }
        }
        tailRatio /= tailSamples;
        if (control > 0.5f)
        {
            EXPECT_GT(tailRatio, 1.5) << "release +100% lifts decays";
        }
        else
        {
            EXPECT_LT(tailRatio, 0.7) << "release -100% lowers decays";
        }
    }
}

TEST(TransientProcessorPath, SoftClipOfDriveThreeGivesFullScaleAndPinsThePeak)
{
    TransientProcessor p = settled();
    p.driveCurrent = p.driveTarget = 3.0f;
    const float x[2] = {1.0f, -1.0f};
    float y[2];
    p.processMono(x, y, 2, false);
    EXPECT_EQ(y[0], 1.0f / 3.0f);
    EXPECT_EQ(y[1], -1.0f / 3.0f);
    EXPECT_EQ(p.takeDrivePeak(), 1.0f);
    EXPECT_EQ(p.drivePeak, 0.0f) << "taking the peak clears it";

    p.driveCurrent = p.driveTarget = 15.0f;
    const float loud = 100.0f;
    float out;
    p.processMono(&loud, &out, 1, false);
    EXPECT_EQ(p.takeDrivePeak(), 1.0f) << "the peak holds at most 1";
}

TEST(TransientProcessorPath, AccumulatingStereoPutsOutputGainBeforeTheClipOnTheLeftOnly)
{
    TransientProcessor p = settled();
    p.driveCurrent = p.driveTarget = 2.0f;
    p.outputGainCurrent = p.outputGainTarget = 2.0f;
    const float in = 1.0f;
    float left = 0.25f;
    float right = 0.25f;
    p.processStereo(&in, &in, &left, &right, 1, true);
    // Left: clip(2 * (1 * 2)) / 2 = 0.5. Right: clip(2 * 1) / 2 * 2 = 62/63.
    EXPECT_EQ(left, 0.5f + 0.25f);
    EXPECT_EQ(right, ((62.0f / 63.0f) / 2.0f) * 2.0f + 0.25f);

    TransientProcessor q = settled();
    q.driveCurrent = q.driveTarget = 2.0f;
    q.outputGainCurrent = q.outputGainTarget = 2.0f;
    left = right = 0.25f;
    q.processStereo(&in, &in, &left, &right, 1, false);
    EXPECT_EQ(left, right) << "without accumulation both channels are shaped alike";
    EXPECT_EQ(left, ((62.0f / 63.0f) / 2.0f) * 2.0f);
}

TEST(TransientProcessorPath, RampsReachTheirTargetsForAnyBlockLength)
{
    for (int count : {1, 2, 3, 7, 64, 511, 4096})
    {
        TransientProcessor p = settled();
        p.setGain(1.0f);
        p.setAttack(1.0f);
        p.setRelease(0.0f);
        p.setDrive(1.0f);
        std::vector<float> buffer(count, 0.01f);
        const float firstGain = p.outputGainCurrent;
        p.processMono(buffer.data(), buffer.data(), count, false);
        const auto within = [count](float current, float start, float target) {
            return std::fabs(current - target) <= count * 2 * ulpOf(std::max(std::fabs(start), std::fabs(target)));
        };
        EXPECT_TRUE(within(p.outputGainCurrent, firstGain, p.outputGainTarget)) << count << ": " << p.outputGainCurrent;
        EXPECT_TRUE(within(p.attackCurrent, 0.0f, 0.4f)) << count << ": " << p.attackCurrent;
        EXPECT_TRUE(within(p.releaseCurrent, 0.0f, -1.0f)) << count << ": " << p.releaseCurrent;
        EXPECT_TRUE(within(p.driveCurrent, 0.1f, p.driveTarget)) << count << ": " << p.driveCurrent;
    }
}

TEST(TransientProcessorPath, FirstSampleOfABlockUsesThePreviousValues)
{
    TransientProcessor p = settled();
    p.setGain(1.0f);
    const float x[4] = {0.001f, 0.001f, 0.001f, 0.001f};
    float y[4];
    p.processMono(x, y, 4, false);
    const float step = 0.25f * (p.outputGainTarget - 1.0f);
    EXPECT_NEAR(y[0], 0.001f, 1e-7f);
    EXPECT_NEAR(y[3], 0.001f * (1.0f + 3.0f * step), 1e-6f);
}

// ---- Equivalences --------------------------------------------------------------------------

TEST(TransientProcessorEquivalence, IdenticalStereoChannelsEqualMono)
{
    const std::vector<float> signal = bursts(20000, 3);
    TransientProcessor stereo;
    TransientProcessor mono;
    std::vector<float> left(signal.size()), right(signal.size()), single(signal.size());
    int start = 0;
    for (int block : {512, 100, 4096, 1, 333, 7000, 2000})
    {
        // Change the controls between blocks so that every ramp moves.
        for (TransientProcessor* p : {&stereo, &mono})
        {
            p->setAttack(start % 3 == 0 ? 0.9f : 0.2f);
            p->setRelease(start % 2 == 0 ? 0.1f : 0.8f);
            p->setGain(0.3f);
            p->setDrive(0.6f);
        }
        stereo.processStereo(&signal[start], &signal[start], &left[start], &right[start], block, false);
        mono.processMono(&signal[start], &single[start], block, false);
        start += block;
    }
    expectSameBits(left, single);
    expectSameBits(right, single);
    EXPECT_EQ(fieldsOf(stereo), fieldsOf(mono));
}

TEST(TransientProcessorEquivalence, InPlaceEqualsOutOfPlace)
{
    const std::vector<float> left = bursts(6000, 11);
    const std::vector<float> right = bursts(6000, 12);
    for (bool accumulate : {false, true})
    {
        TransientProcessor apart = settled();
        TransientProcessor inPlace = settled();
        for (TransientProcessor* p : {&apart, &inPlace})
        {
            p->setAttack(0.8f);
            p->setDrive(0.7f);
        }
        // Out of place, accumulating onto a copy of the input, is what in place computes.
        std::vector<float> outLeft = accumulate ? left : std::vector<float>(left.size(), 0.0f);
        std::vector<float> outRight = accumulate ? right : std::vector<float>(right.size(), 0.0f);
        apart.processStereo(left.data(), right.data(), outLeft.data(), outRight.data(), 6000, accumulate);
        std::vector<float> bufferLeft = left;
        std::vector<float> bufferRight = right;
        inPlace.processStereo(bufferLeft.data(), bufferRight.data(), bufferLeft.data(), bufferRight.data(), 6000,
                              accumulate);
        expectSameBits(outLeft, bufferLeft);
        expectSameBits(outRight, bufferRight);

        std::vector<float> monoOut = accumulate ? left : std::vector<float>(left.size(), 0.0f);
        std::vector<float> monoBuffer = left;
        TransientProcessor monoApart = settled();
        TransientProcessor monoInPlace = settled();
        monoApart.processMono(left.data(), monoOut.data(), 6000, accumulate);
        monoInPlace.processMono(monoBuffer.data(), monoBuffer.data(), 6000, accumulate);
        expectSameBits(monoOut, monoBuffer);
    }
}

TEST(TransientProcessorEquivalence, SteadyControlsGiveTheSameOutputForAnyBlockSplit)
{
    const std::vector<float> signal = bursts(9000, 5);
    const auto run = [&signal](const std::vector<int>& blocks) {
        TransientProcessor p = settled();
        p.setAttack(0.9f);
        p.setRelease(0.2f);
        p.setGain(0.7f);
        p.setDrive(0.4f);
        snapRamps(p);
        std::vector<float> out(signal.size());
        std::size_t start = 0;
        for (std::size_t b = 0; start < signal.size(); ++b)
        {
            const int count = std::min<int>(blocks[b % blocks.size()], static_cast<int>(signal.size() - start));
            p.processMono(&signal[start], &out[start], count, false);
            start += count;
        }
        return out;
    };
    const std::vector<float> whole = run({9000});
    expectSameBits(whole, run({1}));
    expectSameBits(whole, run({7, 100, 33, 1, 4096}));
}

// ---- Bypass, empty blocks, non-finite input --------------------------------------------------

TEST(TransientProcessorBypass, CopiesInputAndLeavesEveryFieldAsItWas)
{
    const std::vector<float> signal = bursts(3000, 9);
    TransientProcessor p;
    p.setAttack(1.0f);
    std::vector<float> scratch(signal.size());
    p.processMono(signal.data(), scratch.data(), 1000, false);
    p.setGain(0.9f);  // a target that the next processed block will ramp to
    TransientProcessor twin = p;

    p.setBypass(true);
    const std::array<float, 26> before = fieldsOf(p);
    std::vector<float> left(signal.size(), 9.0f), right(signal.size(), 9.0f);
    p.processStereo(signal.data(), signal.data(), left.data(), right.data(), 3000, true);
    expectSameBits(left, signal);
    expectSameBits(right, signal);
    std::vector<float> mono(signal.size(), 9.0f);
    p.processMono(signal.data(), mono.data(), 3000, false);
    expectSameBits(mono, signal);
    EXPECT_EQ(fieldsOf(p), before);

    // Back from bypass, it continues exactly where it stood.
    p.setBypass(false);
    std::vector<float> afterBypass(signal.size()), withoutBypass(signal.size());
    p.processMono(signal.data(), afterBypass.data(), 3000, false);
    twin.processMono(signal.data(), withoutBypass.data(), 3000, false);
    expectSameBits(afterBypass, withoutBypass);
}

TEST(TransientProcessorBypass, CountsOfZeroAndBelowTouchNothing)
{
    for (bool bypass : {false, true})
    {
        TransientProcessor p;
        p.setBypass(bypass);
        p.setGain(1.0f);
        const std::array<float, 26> before = fieldsOf(p);
        const float in[2] = {0.5f, -0.5f};
        float outLeft[2] = {7.0f, 7.0f};
        float outRight[2] = {7.0f, 7.0f};
        for (int count : {0, -1, INT_MIN})
        {
            p.processStereo(in, in, outLeft, outRight, count, false);
            p.processMono(in, outLeft, count, true);
        }
        EXPECT_EQ(outLeft[0], 7.0f);
        EXPECT_EQ(outRight[1], 7.0f);
        EXPECT_EQ(fieldsOf(p), before);
    }
}

TEST(TransientProcessorNonFinite, SampleGivesSilenceAndLeavesDetectorsAndPeakStanding)
{
    const float nonFinite[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                               -std::numeric_limits<float>::infinity()};
    for (float bad : nonFinite)
    {
        TransientProcessor p;
        p.setGain(0.8f);
        std::vector<float> warmUp = bursts(500, 2);
        p.processMono(warmUp.data(), warmUp.data(), 500, false);
        p.setDrive(1.0f);
        TransientProcessor twin = p;

        const std::array<float, 26> before = fieldsOf(p);
        float in[3] = {bad, bad, bad};
        float out[3] = {5.0f, 5.0f, 5.0f};
        p.processMono(in, out, 3, false);
        EXPECT_EQ(out[0], 0.0f);
        EXPECT_EQ(out[2], 0.0f);
        const std::array<float, 26> after = fieldsOf(p);
        for (int field : {0, 13, 14, 15, 16, 17})  // drivePeak and the five envelopes
            EXPECT_EQ(std::memcmp(&after[field], &before[field], sizeof(float)), 0) << "field " << field;

        // The ramps advanced exactly as for finite samples.
        float finite[3] = {0.1f, 0.1f, 0.1f};
        twin.processMono(finite, finite, 3, false);
        EXPECT_EQ(p.outputGainCurrent, twin.outputGainCurrent);
        EXPECT_EQ(p.driveCurrent, twin.driveCurrent);

        // Accumulating keeps what the output held.
        float held = 0.75f;
        p.processMono(&bad, &held, 1, true);
        EXPECT_EQ(held, 0.75f);

        // And the processor keeps working.
        std::vector<float> more = bursts(300, 4);
        p.processMono(more.data(), more.data(), 300, false);
        for (float sample : more)
            ASSERT_TRUE(std::isfinite(sample));
    }
}

TEST(TransientProcessorNonFinite, StereoKeepsTheFiniteChannelAndHoldsTheLinkedDetector)
{
    TransientProcessor p;
    std::vector<float> warmUp = bursts(500, 6);
    p.processStereo(warmUp.data(), warmUp.data(), warmUp.data(), warmUp.data(), 500, false);
    const std::array<float, 26> before = fieldsOf(p);

    const float left[2] = {std::numeric_limits<float>::quiet_NaN(), 3e38f};
    const float right[2] = {0.25f, 3e38f};  // the second frame's level overflows
    float outLeft[2], outRight[2];
    p.processStereo(left, right, outLeft, outRight, 2, false);
    EXPECT_EQ(outLeft[0], 0.0f);
    EXPECT_TRUE(std::isfinite(outRight[0]));
    EXPECT_NEAR(outRight[0], 0.25f, 0.05f);
    EXPECT_TRUE(std::isfinite(outLeft[1]));
    const std::array<float, 26> after = fieldsOf(p);
    for (int field : {13, 14, 15, 16, 17})
        EXPECT_EQ(after[field], before[field]) << "field " << field;
    EXPECT_LE(p.drivePeak, 1.0f);
}

TEST(TransientProcessorFloatingPoint, ProcessingRestoresTheCallersMode)
{
    volatile float tiny = 1e-39f;  // subnormal
    TransientProcessor p;
    float x = 0.5f;
    p.processMono(&x, &x, 1, false);
    EXPECT_GT(tiny * 1.0f, 0.0f) << "subnormals must survive outside the block";
    {
        const DenormalGuard guard;
        EXPECT_EQ(tiny * 1.0f, 0.0f) << "inside the guard subnormals read as zero";
    }
    EXPECT_GT(tiny * 1.0f, 0.0f);
}
