#include "native/bundle/BundlePaths.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <filesystem>
#include <string>

// The probe is a shared object with the framework linked in, in a folder of its own, as a loaded
// plug-in is: the bundle must be the probe's folder, not the test program's. Hosts often load
// plug-ins through links, so the probe is loaded through a link to its folder, and the bundle is
// still the folder itself.
TEST(BundlePaths, InsideASharedObjectTheBundleIsItsFolder)
{
    const std::filesystem::path folder = std::filesystem::canonical(BUNDLE_PROBE_FOLDER);
    const std::filesystem::path link = std::filesystem::path(testing::TempDir()) / "linked-probe-bundle";
    std::filesystem::remove(link);
    std::filesystem::create_directory_symlink(folder, link);
    void* probe = dlopen((link / std::filesystem::path(BUNDLE_PROBE).filename()).c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(probe, nullptr) << dlerror();
    using PathFunction = const char* (*)();
    const auto resourcePath = reinterpret_cast<PathFunction>(dlsym(probe, "bundleProbeResourcePath"));
    ASSERT_NE(resourcePath, nullptr);
    EXPECT_EQ(std::string(resourcePath()), folder.string() + "/resources.bin");
    dlclose(probe);
    std::filesystem::remove(link);
}
