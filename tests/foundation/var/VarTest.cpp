#include "foundation/var/Var.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(Var, EachAccessorAnswersOnlyForItsOwnKind)
{
    int target = 0;
    // Index = kind. Destroying the pointer kind must leave the stack variable alone.
    const Var values[] = {Var(),     Var(3),    Var(int64_t(3)), Var(3.0),          Var(3.0f),
                          Var("3"),  Var(true), Var(&target),    Var(MemoryBlock(3)), Var(PackedColour(3))};
    for (int kind = 0; kind < 10; ++kind)
    {
        const Var& value = values[kind];
        SCOPED_TRACE(kind);
        EXPECT_EQ(value.getKind(), kind);
        EXPECT_EQ(value.getInt(), kind == 1 ? 3 : 0);
        EXPECT_EQ(value.getInt64(), kind == 2 ? 3 : 0);
        EXPECT_EQ(value.getDouble(), kind == 3 ? 3.0 : 0.0);
        EXPECT_EQ(value.getFloat(), kind == 4 ? 3.0f : 0.0f);
        EXPECT_EQ(std::string(value.getString().getCString()), kind == 5 ? "3" : "");
        EXPECT_EQ(value.getBool(), kind == 6);
        EXPECT_EQ(value.getPointer(), kind == 7 ? &target : nullptr);
        EXPECT_EQ(value.getMemoryBlock().getSize(), kind == 8 ? 3 : 0);
        EXPECT_EQ(value.getColour<PackedColour>().getARGB(), kind == 9 ? 3u : 0u);
    }
    EXPECT_EQ(Var(0xFFFFFFFFu).getInt(), -1) << "unsigned values keep their bits in the int kind";
}

TEST(Var, TextAndBlocksAreSharedByHandleAndOutliveTheVar)
{
    const String text("shared text");
    MemoryBlock block("abc", 3, true);
    Var holder(text);
    Var copy(holder);
    EXPECT_EQ(copy.getString().getCString(), text.getCString());
    holder = 2.5;   // frees the Var's own handle, not the text
    EXPECT_STREQ(copy.getString().getCString(), "shared text");
    copy = block;
    EXPECT_STREQ(text.getCString(), "shared text");

    ASSERT_TRUE(block.setSize(4));   // the Var sees the change through its handle
    EXPECT_EQ(copy.getMemoryBlock().getData(), block.getData());
    EXPECT_EQ(copy.getMemoryBlock().getSize(), 4);
    holder = copy;
    copy = Var();
    EXPECT_EQ(holder.getMemoryBlock().getData(), block.getData());
}
