#pragma once

#include <cstdint>
#include <cstring>

// Groups of 4, 8 or 16 floats handled lane by lane, through the compiler's generic vector types:
// SSE, AVX or AVX-512 on x86-64, NEON on ARM, plain code elsewhere. Every lane operation is the IEEE operation
// of the scalar type, so a lane computes bit for bit what the same expression computes on a float.
//
// The code that uses these is compiled once per instruction set. Everything here therefore has
// internal linkage: a copy built for AVX must never stand in for the one built for the baseline.
namespace
{
template <int Width>
struct LaneTypes;

template <>
struct LaneTypes<4>
{
    typedef float Float __attribute__((vector_size(16)));
    typedef int32_t Mask __attribute__((vector_size(16)));
};

template <>
struct LaneTypes<8>
{
    typedef float Float __attribute__((vector_size(32)));
    typedef int32_t Mask __attribute__((vector_size(32)));
};

template <>
struct LaneTypes<16>
{
    typedef float Float __attribute__((vector_size(64)));
    typedef int32_t Mask __attribute__((vector_size(64)));
};

template <int Width>
struct FloatLanes
{
    static constexpr int width = Width;
    using Float = typename LaneTypes<Width>::Float;
    using Mask = typename LaneTypes<Width>::Mask;  // all bits set in a true lane

    static Float splat(float value) { return Float{} + value; }

    static Float load(const float* source)
    {
        Float lanes;
        std::memcpy(&lanes, source, sizeof lanes);
        return lanes;
    }

    static void store(float* target, Float lanes) { std::memcpy(target, &lanes, sizeof lanes); }

    // Reads `count` (1..width) floats into lanes padded with zeros.
    static Float loadPartial(const float* source, int count)
    {
        float padded[Width] = {};
        std::memcpy(padded, source, sizeof(float) * static_cast<std::size_t>(count));
        return load(padded);
    }

    static void storePartial(float* target, Float lanes, int count)
    {
        float padded[Width];
        store(padded, lanes);
        std::memcpy(target, padded, sizeof(float) * static_cast<std::size_t>(count));
    }

    // 0, 1, 2, ... in the lanes.
    static Mask laneIndex()
    {
        Mask index;
        for (int lane = 0; lane < Width; ++lane)
            index[lane] = lane;
        return index;
    }

    static Mask bitsOf(Float lanes)
    {
        Mask bits;
        std::memcpy(&bits, &lanes, sizeof bits);
        return bits;
    }

    static Float fromBits(Mask bits)
    {
        Float lanes;
        std::memcpy(&lanes, &bits, sizeof lanes);
        return lanes;
    }

    static Float select(Mask condition, Float whenTrue, Float whenFalse) { return condition ? whenTrue : whenFalse; }

    static Float abs(Float lanes) { return fromBits(bitsOf(lanes) & 0x7FFFFFFF); }

    // True in lanes that hold neither an infinity nor NaN.
    static Mask isFinite(Float lanes) { return (bitsOf(lanes) & 0x7F800000) != 0x7F800000; }

    static bool any(Mask condition)
    {
        std::uint64_t halves[Width / 2];
        std::memcpy(halves, &condition, sizeof halves);
        std::uint64_t merged = 0;
        for (std::uint64_t half : halves)
            merged |= half;
        return merged != 0;
    }

    static bool all(Mask condition) { return !any(~condition); }

    // True when every lane holds +0.0 or -0.0.
    static bool allZero(Float lanes) { return !any(bitsOf(lanes) & 0x7FFFFFFF); }

    // The largest lane; lanes are assumed not to be NaN.
    static float largest(Float lanes)
    {
        float result = lanes[0];
        for (int lane = 1; lane < Width; ++lane)
            result = lanes[lane] > result ? lanes[lane] : result;
        return result;
    }
};
}
