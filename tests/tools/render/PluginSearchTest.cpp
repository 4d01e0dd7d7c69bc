#include "PluginSearch.h"

#include "ToolTest.h"

TEST(PluginSearch, FirstFolderOfVstPathComesFirstOtherwiseTheUsersVstFolderThenTheBuildTree)
{
    EXPECT_EQ(PluginSearch::candidates("/opt/vst:/usr/lib/vst", "/home/mia", "/build/Kelvane/Kelvane.so"),
              (std::vector<std::string>{"/opt/vst/Kelvane/Kelvane.so", "/build/Kelvane/Kelvane.so"}));
    EXPECT_EQ(PluginSearch::candidates("/opt/vst/", nullptr, "/b.so"),
              (std::vector<std::string>{"/opt/vst/Kelvane/Kelvane.so", "/b.so"}));
    for (const char* vstPath : {static_cast<const char*>(nullptr), "", ":/usr/lib/vst"})
        EXPECT_EQ(PluginSearch::candidates(vstPath, "/home/mia", "/b.so"),
                  (std::vector<std::string>{"/home/mia/.vst/Kelvane/Kelvane.so", "/b.so"}));
    EXPECT_EQ(PluginSearch::candidates(nullptr, nullptr, "/b.so"), std::vector<std::string>{"/b.so"});
}

// A fresh folder of the test's own.
using PluginSearchOnDisk = ToolTest;

TEST_F(PluginSearchOnDisk, FindsTheFirstExistingFileOrNamesEveryPlaceTried)
{
    write("present.so", "x");
    std::filesystem::create_directories(path("Kelvane"));
    std::string found;
    ASSERT_EQ(PluginSearch::find({path("absent.so"), path("present.so")}, found), "");
    EXPECT_EQ(found, path("present.so"));

    found.clear();
    EXPECT_EQ(PluginSearch::find({path("Kelvane"), "/nowhere/Kelvane.so"}, found),
              "Kelvane is not installed (looked for " + path("Kelvane")
                  + " or /nowhere/Kelvane.so); build it or pass --plugin PATH");
    EXPECT_EQ(found, "");
}
