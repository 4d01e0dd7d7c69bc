// The transient processor's mappings, coefficient table, curves and per-sample behaviour, against
// values worked out by hand or from closed forms. Bit-exactness of whole blocks against the
// per-sample order is in TransientProcessorBlockTest.
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
// Default controls with every ramp at its target, so a block starts from steady values.
TransientProcessor settled()
{
    TransientProcessor p;
    p.setDrive(0.0f);
    p.driveCurrent = p.driveTarget;
    return p;
}

void snapRamps(TransientProcessor& p)
{
    p.attackCurrent = p.attackTarget;
    p.releaseCurrent = p.releaseTarget;
    p.outputGainCurrent = p.outputGainTarget * p.outputTrim;
    p.driveCurrent = p.driveTarget;
}

// Every field, for whole-state comparisons.
std::array<float, 26> fieldsOf(const TransientProcessor& p)
{
    return {p.drivePeak, p.driveCurrent, p.driveTarget, p.outputTrim, p.attackTimeFactor, p.releaseTimeFactor,
            p.sampleRate, p.attackCurrent, p.attackTarget, p.releaseCurrent, p.releaseTarget, p.outputGainCurrent,
            p.outputGainTarget, p.fastEnvelope, p.slowEnvelope, p.releaseEnvelope, p.releaseFollower,
            p.sustainEnvelope, p.fallCoeff, p.attackRiseCoeff, p.followBase, p.followRange, p.releaseFallCoeff,
            p.spareCoeff, p.sustainFallCoeff, p.bypassed ? 1.0f : 0.0f};
}

constexpr int envelopeFields[] = {13, 14, 15, 16, 17};

// Drum-like bursts of decaying noise of varying loudness on a quiet bed.
std::vector<float> bursts(int frames, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-1.0f, 1.0f);
    std::vector<float> signal(frames);
    float envelope = 0.0f;
    for (int i = 0; i < frames; ++i)
    {
        if (i % 3001 == 0)
            envelope = 0.2f + 0.4f * (noise(random) + 1.0f);
        envelope *= 0.9995f;
        signal[i] = noise(random) * (envelope + 0.001f);
    }
    return signal;
}

// The per-sample multiplier that falls by a factor of ten in `seconds` at `rate`, in long double.
float tenthIn(long double seconds, long double rate = 44100.0L)
{
    return static_cast<float>(std::exp(std::log(0.1L) / (seconds * rate)));
}

float ulpOf(float value)
{
    return std::nextafter(std::fabs(value), std::numeric_limits<float>::infinity()) - std::fabs(value);
}
}

TEST(TransientProcessor, SettersMapControlsWithTheirKinksAndLeaveTheRamps)
{
    TransientProcessor p;
    struct Case
    {
        float control, attack, release;
    };
    // Attack: doubled offset times 0.4 above the centre, 0.6 below; release: times 0.6 above, 1 below.
    for (const Case& c : {Case{0.0f, -0.6f, -1.0f}, Case{0.25f, -0.5f * 0.6f, -0.5f}, Case{0.5f, 0.0f, 0.0f},
                          Case{0.75f, 0.5f * 0.4f, 0.5f * 0.6f}, Case{1.0f, 0.4f, 0.6f}})
    {
        p.setAttack(c.control);
        p.setRelease(c.control);
        EXPECT_EQ(p.attackTarget, c.attack) << c.control;
        EXPECT_EQ(p.releaseTarget, c.release) << c.control;
    }
    // Gain: 9 dB each way, 0 dB at the centre.
    p.setGain(0.5f);
    EXPECT_EQ(p.outputGainTarget, 1.0f);
    p.setGain(0.0f);
    EXPECT_NEAR(p.outputGainTarget, 0.354813f, 1e-6f);
    p.setGain(1.0f);
    EXPECT_NEAR(p.outputGainTarget, 2.818383f, 1e-6f);
    // Drive: linear to 1.0 at 0.1 (where the power branch starts at exactly 1), then up to 15.
    const auto drive = [&p](float control) {
        p.setDrive(control);
        return p.driveTarget;
    };
    EXPECT_EQ(drive(0.0f), 0.1f);
    EXPECT_NEAR(drive(0.05f), 0.55f, 1e-6f);
    EXPECT_NEAR(drive(0.099999994f), 1.0f, 2e-6f);
    EXPECT_EQ(drive(0.1f), 1.0f);
    EXPECT_NEAR(drive(0.55f), std::sqrt(15.0f), 1e-5f);
    EXPECT_NEAR(drive(1.0f), 15.0f, 2e-5f);
    EXPECT_EQ(p.attackCurrent, 0.0f);
    EXPECT_EQ(p.outputGainCurrent, 1.0f);
    EXPECT_EQ(p.driveCurrent, 0.01f) << "a new processor ramps its drive from 0.01 in the first block";
}

