#include "foundation/var/Var.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"

namespace q1framework
{

Var::Var(const Var& other)
{
    *this = other;
}

Var::Var(Var&& other) noexcept : kind(other.kind), value(other.value)
{
    other.kind = voidKind;
    other.value.asInt64 = 0;
}

Var::Var(int newValue) : kind(intKind) { value.asInt = newValue; }
Var::Var(unsigned newValue) : kind(intKind) { value.asInt = static_cast<int32_t>(newValue); }
Var::Var(int64_t newValue) : kind(int64Kind) { value.asInt64 = newValue; }
Var::Var(double newValue) : kind(doubleKind) { value.asDouble = newValue; }
Var::Var(float newValue) : kind(floatKind) { value.asFloat = newValue; }
Var::Var(bool newValue) : kind(boolKind) { value.asBool = newValue; }
Var::Var(const String& newValue) : kind(stringKind) { value.asString = new String(newValue); }
Var::Var(const char* newValue) : Var(String(newValue)) {}
Var::Var(const MemoryBlock& newValue) : kind(memoryBlockKind) { value.asMemoryBlock = new MemoryBlock(newValue); }
Var::Var(void* newValue) : kind(pointerKind) { value.asPointer = newValue; }

Var::~Var()
{
    clear();
}

Var& Var::operator=(const Var& other)
{
    if (this == &other)
        return *this;
    clear();
    kind = other.kind;
    if (kind == stringKind)
        value.asString = new String(*other.value.asString);
    else if (kind == memoryBlockKind)
        value.asMemoryBlock = new MemoryBlock(*other.value.asMemoryBlock);
    else
        value = other.value;
    return *this;
}

Var& Var::operator=(Var&& other) noexcept
{
    if (this != &other)
    {
        clear();
        kind = other.kind;
        value = other.value;
        other.kind = voidKind;
        other.value.asInt64 = 0;
    }
    return *this;
}

void Var::clear()
{
    if (kind == stringKind)
        delete value.asString;
    else if (kind == memoryBlockKind)
        delete value.asMemoryBlock;
    value.asInt64 = 0;
    kind = voidKind;
}

int Var::getInt() const { return kind == intKind ? value.asInt : 0; }
int64_t Var::getInt64() const { return kind == int64Kind ? value.asInt64 : 0; }
double Var::getDouble() const { return kind == doubleKind ? value.asDouble : 0.0; }
float Var::getFloat() const { return kind == floatKind ? value.asFloat : 0.0f; }
bool Var::getBool() const { return kind == boolKind && value.asBool; }
void* Var::getPointer() const { return kind == pointerKind ? value.asPointer : nullptr; }

String Var::getString() const
{
    return kind == stringKind ? *value.asString : String();
}

MemoryBlock Var::getMemoryBlock() const
{
    return kind == memoryBlockKind ? *value.asMemoryBlock : MemoryBlock(0);
}

}  // namespace q1framework
