#include "ArtCommand.h"

#include "ArtCatalogue.h"
#include "ArtPreview.h"
#include "FontSetup.h"
#include "PictureRenderer.h"
#include "SvgSource.h"

#include <cstdio>
#include <filesystem>

namespace
{
const char* const usage =
    "usage: kelvane-art render FONT_FOLDER SOURCE_FOLDER OUT_FOLDER\n"
    "       kelvane-art preview ART_FOLDER OUT_FOLDER";

// The faces the sources use: the Inter family's weights from Regular to Bold.
const std::initializer_list<const char*> fontFiles = {"Inter-Regular.otf", "Inter-Medium.otf", "Inter-SemiBold.otf",
                                                      "Inter-Bold.otf"};

// Writes the surface as a PNG file that appears under its name only once complete.
std::string writePng(cairo_surface_t* surface, const std::string& path)
{
    const std::string partial = path + ".partial";
    const cairo_status_t status = cairo_surface_write_to_png(surface, partial.c_str());
    if (status != CAIRO_STATUS_SUCCESS)
    {
        std::remove(partial.c_str());
        return path + ": " + cairo_status_to_string(status);
    }
    if (std::rename(partial.c_str(), path.c_str()) != 0)
    {
        std::remove(partial.c_str());
        return path + ": cannot be replaced";
    }
    return {};
}

std::string render(const std::string& fontFolder, const std::string& sourceFolder, const std::string& outFolder,
                   std::ostream& output)
{
    std::error_code error;
    std::filesystem::create_directories(outFolder, error);
    if (error)
        return outFolder + ": " + error.message();
    if (std::string problem = isolateFonts(fontFolder, outFolder, fontFiles); !problem.empty())
        return problem;
    for (const ArtPicture& picture : ArtCatalogue::pictures())
    {
        SvgSource source;
        if (std::string problem = source.loadFile(sourceFolder + "/" + picture.name + ".svg"); !problem.empty())
            return problem;
        CairoSurface surface;
        if (std::string problem = PictureRenderer::render(picture, source, surface); !problem.empty())
            return problem;
        if (std::string problem = writePng(surface.get(), outFolder + "/" + picture.name + ".png"); !problem.empty())
            return problem;
    }
    output << "kelvane-art: " << ArtCatalogue::pictures().size() << " pictures in " << outFolder << "\n";
    return {};
}
}  // namespace

int runArt(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors)
{
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h"))
    {
        output << usage << "\n";
        return 0;
    }
    std::string problem;
    if (arguments.size() == 4 && arguments[0] == "render")
        problem = render(arguments[1], arguments[2], arguments[3], output);
    else if (arguments.size() == 3 && arguments[0] == "preview")
        problem = ArtPreview::write(arguments[1], arguments[2]);
    else
    {
        errors << usage << "\n";
        return 2;
    }
    if (!problem.empty())
    {
        errors << "kelvane-art: " << problem << "\n";
        return 1;
    }
    return 0;
}
