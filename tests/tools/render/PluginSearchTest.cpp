#include "PluginSearch.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

TEST(PluginSearch, FirstFolderOfVstPathComesFirstThenTheBuildTree)
{
    EXPECT_EQ(PluginSearch::candidates("/opt/vst:/usr/lib/vst", "/home/mia", "/build/Kelvane/Kelvane.so"),
              (std::vector<std::string>{"/opt/vst/Kelvane/Kelvane.so", "/build/Kelvane/Kelvane.so"}));
    EXPECT_EQ(PluginSearch::candidates("/opt/vst/", nullptr, "/b.so"),
              (std::vector<std::string>{"/opt/vst/Kelvane/Kelvane.so", "/b.so"}));
}

TEST(PluginSearch, WithoutVstPathTheUsersVstFolderIsUsed)
{
    const std::vector<std::string> expected = {"/home/mia/.vst/Kelvane/Kelvane.so", "/b.so"};
    EXPECT_EQ(PluginSearch::candidates(nullptr, "/home/mia", "/b.so"), expected);
    EXPECT_EQ(PluginSearch::candidates("", "/home/mia", "/b.so"), expected);
    EXPECT_EQ(PluginSearch::candidates(":/usr/lib/vst", "/home/mia", "/b.so"), expected);
    EXPECT_EQ(PluginSearch::candidates(nullptr, nullptr, "/b.so"), std::vector<std::string>{"/b.so"});
}

TEST(PluginSearch, FindsTheFirstExistingFileOrNamesEveryPlaceTried)
{
    const std::filesystem::path folder = std::filesystem::path(RENDER_TEST_WORK_FOLDER) / "PluginSearch";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "Kelvane");
    const std::string present = (folder / "present.so").string();
    std::ofstream(present) << "x";
    std::string found;
    ASSERT_EQ(PluginSearch::find({(folder / "absent.so").string(), present}, found), "");
    EXPECT_EQ(found, present);

    found.clear();
    const std::string folderOnly = (folder / "Kelvane").string();
    EXPECT_EQ(PluginSearch::find({folderOnly, "/nowhere/Kelvane.so"}, found),
              "Kelvane is not installed (looked for " + folderOnly
                  + " or /nowhere/Kelvane.so); build it or pass --plugin PATH");
    EXPECT_EQ(found, "");
}