TEST(TransientProcessor, ControlsOutsideTheUnitRangeCountAsTheNearerEndAndNaNAsZero)
{
    // What a host or a damaged state may send: beyond 0..1 the power laws would reach infinity.
    TransientProcessor p;
    const auto targets = [&p](float control) {
        p.setAttack(control);
        p.setRelease(control);
        p.setGain(control);
        p.setDrive(control);
        return std::vector<float>{p.attackTarget, p.releaseTarget, p.outputGainTarget, p.driveTarget};
    };
    const std::vector<float> top = targets(1.0f);
    const std::vector<float> bottom = targets(0.0f);
    for (float control : {1.0000001f, 40.0f, 60.0f, 1e30f, std::numeric_limits<float>::infinity()})
        EXPECT_EQ(targets(control), top) << control;
    for (float control : {-0.0000001f, -40.0f, -1e30f, -std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::quiet_NaN()})
        EXPECT_EQ(targets(control), bottom) << control;
}

TEST(TransientProcessor, CoefficientTableFollowsTheTimeConstantsAndIgnoresBadRates)
{
    TransientProcessor p;
    EXPECT_NEAR(p.fallCoeff, tenthIn(0.2L), ulpOf(p.fallCoeff));
    EXPECT_NEAR(p.attackRiseCoeff, 1.0f - tenthIn(0.01L), 2 * ulpOf(p.attackRiseCoeff));
    EXPECT_NEAR(p.followBase, 1.0f - tenthIn(0.02L), 2 * ulpOf(p.followBase));
    EXPECT_EQ(p.followRange, 1.0f - p.followBase);
    EXPECT_NEAR(p.releaseFallCoeff, tenthIn(0.1L), ulpOf(p.releaseFallCoeff));
    EXPECT_NEAR(p.spareCoeff, 1.0f - tenthIn(0.07L), 2 * ulpOf(p.spareCoeff));
    EXPECT_NEAR(p.sustainFallCoeff, tenthIn(4.0L), ulpOf(p.sustainFallCoeff));

    // The time factors scale their own rows only; the rate stays 44100.
    const float fall = p.fallCoeff;
    p.setAttackTime(0.5f);
    p.setReleaseTime(2.0f);
    EXPECT_NEAR(p.attackRiseCoeff, 1.0f - tenthIn(0.005L), 2 * ulpOf(p.attackRiseCoeff));
    EXPECT_NEAR(p.followBase, 1.0f - tenthIn(0.04L), 2 * ulpOf(p.followBase));
    EXPECT_NEAR(p.releaseFallCoeff, tenthIn(0.2L), ulpOf(p.releaseFallCoeff));
    EXPECT_EQ(p.fallCoeff, fall);
    EXPECT_EQ(p.sampleRate, 44100.0f);

    const std::array<float, 26> before = fieldsOf(p);
    for (float rate : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()})
        p.setSampleRate(rate);
    EXPECT_EQ(fieldsOf(p), before);
    p.setSampleRate(88200.0f);
    EXPECT_NEAR(p.fallCoeff, tenthIn(0.2L, 88200.0L), ulpOf(p.fallCoeff));
}

