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

    void SetUp() override
    {
        ToolTest::SetUp();
        TestPictures::PngPicture picture;
        picture.width = 1;
        picture.height = 1;
        picture.colourType = PNG_COLOR_TYPE_GRAY;
        picture.lines = {{128}};
        write("dot.png", TestPictures::encodePng(picture));
        write("good.bin", packOf(2, textEntry("first", "one") + textEntry("second", "two")));
    }
};

TEST_F(KelvanePackErrors, BuildRefusesBadRecipesAndKeepsTheOldPack)
{
    const std::string oldPack = read("good.bin");
    const auto expectRefused = [&](const std::string& recipe, const std::string& text) {
        write("bad.recipe", recipe);
        expectFailure(run({"build", "bad.recipe", "good.bin"}), failure, text);
        EXPECT_EQ(read("good.bin"), oldPack);
        EXPECT_EQ(files(), (std::vector<std::string>{"bad.recipe", "dot.png", "good.bin", "not-a-picture.txt"}));
    };
    write("not-a-picture.txt", "plain text, no picture");
    expectRefused("dot image dot.png\nmissing image nowhere.png\n", "bad.recipe:2: cannot read nowhere.png: No such file");
    expectRefused("dot image not-a-picture.txt\n", "bad.recipe:1: cannot decode not-a-picture.txt as a PNG or JPEG picture");
    expectRefused("noise sound dot.png\n", "bad.recipe:1: dot.png is not a WAV file");
    expectRefused("dot image dot.png\n\n# again\ndot text x\n", "bad.recipe:4: duplicate name dot (first on line 1)");
    expectRefused("dot Image dot.png\n", "bad.recipe:1: unknown type 'Image'");
    expectRefused("dot\n", "bad.recipe:1: entry dot has no type (text, image, sound or binary)");
    expectRefused("note text \\q\n", "bad.recipe:1: unknown escape \\q (use \\n, \\t, \\s or \\\\)");
    expectRefused("dot image\n", "bad.recipe:1: entry dot names no source file");
    expectRefused("note text trailing\\\n", "bad.recipe:1: a text may not end with a single \\");
    expectFailure(run({"build", "no.recipe", "good.bin"}), failure, "cannot read no.recipe");

    // Never over its own inputs.
    write("self.recipe", "self binary self.recipe\n");
    expectFailure(run({"build", "self.recipe", "self.recipe"}), failure, "self.recipe is the recipe");
    write("source.recipe", "dot image dot.png\n");
    expectFailure(run({"build", "source.recipe", "./dot.png"}), failure, "./dot.png is the source of dot");
    EXPECT_EQ(read("self.recipe"), "self binary self.recipe\n");
}

TEST_F(KelvanePackErrors, VerifyNamesTheFirstDamagedEntry)
{
    const std::string good = read("good.bin");
    expectFailure(run({"verify", "missing.bin"}), failure, "cannot read missing.bin");
    write("empty.bin", "");
    expectFailure(run({"verify", "empty.bin"}), failure, "empty.bin: not a resource pack");

    // The second entry cut short, its magic damaged, its type unknown.
    write("cut.bin", good.substr(0, good.size() - 3));
    expectFailure(run({"verify", "cut.bin"}), failure, "cut.bin: damaged at entry 2 \"second\": its data does not read back whole");
    std::string badMagic = good;
    badMagic[badMagic.find("Q1RES00", 30) + 6] = '1';
    write("magic.bin", badMagic);
    expectFailure(run({"verify", "magic.bin"}), failure, "magic.bin: damaged at entry 2: no entry magic");
    write("type.bin", packOf(2, textEntry("first", "one") + wireString("Q1RES00") + wireString("odd") + int32(7) + wireString("x")));
    expectFailure(run({"verify", "type.bin"}), failure, "type.bin: damaged at entry 2 \"odd\": unknown type code 7");
    write("count.bin", packOf(3, textEntry("first", "one") + textEntry("second", "two")));
    expectFailure(run({"verify", "count.bin"}), failure, "count.bin: damaged at entry 3: no entry magic");
    write("stray.bin", good + "xyz");
    expectFailure(run({"verify", "stray.bin"}), failure, "stray.bin: damaged: 3 stray bytes after the last of 2 entries");
    // A length that asks for gigabytes is damage, not an allocation.
    write("huge.bin", packOf(1, wireString("Q1RES00") + wireString("blob") + int32(2) + int32(0) + int32(0x40)));
    expectFailure(run({"verify", "huge.bin"}), failure, "huge.bin: damaged at entry 1 \"blob\"");

    // Every command that reads a pack refuses a damaged one, and nothing is written.
    expectFailure(run({"list", "cut.bin"}), failure, "damaged at entry 2");
    expectFailure(run({"add", "cut.bin", "third", "text", "three"}), failure, "damaged at entry 2");
    expectFailure(run({"remove", "cut.bin", "first"}), failure, "damaged at entry 2");
    EXPECT_EQ(read("cut.bin"), good.substr(0, good.size() - 3));
}

TEST_F(KelvanePackErrors, EditingRefusalsAndCommandLineMistakesChangeNothing)
{
    const std::string good = read("good.bin");
    expectFailure(run({"add", "good.bin", "first", "text", "again"}), failure, "good.bin already has an entry first");
    expectFailure(run({"add", "good.bin", "bad name", "text", "x"}), failure, "bad entry name 'bad name'");
    expectFailure(run({"remove", "good.bin", "third"}), failure, "no entry third in good.bin");
    expectFailure(run({"rename", "good.bin", "first", "second"}), failure, "good.bin already has an entry second");
    write("taken.txt", "mine");
    expectFailure(run({"extract", "good.bin", "first", "taken.txt"}), failure, "taken.txt already exists");
    expectFailure(run({"pack", "x"}), usage, "unknown command 'pack'");
    expectFailure(run({"extract", "good.bin", "first"}), usage, "usage: kelvane-pack extract PACK NAME OUT");
    EXPECT_EQ(read("taken.txt"), "mine");
    EXPECT_EQ(read("good.bin"), good);
    EXPECT_EQ(files(), (std::vector<std::string>{"dot.png", "good.bin", "taken.txt"}));
}
