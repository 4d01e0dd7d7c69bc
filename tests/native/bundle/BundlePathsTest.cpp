#include "native/bundle/BundlePaths.h"

#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <climits>
#include <filesystem>
#include <string>
#include <unistd.h>

using q1framework::BundlePaths;
using q1framework::String;

namespace
{
// The folder of this test program, as the kernel reports it: the framework is linked into it
// statically, so the program is the object that holds its code.
std::string programFolder()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length <= 0)
        return {};
    const std::string program(path, static_cast<size_t>(length));
    return program.substr(0, program.rfind('/'));
}
}

TEST(BundlePaths, TheBundleIsTheFolderOfTheObjectHoldingTheCode)
{
    const std::string expected = programFolder();
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(std::string(BundlePaths::getBundlePath().getCString()), expected);
    EXPECT_EQ(std::string(BundlePaths::getResourcePath("resources.bin").getCString()), expected + "/resources.bin");
}

TEST(BundlePaths, InsideASharedObjectTheBundleIsItsFolder)
{
    void* probe = dlopen(BUNDLE_PROBE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(probe, nullptr) << dlerror();
    using PathFunction = const char* (*)();
    const auto resourcePath = reinterpret_cast<PathFunction>(dlsym(probe, "bundleProbeResourcePath"));
    ASSERT_NE(resourcePath, nullptr);
    const std::string folder = std::filesystem::canonical(BUNDLE_PROBE_FOLDER).string();
    EXPECT_EQ(std::string(resourcePath()), folder + "/resources.bin");
    dlclose(probe);
}