TEST(TransientProcessor, CurvesStepAtOnePinAtTheirLimitsAndCutByTheReciprocal)
{
    using T = TransientProcessor;
    EXPECT_EQ(T::attackCurve(0.999f, 0.4f), 1.0f);
    EXPECT_NEAR(T::attackCurve(1.0f, 0.0f), 0.957f, 1e-6f) << "an amount of 0 takes the positive curve";
    EXPECT_NEAR(T::attackCurve(10.0f, 0.4f), 6.6f, 1e-5f);
    EXPECT_EQ(T::attackCurve(10.001f, 0.4f), 6.6f);
    EXPECT_EQ(T::attackCurve(250.0f, -0.01f), 250.0f) << "negative amounts follow the ratio without limit";
    EXPECT_EQ(T::releaseCurve(0.999f, 0.6f), 1.0f);
    EXPECT_NEAR(T::releaseCurve(1.0f, 0.6f), 0.8394f, 1e-6f);
    EXPECT_NEAR(T::releaseCurve(20.0f, 0.6f), 12.0f, 2e-5f);
    EXPECT_EQ(T::releaseCurve(20.5f, 0.0f), 12.0f);
    EXPECT_EQ(T::releaseCurve(1000.0f, -0.5f), 1000.0f);

    EXPECT_EQ(T::gainLaw(2.0f), 3.0f);
    EXPECT_EQ(T::gainLaw(-2.0f), 1.0f / 3.0f);
    for (float s = 0.125f; s < 100.0f; s *= 1.7f)
        EXPECT_NEAR(T::gainLaw(s) * T::gainLaw(-s), 1.0f, 1e-6f) << s;

    // The soft clip meets +-1 exactly at +-3 and is constant beyond; 2 gives 2 * 31 / 63.
    EXPECT_EQ(T::softClip(3.0f), 1.0f);
    EXPECT_EQ(T::softClip(-3.0f), -1.0f);
    EXPECT_EQ(T::softClip(std::nextafter(3.0f, 4.0f)), 1.0f);
    EXPECT_EQ(T::softClip(2.0f), 62.0f / 63.0f);
    EXPECT_NEAR(T::softClip(1e-3f), 1e-3f, 1e-9f);
    float previous = -1.0f;
    for (float d = -2.9f; d <= 3.0f; d += 0.1f)
    {
        EXPECT_EQ(T::softClip(-d), -T::softClip(d));
        EXPECT_GT(T::softClip(d), previous);
        previous = T::softClip(d);
    }
}

TEST(TransientProcessor, EnvelopesFollowAnImpulseAndDecayToZero)
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
    EXPECT_NEAR(y, 1.0f, 1e-4f) << "amounts of 0 give a gain of 1; drive 0.01 is all but linear";

    // Multiplicative falls: -20 dB over each time constant, -40 dB over twice the release's.
    std::vector<float> silence(8820, 0.0f);
    p.processMono(silence.data(), silence.data(), 8820, false);
    EXPECT_NEAR(p.fastEnvelope, 0.1f, 1e-4f);
    EXPECT_NEAR(p.releaseEnvelope, 0.01f, 1e-4f);
    EXPECT_NEAR(p.sustainEnvelope, std::pow(0.1f, 8821.0f / (4.0f * 44100.0f)), 1e-4f);
    EXPECT_GE(p.releaseFollower, p.releaseEnvelope) << "the follower lags a fall from above";

    // No floor: after twelve seconds of silence they are exactly 0 (flushed, not subnormal).
    std::vector<float> longSilence(44100 * 12, 0.0f);
    p.processMono(longSilence.data(), longSilence.data(), static_cast<int>(longSilence.size()), false);
    for (float envelope : {p.fastEnvelope, p.slowEnvelope, p.releaseEnvelope, p.releaseFollower})
        EXPECT_EQ(envelope, 0.0f);
}

TEST(TransientProcessor, SignsOfTheAmountsChooseBoostOrCut)
{
    // An onset from silence: the ratio fast / slow is 1 / attackRiseCoeff, far above 10.
    for (float control : {1.0f, 0.0f})
    {
        TransientProcessor p = settled();
        p.setAttack(control);
        snapRamps(p);
        const float step = 0.5f;
        float y = 0.0f;
        p.processMono(&step, &y, 1, false);
        const float amount = p.attackCurrent;
        const float s = ((amount >= 0.0f ? 6.6f : 1.0f / p.attackRiseCoeff) - 1.0f) * amount;
        const float gain = s >= 0.0f ? 1.0f + s : 1.0f / (1.0f - s);
        EXPECT_NEAR(y, TransientProcessor::softClip(0.1f * (step * gain)) / 0.1f, 1e-6f) << control;
    }

    // Decays: a positive release amount lifts them, a negative one lowers them, and with the
    // negative one the follower is the release envelope itself.
    const std::vector<float> signal = bursts(44100, 7);
    std::vector<float> neutral(signal.size());
    TransientProcessor reference = settled();
    reference.processMono(signal.data(), neutral.data(), static_cast<int>(signal.size()), false);
    for (float control : {1.0f, 0.0f})
    {
        TransientProcessor p = settled();
        p.setRelease(control);
        snapRamps(p);
        double ratio = 0.0;
        int count = 0;
        for (std::size_t i = 0; i < signal.size(); ++i)
        {
            float y;
            p.processMono(&signal[i], &y, 1, false);
            if (control == 0.0f)
            {
                ASSERT_NEAR(p.releaseFollower, p.releaseEnvelope, 1e-6f * p.releaseEnvelope) << i;
            }
            if (i % 3001 > 1500 && std::fabs(neutral[i]) > 1e-3f)
            {
                ratio += std::fabs(y / neutral[i]);
                ++count;
            }
        }
        if (control > 0.5f)
        {
            EXPECT_GT(ratio / count, 1.5);
        }
        else
        {
            EXPECT_LT(ratio / count, 0.7);
        }
    }
}

