// kelvane-lv2-turtle FOLDER BINARY: writes the Turtle documents of Kelvane's LV2 bundle
// (KelvaneTurtle) into FOLDER, for the shared object named BINARY inside it. The build runs it
// whenever the tables it reads change. A failure is one line on standard error and exit code 1.

#include "host/lv2/turtle/KelvaneTurtle.h"
#include "plugin/PluginDescription.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

namespace
{
bool writeFile(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file)
    {
        std::fprintf(stderr, "kelvane-lv2-turtle: cannot write %s\n", path.c_str());
        return false;
    }
    return true;
}
}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fprintf(stderr, "usage: kelvane-lv2-turtle FOLDER BINARY\n");
        return 1;
    }
    const std::string folder = argv[1];
    const std::unique_ptr<q1framework::PluginDescription> description(q1framework::createPluginDescription());
    const KelvaneTurtle turtle(*description, argv[2]);
    const bool written = writeFile(folder + "/" + KelvaneTurtle::manifestFileName, turtle.manifest())
                         && writeFile(folder + "/" + KelvaneTurtle::pluginFileName, turtle.plugin())
                         && writeFile(folder + "/" + KelvaneTurtle::presetsFileName, turtle.presets());
    return written ? 0 : 1;
}
