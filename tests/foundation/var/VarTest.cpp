#include "foundation/var/Var.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "foundation/var/Array.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

using q1framework::Array;
using q1framework::MemoryBlock;
using q1framework::String;
using q1framework::Var;

namespace
{
// Any type with getARGB() and a constructor from the packed value can travel in a Var; this one
// stands in for the media library's colour, which the foundation does not link.
class PackedColour
{
public:
    PackedColour() = default;
    explicit PackedColour(uint32_t packed) : argb(packed) {}
    uint32_t getARGB() const { return argb; }

private:
    uint32_t argb = 0;
};
}

TEST(Var, EachConstructorSetsItsKind)
{
    int target = 0;
    EXPECT_EQ(Var().getKind(), 0);
    EXPECT_EQ(Var(3).getKind(), 1);
    EXPECT_EQ(Var(3u).getKind(), 1);
    EXPECT_EQ(Var(int64_t(3)).getKind(), 2);
    EXPECT_EQ(Var(3.0).getKind(), 3);
    EXPECT_EQ(Var(3.0f).getKind(), 4);
    EXPECT_EQ(Var(String("3")).getKind(), 5);
    EXPECT_EQ(Var("3").getKind(), 5) << "a literal is text, not a bool";
    EXPECT_EQ(Var(true).getKind(), 6);
    EXPECT_EQ(Var(static_cast<void*>(&target)).getKind(), 7);
    EXPECT_EQ(Var(MemoryBlock(3)).getKind(), 8);
    EXPECT_EQ(Var(PackedColour(0x80FF0000)).getKind(), 9);
}

TEST(Var, AccessorsAnswerOnlyForTheirOwnKind)
{
    const Var integer(3);
    EXPECT_EQ(integer.getInt(), 3);
    EXPECT_EQ(integer.getDouble(), 0.0);
    EXPECT_EQ(integer.getInt64(), 0);
    EXPECT_EQ(integer.getFloat(), 0.0f);
    EXPECT_FALSE(integer.getBool());
    EXPECT_TRUE(integer.getString().isEmpty());
    EXPECT_EQ(integer.getPointer(), nullptr);
    EXPECT_EQ(integer.getMemoryBlock().getSize(), 0);
    EXPECT_EQ(integer.getColourARGB(), 0u);

    EXPECT_EQ(Var(true).getInt(), 0);
    EXPECT_TRUE(Var(true).getBool());
    EXPECT_EQ(Var(2.5).getFloat(), 0.0f);
    EXPECT_EQ(Var(2.5).getDouble(), 2.5);
    EXPECT_EQ(Var(2.5f).getDouble(), 0.0);
    EXPECT_EQ(Var(2.5f).getFloat(), 2.5f);
    EXPECT_EQ(Var(int64_t(1) << 40).getInt64(), int64_t(1) << 40);
    EXPECT_EQ(Var(int64_t(5)).getInt(), 0);
    EXPECT_EQ(Var(0xFFFFFFFFu).getInt(), -1) << "unsigned values keep their bits";
    EXPECT_EQ(Var(String("12")).getInt(), 0);
    EXPECT_TRUE(Var(12).getString().isEmpty());
}

TEST(Var, ColoursTravelAsTheirPackedValue)
{
    const Var colour(PackedColour(0x80FF0000));
    EXPECT_EQ(colour.getColourARGB(), 0x80FF0000u);
    EXPECT_EQ(colour.getColour<PackedColour>().getARGB(), 0x80FF0000u);
    EXPECT_EQ(colour.getInt(), 0);
    EXPECT_EQ(Var(7).getColour<PackedColour>().getARGB(), 0u);

    Var assigned(1.0);
    assigned = PackedColour(0xFF00FF00);
    EXPECT_EQ(assigned.getKind(), 9);
    EXPECT_EQ(assigned.getColourARGB(), 0xFF00FF00u);
}

TEST(Var, PointersAreStoredButNotOwned)
{
    int target = 42;
    Var pointer(static_cast<void*>(&target));
    EXPECT_EQ(pointer.getPointer(), &target);
    pointer.clear();
    EXPECT_EQ(target, 42);
    EXPECT_EQ(pointer.getKind(), 0);
    EXPECT_EQ(pointer.getPointer(), nullptr);
}

TEST(Var, TextIsSharedByHandleAndOutlivesTheVar)
{
    const String text("shared text");
    Var holder(text);
    EXPECT_EQ(holder.getString().getCString(), text.getCString());

    Var copy(holder);
    EXPECT_EQ(copy.getString().getCString(), text.getCString());
    holder = 2.5;  // frees the Var's own handle, not the text
    EXPECT_EQ(holder.getKind(), 3);
    EXPECT_STREQ(copy.getString().getCString(), "shared text");
    copy.clear();
    EXPECT_STREQ(text.getCString(), "shared text");

    String returned;
    {
        const Var temporary(String("from a var"));
        returned = temporary.getString();
    }
    EXPECT_STREQ(returned.getCString(), "from a var");
}

TEST(Var, BlocksAreSharedByHandle)
{
    MemoryBlock block("abc", 3, true);
    const Var holder(block);
    ASSERT_TRUE(block.setSize(4));
    static_cast<char*>(block.getData())[3] = 'd';
    const MemoryBlock seen = holder.getMemoryBlock();
    EXPECT_EQ(seen.getData(), block.getData());
    EXPECT_EQ(seen.getSize(), 4);

    Var other(7);
    other = holder;
    EXPECT_EQ(other.getMemoryBlock().getData(), block.getData());
    other = String("text");
    EXPECT_EQ(other.getMemoryBlock().getSize(), 0);
    EXPECT_EQ(holder.getMemoryBlock().getSize(), 4);
}

TEST(Var, AssignmentReplacesAnyKindWithAnyOther)
{
    Var value(String("first"));
    Var& alias = value;
    value = alias;
    EXPECT_STREQ(value.getString().getCString(), "first");

    value = MemoryBlock("xy", 2, true);
    EXPECT_EQ(value.getKind(), 8);
    value = "again text";
    EXPECT_STREQ(value.getString().getCString(), "again text");
    value = Var();
    EXPECT_EQ(value.getKind(), 0);
    value = 5;
    EXPECT_EQ(value.getInt(), 5);

    Var moved(std::move(value));
    EXPECT_EQ(moved.getInt(), 5);
    EXPECT_EQ(value.getKind(), 0);
    Var target(String("old"));
    target = std::move(moved);
    EXPECT_EQ(target.getInt(), 5);
}

TEST(Var, SurvivesByteWiseRelocationInAnArray)
{
    Array<Var> values;
    for (int i = 0; i < 40; ++i)
        values.add(i % 2 == 0 ? Var(String(i)) : Var(MemoryBlock(i)));
    values.insert(0, Var("front"));
    values.removeAt(1);
    EXPECT_STREQ(values[0].getString().getCString(), "front");
    EXPECT_EQ(values[1].getMemoryBlock().getSize(), 1);
    EXPECT_STREQ(values[38].getString().getCString(), "38");
    EXPECT_EQ(values[39].getMemoryBlock().getSize(), 39);
}
