#include "native/bundle/BundlePaths.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <filesystem>
#include <string>

// The probe is a shared object with the framework linked in, in a folder of its own, as a loaded
// plug-in is: the bundle must be the probe's folder, not the test program's.
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
