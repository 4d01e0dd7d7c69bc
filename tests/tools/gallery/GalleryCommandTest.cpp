#include "GalleryCommand.h"
#include "GallerySheet.h"

#include "ToolTest.h"
#include "media/image/Image.h"

#include <sstream>
#include <tuple>

using q1framework::Image;

namespace
{
class GalleryCommand : public ToolTest
{
protected:
    int run(const std::vector<std::string>& arguments)
    {
        output.str("");
        errors.str("");
        return runGallery(arguments, output, errors);
    }

    std::ostringstream output;
    std::ostringstream errors;
};
}  // namespace

TEST_F(GalleryCommand, WritesTheSheetAsAPngTheSameEveryTimeAndReplacesAFileOnlyWhenForced)
{
    write("taken.png", "keep me");
    const std::tuple<std::vector<std::string>, int, std::string> refusals[] = {
        {{path("taken.png")}, 1, path("taken.png") + " exists; pass --force to replace it\n"},
        {{}, 2, "no output file given\nusage: kelvane-gallery [--force] OUT.png\n"},
        {{"a.png", "b.png"}, 2, "one output file only, not also b.png\n"},
        {{path("no such folder/sheet.png")}, 1, "cannot write " + path("no such folder/sheet.png") + ": "},
    };
    for (const auto& [arguments, status, text] : refusals)
    {
        EXPECT_EQ(run(arguments), status) << text;
        EXPECT_EQ(errors.str().rfind("kelvane-gallery: " + text, 0), 0u) << errors.str();
    }
    EXPECT_EQ(contents(), (std::map<std::string, std::string>{{"taken.png", "keep me"}}));

    ASSERT_EQ(run({"--force", path("taken.png")}), 0) << errors.str();
    EXPECT_EQ(output.str(), "wrote " + path("taken.png") + " (640 x 682)\n");
    EXPECT_EQ(errors.str(), "");
    const std::string bytes = read("taken.png");
    const Image sheet = Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
    ASSERT_EQ(sheet.getSize(), q1framework::Point(GallerySheet::width, GallerySheet::height));
    // The ground: red 28, green 30, blue 38, stored blue first.
    const uint8_t* corner = sheet.getPixelPointer(0, sheet.getHeight() - 1);
    EXPECT_EQ(std::vector<int>({corner[0], corner[1], corner[2]}), std::vector<int>({38, 30, 28}));
    ASSERT_EQ(run({path("again.png")}), 0);
    EXPECT_EQ(read("again.png"), bytes);
}
