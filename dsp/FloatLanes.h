#pragma once

#include <cstdint>
#include <cstring>

// Four 32-bit floats handled lane by lane, through the compiler's generic vector types: SSE on
// x86-64, NEON on ARM, plain code elsewhere. Every lane operation is the IEEE operation of the
// scalar type, so a lane computes bit for bit what the same expression computes on one float.
namespace FloatLanes
{
constexpr int width = 4;

typedef float Float __attribute__((vector_size(16)));
typedef int32_t Mask __attribute__((vector_size(16)));  // all bits set in a true lane

inline Float splat(float value)
{
    return Float{value, value, value, value};
}

inline Float load(const float* source)
{
    Float lanes;
    std::memcpy(&lanes, source, sizeof lanes);
    return lanes;
}

inline void store(float* target, Float lanes)
{
    std::memcpy(target, &lanes, sizeof lanes);
}

inline Mask bitsOf(Float lanes)
{
    Mask bits;
    std::memcpy(&bits, &lanes, sizeof bits);
    return bits;
}

inline Float fromBits(Mask bits)
{
    Float lanes;
    std::memcpy(&lanes, &bits, sizeof lanes);
    return lanes;
}

inline Float select(Mask condition, Float whenTrue, Float whenFalse)
{
    return condition ? whenTrue : whenFalse;
}

inline Float abs(Float lanes)
{
    return fromBits(bitsOf(lanes) & 0x7FFFFFFF);
}

// True in lanes that hold neither an infinity nor NaN.
inline Mask isFinite(Float lanes)
{
    return (bitsOf(lanes) & 0x7F800000) != 0x7F800000;
}

// True when any lane of the mask is true.
inline bool any(Mask condition)
{
    std::uint64_t halves[2];
    std::memcpy(halves, &condition, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

// True when every lane of the mask is true.
inline bool all(Mask condition)
{
    return !any(~condition);
}

// True when every lane holds +0.0 or -0.0.
inline bool allZero(Float lanes)
{
    return !any(bitsOf(lanes) & 0x7FFFFFFF);
}

// The largest lane; lanes are assumed not to be NaN.
inline float largest(Float lanes)
{
    float result = lanes[0];
    for (int lane = 1; lane < width; ++lane)
        result = lanes[lane] > result ? lanes[lane] : result;
    return result;
}
}
