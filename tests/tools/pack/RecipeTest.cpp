#include "Recipe.h"

#include "media/resource/Resource.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using q1framework::Resource;

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
