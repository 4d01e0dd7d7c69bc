#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

namespace q1framework
{

class MemoryBlock;
class String;
// Defined by the media library, which the foundation does not depend on. A Var stores a colour as
// its packed 32-bit value 0xAARRGGBB, so the colour operations below are templates that work with
// any type offering getARGB() and construction from that value; the default type is Colour, which
// therefore only has to be complete where a colour is read.
class Colour;

// The framework's tagged value, for free-form properties. It holds one value of one kind, and its
// accessors are strict: asking for another kind than the one stored gives zero (0, 0.0, false,
// null, an empty String or block, a default Colour), never a conversion. Callers that do not know
// the kind ask getKind().
//
// String and MemoryBlock values live in a heap-allocated handle that the Var owns; copying a Var
// copies that handle, so the text or bytes themselves are shared. Every other kind is stored
// inline. A Var may be relocated byte by byte (Array does so).
//
// Thread contract: none; a Var holding a String stays with the thread that made it.
class Var
{
public:
    static constexpr int32_t voidKind = 0;
    static constexpr int32_t intKind = 1;
    static constexpr int32_t int64Kind = 2;
    static constexpr int32_t doubleKind = 3;
    static constexpr int32_t floatKind = 4;
    static constexpr int32_t stringKind = 5;
    static constexpr int32_t boolKind = 6;
    static constexpr int32_t pointerKind = 7;   // not owned
    static constexpr int32_t memoryBlockKind = 8;
    static constexpr int32_t colourKind = 9;

    Var() = default;
    Var(const Var& other);
    Var(Var&& other) noexcept;
    Var(int value);
    Var(unsigned value);                // stored as the int kind, same bits
    Var(int64_t value);
    Var(double value);
    Var(float value);
    Var(bool value);
    Var(const String& value);
    // Text; without this a string literal would choose the bool constructor.
    Var(const char* value);
    Var(const MemoryBlock& value);
    Var(void* value);
    template <typename ColourType, typename = decltype(std::declval<const ColourType&>().getARGB())>
    Var(const ColourType& colour)
    {
        kind = colourKind;
        value.asColour = static_cast<uint32_t>(colour.getARGB());
    }
    virtual ~Var();

    Var& operator=(const Var& other);
    Var& operator=(Var&& other) noexcept;
    // Assigning any value that a Var can be built from replaces the old value and kind.
    template <typename Value, typename = std::enable_if_t<!std::is_same_v<std::decay_t<Value>, Var>>>
    Var& operator=(const Value& newValue)
    {
        return *this = Var(newValue);
    }

    // Releases an owned String or MemoryBlock handle and leaves the void kind.
    void clear();
    int32_t getKind() const { return kind; }

    int getInt() const;
    int64_t getInt64() const;
    double getDouble() const;
    float getFloat() const;
    bool getBool() const;
    void* getPointer() const;
    String getString() const;
    MemoryBlock getMemoryBlock() const;
    // The packed 0xAARRGGBB value for the colour kind, otherwise 0 (the value of a default Colour).
    uint32_t getColourARGB() const { return kind == colourKind ? value.asColour : 0; }
    template <typename ColourType = Colour>
    ColourType getColour() const
    {
        return kind == colourKind ? ColourType(value.asColour) : ColourType();
    }

private:
    union Value
    {
        int64_t asInt64;
        int32_t asInt;
        double asDouble;
        float asFloat;
        bool asBool;
        void* asPointer;
        String* asString;
        MemoryBlock* asMemoryBlock;
        uint32_t asColour;
    };

    int32_t kind = voidKind;
    Value value{0};
};

}  // namespace q1framework
