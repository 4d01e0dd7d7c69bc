#include "ToolTest.h"
#include "image/TestPictures.h"

#include <png.h>

namespace
{
constexpr int failure = 1;
constexpr int usage = 2;

// The bytes of a pack's strings and integers, little-endian.
std::string int32(int32_t value)
{
    return std::string(reinterpret_cast<const char*>(&value), 4);
}

std::string wireString(const std::string& text)
{
    return int32(static_cast<int32_t>(text.size()) + 1) + text + std::string(1, '\0');
}

std::string textEntry(const std::string& name, const std::string& text)
{
    return wireString("Q1RES00") + wireString(name) + int32(0) + wireString(text);
}

std::string packOf(int32_t count, const std::string& entries)
{
    return wireString("Q1RESPK00") + int32(count) + entries;
}
}

class KelvanePackErrors : public ToolTest
{
protected:
    KelvanePackErrors() : ToolTest(KELVANE_PACK) {}
};

TEST_F(KelvanePackErrors, EveryRefusalIsOneLineAndChangesNoFile)
{
    write("dot.png", TestPictures::encodePng({1, 1, PNG_COLOR_TYPE_GRAY, 8, false, {{128}}}));
    write("not-a-picture.txt", "plain text, no picture");
    const std::string good = packOf(2, textEntry("first", "one") + textEntry("second", "two"));
    write("good.bin", good);
    write("empty.bin", "");
    // The second entry cut short, its magic damaged, its type unknown.
    write("cut.bin", good.substr(0, good.size() - 3));
    write("magic.bin", std::string(good).replace(good.find("Q1RES00", 30) + 6, 1, "1"));
    write("type.bin", packOf(2, textEntry("first", "one") + wireString("Q1RES00") + wireString("odd") + int32(7) + wireString("x")));
    write("count.bin", packOf(3, textEntry("first", "one") + textEntry("second", "two")));
    write("stray.bin", good + "xyz");
    // A length that asks for gigabytes is damage, not an allocation.
    write("huge.bin", packOf(1, wireString("Q1RES00") + wireString("blob") + int32(2) + int32(0) + int32(0x40)));
    write("taken.txt", "mine");
    write("self.recipe", "self binary self.recipe\n");
    write("source.recipe", "dot image dot.png\n");
    const auto before = contents();

    // A build from a bad recipe (written to bad.recipe for its run) keeps the old pack whole, also
    // when the entries before the bad line were good: no half-finished pack is written over it.
    const std::vector<std::string> build = {"build", "bad.recipe", "good.bin"};
    const struct { std::vector<std::string> arguments; int status; std::string text; std::string recipe = {}; } refusals[] = {
        {build, failure, "bad.recipe:2: cannot read nowhere.png: No such file", "dot image dot.png\nmissing image nowhere.png\n"},
        {build, failure, "bad.recipe:1: cannot decode not-a-picture.txt as a PNG or JPEG picture", "dot image not-a-picture.txt\n"},
        {build, failure, "bad.recipe:1: dot.png is not a WAV file", "noise sound dot.png\n"},
        {build, failure, "bad.recipe:4: duplicate name dot (first on line 1)", "dot image dot.png\n\n# again\ndot text x\n"},
        {build, failure, "bad.recipe:1: unknown type 'Image'", "dot Image dot.png\n"},
        {build, failure, "bad.recipe:1: entry dot has no type (text, image, sound or binary)", "dot\n"},
        {build, failure, "bad.recipe:1: unknown escape \\q (use \\n, \\t, \\s or \\\\)", "note text \\q\n"},
        {build, failure, "bad.recipe:1: entry dot names no source file", "dot image\n"},
        {build, failure, "bad.recipe:1: a text may not end with a single \\", "note text trailing\\\n"},
        {{"build", "no.recipe", "good.bin"}, failure, "cannot read no.recipe"},
        // Never over its own inputs.
        {{"build", "self.recipe", "self.recipe"}, failure, "self.recipe is the recipe"},
        {{"build", "source.recipe", "./dot.png"}, failure, "./dot.png is the source of dot"},
        {{"verify", "missing.bin"}, failure, "cannot read missing.bin"},
        {{"verify", "empty.bin"}, failure, "empty.bin: not a resource pack"},
        {{"verify", "cut.bin"}, failure, "cut.bin: damaged at entry 2 \"second\": its data does not read back whole"},
        {{"verify", "magic.bin"}, failure, "magic.bin: damaged at entry 2: no entry magic"},
        {{"verify", "type.bin"}, failure, "type.bin: damaged at entry 2 \"odd\": unknown type code 7"},
        {{"verify", "count.bin"}, failure, "count.bin: damaged at entry 3: no entry magic"},
        {{"verify", "stray.bin"}, failure, "stray.bin: damaged: 3 stray bytes after the last of 2 entries"},
        {{"verify", "huge.bin"}, failure, "huge.bin: damaged at entry 1 \"blob\""},
        // Every command that reads a pack refuses a damaged one.
        {{"list", "cut.bin"}, failure, "damaged at entry 2"},
        {{"add", "cut.bin", "third", "text", "three"}, failure, "damaged at entry 2"},
        {{"remove", "cut.bin", "first"}, failure, "damaged at entry 2"},
        {{"add", "good.bin", "first", "text", "again"}, failure, "good.bin already has an entry first"},
        {{"add", "good.bin", "bad name", "text", "x"}, failure, "bad entry name 'bad name'"},
        {{"remove", "good.bin", "third"}, failure, "no entry third in good.bin"},
        {{"rename", "good.bin", "first", "second"}, failure, "good.bin already has an entry second"},
        {{"extract", "good.bin", "first", "taken.txt"}, failure, "taken.txt already exists"},
        {{"pack", "x"}, usage, "unknown command 'pack'"},
        {{"extract", "good.bin", "first"}, usage, "usage: kelvane-pack extract PACK NAME OUT"},
    };
    for (const auto& refusal : refusals)
    {
        SCOPED_TRACE(::testing::PrintToString(refusal.arguments) + " " + refusal.recipe);
        if (!refusal.recipe.empty())
            write("bad.recipe", refusal.recipe);
        expectFailure(run(refusal.arguments), refusal.status, refusal.text);
        std::filesystem::remove(path("bad.recipe"));
        EXPECT_EQ(contents(), before);
    }
}
