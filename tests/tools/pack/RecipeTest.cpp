#include "Recipe.h"

#include "media/resource/Resource.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using q1framework::Resource;

TEST(Recipe, LinesNameTypeAndValue)
{
    std::vector<RecipeEntry> entries;
    ASSERT_EQ(parseRecipe("# comment\n\n  knob\timage  art/my knob.png  \r\ntitle text \\sA\\tB\\\\n\\n\nblob binary /abs/path", entries), "");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].name, "knob");
    EXPECT_EQ(entries[0].type, Resource::imageType);
    EXPECT_EQ(entries[0].value, "art/my knob.png");  // blanks inside a path stay
    EXPECT_EQ(entries[0].line, 3);
    EXPECT_EQ(entries[1].type, Resource::textType);
    EXPECT_EQ(entries[1].value, " A\tB\\n\n");
    EXPECT_EQ(entries[2].type, Resource::binaryType);
    EXPECT_EQ(entries[2].value, "/abs/path");
    EXPECT_EQ(entries[2].line, 5);
}

TEST(Recipe, TheEditorRecipeNamesTheEditorsPictures)
{
    std::ifstream file(EDITOR_RECIPE);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::vector<RecipeEntry> entries;
    ASSERT_EQ(parseRecipe(text, entries), "");
    std::vector<std::string> names;
    for (const RecipeEntry& entry : entries)
    {
        names.push_back(entry.name);
        EXPECT_EQ(entry.type, Resource::imageType) << entry.name;
    }
    EXPECT_EQ(names, (std::vector<std::string>{"KL.0001.tif", "slice_knbAttack", "slice_knbDrive", "slice_knbRelease",
                                               "slice_knbGain", "slice_tbtnBypass", "satled.png", "attack.png", "release.png"}));
}