TEST(TransientProcessor, DriveStandsAroundTheClipAndTheAccumulatingStereoPathIsLopsided)
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

    // Accumulating: gain 2 before the clip on the left, clip(2 * 2) / 2 = 0.5, and after it on the
    // right, clip(2 * 1) / 2 * 2 = 62/63; each added to the 0.25 already there.
    for (bool accumulate : {true, false})
    {
        TransientProcessor q = settled();
        q.driveCurrent = q.driveTarget = 2.0f;
        q.outputGainCurrent = q.outputGainTarget = 2.0f;
        const float in = 1.0f;
        float left = 0.25f;
        float right = 0.25f;
        q.processStereo(&in, &in, &left, &right, 1, accumulate);
        const float rightShaped = ((62.0f / 63.0f) / 2.0f) * 2.0f;
        EXPECT_EQ(left, accumulate ? 0.5f + 0.25f : rightShaped);
        EXPECT_EQ(right, accumulate ? rightShaped + 0.25f : rightShaped);
    }
}

TEST(TransientProcessor, RampsReachTheirTargetsForAnyBlockLength)
{
    for (int count : {1, 2, 3, 7, 64, 511, 4096})
    {
        TransientProcessor p = settled();
        p.setGain(1.0f);
        p.setAttack(1.0f);
        p.setRelease(0.0f);
        p.setDrive(1.0f);
        std::vector<float> buffer(count, 0.001f);
        p.processMono(buffer.data(), buffer.data(), count, false);
        EXPECT_NEAR(buffer[0], 0.001f, 1e-7f) << "the first sample uses the values before the block";
        const auto near = [count](float current, float target) {
            return std::fabs(current - target) <= count * 2 * ulpOf(std::max(std::fabs(target), 1.0f));
        };
        EXPECT_TRUE(near(p.outputGainCurrent, p.outputGainTarget)) << count;
        EXPECT_TRUE(near(p.attackCurrent, 0.4f)) << count;
        EXPECT_TRUE(near(p.releaseCurrent, -1.0f)) << count;
        EXPECT_TRUE(near(p.driveCurrent, p.driveTarget)) << count;
    }
}

TEST(TransientProcessor, BypassAndEmptyBlocksLeaveEveryFieldAsItWas)
{
    const std::vector<float> signal = bursts(3000, 9);
    TransientProcessor p;
    p.setAttack(1.0f);
    std::vector<float> scratch(signal.size());
    p.processMono(signal.data(), scratch.data(), 1000, false);
    p.setGain(0.9f);
    TransientProcessor twin = p;

    p.setBypass(true);
    const std::array<float, 26> before = fieldsOf(p);
    std::vector<float> left(signal.size(), 9.0f), right(signal.size(), 9.0f);
    p.processStereo(signal.data(), signal.data(), left.data(), right.data(), 3000, true);
    EXPECT_EQ(left, signal) << "a plain copy, even when accumulating";
    EXPECT_EQ(right, signal);
    EXPECT_EQ(fieldsOf(p), before);

    for (bool bypass : {true, false})
    {
        p.setBypass(bypass);
        const std::array<float, 26> untouched = fieldsOf(p);
        float out[2] = {7.0f, 7.0f};
        for (int count : {0, -1, INT_MIN})
        {
            p.processStereo(signal.data(), signal.data(), out, out, count, false);
            p.processMono(signal.data(), out, count, true);
        }
        EXPECT_EQ(out[0], 7.0f);
        EXPECT_EQ(fieldsOf(p), untouched);
    }

    // Back from bypass it continues exactly where it stood.
    std::vector<float> resumed(signal.size()), continuous(signal.size());
    p.processMono(signal.data(), resumed.data(), 3000, false);
    twin.processMono(signal.data(), continuous.data(), 3000, false);
    EXPECT_EQ(resumed, continuous);
}

