#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace q1framework
{

// Conversions in place between host byte order and the byte orders of files. Every wire form of
// the framework is little-endian; the one big-endian form is Stream::writeInt32BigEndian.
//
// The host's order is known at compile time, so on little-endian processors the little-endian
// forms compile to nothing and the big-endian forms to one byte swap. Values are integers of 2, 4
// or 8 bytes; floating-point values travel as the integer of the same size that holds their bits.
class ByteOrder
{
public:
    static constexpr bool hostIsLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

    // value with its bytes in reverse order.
    template <typename Integer>
    static constexpr Integer swapped(Integer value)
    {
        static_assert(std::is_integral_v<Integer>, "byte order applies to integers");
        using Unsigned = std::make_unsigned_t<Integer>;
        const auto bits = static_cast<Unsigned>(value);
        if constexpr (sizeof(Integer) == 2)
            return static_cast<Integer>(__builtin_bswap16(bits));
        else if constexpr (sizeof(Integer) == 4)
            return static_cast<Integer>(__builtin_bswap32(bits));
        else
        {
            static_assert(sizeof(Integer) == 8, "2, 4 or 8 bytes");
            return static_cast<Integer>(__builtin_bswap64(bits));
        }
    }

    template <typename Integer>
    static void toLittleEndian(Integer& value)
    {
        if constexpr (!hostIsLittleEndian)
            value = swapped(value);
    }

    template <typename Integer>
    static void toBigEndian(Integer& value)
    {
        if constexpr (hostIsLittleEndian)
            value = swapped(value);
    }

    // Converting is its own inverse.
    template <typename Integer>
    static void fromLittleEndian(Integer& value) { toLittleEndian(value); }

    template <typename Integer>
    static void fromBigEndian(Integer& value) { toBigEndian(value); }

    // The same for count values from values on.
    template <typename Integer>
    static void toLittleEndian(Integer* values, size_t count)
    {
        for (size_t i = 0; i < count; ++i)
            toLittleEndian(values[i]);
    }

    template <typename Integer>
    static void toBigEndian(Integer* values, size_t count)
    {
        for (size_t i = 0; i < count; ++i)
            toBigEndian(values[i]);
    }

    template <typename Integer>
    static void fromLittleEndian(Integer* values, size_t count) { toLittleEndian(values, count); }

    template <typename Integer>
    static void fromBigEndian(Integer* values, size_t count) { toBigEndian(values, count); }
};

}  // namespace q1framework
