#include "GalleryCommand.h"
#include "GallerySheet.h"

#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

using q1framework::Image;

namespace
{
class GalleryCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        folder = std::filesystem::path(GALLERY_TEST_WORK_FOLDER)
                 / ::testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }

    int run(const std::vector<std::string>& arguments)
    {
        output.str("");
        errors.str("");
        return runGallery(arguments, output, errors);
    }

    std::string read(const std::filesystem::path& path) const
    {
        std::ifstream stream(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }

    std::filesystem::path folder;
    std::ostringstream output;
    std::ostringstream errors;
};
}

TEST_F(GalleryCommand, WritesTheSheetAsAPng)
{
    const std::string path = (folder / "gallery.png").string();
    ASSERT_EQ(run({path}), 0) << errors.str();
    EXPECT_EQ(output.str(), "wrote " + path + " (640 x 682)\n");
    EXPECT_EQ(errors.str(), "");
    const std::string bytes = read(path);
    const Image sheet = Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
    ASSERT_EQ(sheet.getSize(), q1framework::Point(GallerySheet::width, GallerySheet::height));
    // The ground: red 28, green 30, blue 38, stored blue first.
    const uint8_t* corner = sheet.getPixelPointer(0, sheet.getHeight() - 1);
    EXPECT_EQ(corner[0], 38);
    EXPECT_EQ(corner[1], 30);
    EXPECT_EQ(corner[2], 28);
    // The same sheet every time.
    const std::string again = (folder / "again.png").string();
    ASSERT_EQ(run({again}), 0);
    EXPECT_EQ(read(again), bytes);
}

TEST_F(GalleryCommand, KeepsAnExistingFileUnlessForced)
{
    const std::filesystem::path path = folder / "taken.png";
    std::ofstream(path) << "keep me";
    EXPECT_EQ(run({path.string()}), 1);
    EXPECT_EQ(errors.str(), "kelvane-gallery: " + path.string() + " exists; pass --force to replace it\n");
    EXPECT_EQ(read(path), "keep me");
    EXPECT_EQ(run({"--force", path.string()}), 0) << errors.str();
    EXPECT_EQ(read(path).substr(1, 3), "PNG");
}

TEST_F(GalleryCommand, RefusesWrongCommandLinesAndUnwritablePlaces)
{
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(errors.str(), "kelvane-gallery: no output file given\nusage: kelvane-gallery [--force] OUT.png\n");
    EXPECT_EQ(run({"--fast", "a.png"}), 2);
    EXPECT_EQ(errors.str().substr(0, errors.str().find('\n')), "kelvane-gallery: unknown option --fast");
    EXPECT_EQ(run({"a.png", "b.png"}), 2);
    EXPECT_EQ(errors.str().substr(0, errors.str().find('\n')), "kelvane-gallery: one output file only, not also b.png");
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(output.str().substr(0, 6), "usage:");

    const std::string missing = (folder / "no such folder" / "sheet.png").string();
    EXPECT_EQ(run({missing}), 1);
    const std::string message = errors.str();
    EXPECT_EQ(message.rfind("kelvane-gallery: cannot write " + missing + ": ", 0), 0u) << message;
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1);
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}