TEST(TransientProcessor, IdenticalStereoChannelsEqualMonoInPlaceOrNotAndSteadyBlocksSplitFreely)
{
    const std::vector<float> signal = bursts(9000, 3);
    TransientProcessor stereo;
    TransientProcessor mono;
    TransientProcessor inPlace;
    std::vector<float> left(signal.size()), right(signal.size()), single(signal.size()), buffer = signal;
    int start = 0;
    for (int block : {512, 100, 4096, 1, 333, 3958})
    {
        for (TransientProcessor* p : {&stereo, &mono, &inPlace})
        {
            p->setAttack(start % 3 == 0 ? 0.9f : 0.2f);
            p->setRelease(start % 2 == 0 ? 0.1f : 0.8f);
            p->setDrive(0.6f);
        }
        stereo.processStereo(&signal[start], &signal[start], &left[start], &right[start], block, false);
        mono.processMono(&signal[start], &single[start], block, false);
        inPlace.processMono(&buffer[start], &buffer[start], block, false);
        start += block;
    }
    EXPECT_EQ(left, single);
    EXPECT_EQ(right, single);
    EXPECT_EQ(buffer, single);

    // With steady controls the block boundaries do not show in the output.
    const auto run = [&signal](std::initializer_list<int> blocks) {
        TransientProcessor p = settled();
        p.setAttack(0.9f);
        p.setRelease(0.2f);
        p.setDrive(0.4f);
        snapRamps(p);
        std::vector<float> out(signal.size());
        for (std::size_t at = 0, b = 0; at < signal.size(); ++b)
        {
            const int count = std::min<int>(blocks.begin()[b % blocks.size()], static_cast<int>(signal.size() - at));
            p.processMono(&signal[at], &out[at], count, false);
            at += count;
        }
        return out;
    };
    const std::vector<float> whole = run({9000});
    EXPECT_EQ(whole, run({1}));
    EXPECT_EQ(whole, run({7, 100, 33, 1, 4096}));
}

TEST(TransientProcessor, NonFiniteSamplesGiveSilenceAndLeaveDetectorsAndPeakStanding)
{
    for (float bad : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                      -std::numeric_limits<float>::infinity()})
    {
        TransientProcessor p;
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
        EXPECT_EQ(std::memcmp(&after[0], &before[0], sizeof(float)), 0) << "drive peak";
        for (int field : envelopeFields)
            EXPECT_EQ(std::memcmp(&after[field], &before[field], sizeof(float)), 0) << "field " << field;
        float finite[3] = {0.1f, 0.1f, 0.1f};
        twin.processMono(finite, finite, 3, false);
        EXPECT_EQ(p.driveCurrent, twin.driveCurrent) << "the ramps advance as usual";
        float held = 0.75f;
        p.processMono(&bad, &held, 1, true);
        EXPECT_EQ(held, 0.75f) << "accumulating adds nothing";
    }

    // Stereo: the finite channel is shaped with the standing detector; a frame whose level
    // overflows (two samples of 3e38) leaves the detector standing as well.
    TransientProcessor p;
    std::vector<float> warmUp = bursts(500, 6);
    p.processStereo(warmUp.data(), warmUp.data(), warmUp.data(), warmUp.data(), 500, false);
    const std::array<float, 26> before = fieldsOf(p);
    const float left[2] = {std::numeric_limits<float>::quiet_NaN(), 3e38f};
    const float right[2] = {0.25f, 3e38f};
    float outLeft[2], outRight[2];
    p.processStereo(left, right, outLeft, outRight, 2, false);
    EXPECT_EQ(outLeft[0], 0.0f);
    EXPECT_NEAR(outRight[0], 0.25f, 0.05f);
    EXPECT_TRUE(std::isfinite(outLeft[1]));
    for (int field : envelopeFields)
        EXPECT_EQ(fieldsOf(p)[field], before[field]) << "field " << field;
}

TEST(TransientProcessor, ProcessingRestoresTheCallersFloatingPointMode)
{
    volatile float tiny = 1e-39f;  // subnormal
    TransientProcessor p;
    float x = 0.5f;
    p.processMono(&x, &x, 1, false);
    EXPECT_GT(tiny * 1.0f, 0.0f) << "subnormals survive outside the block";
    const DenormalGuard guard;
    EXPECT_EQ(tiny * 1.0f, 0.0f) << "inside the guard they read as zero";
}
