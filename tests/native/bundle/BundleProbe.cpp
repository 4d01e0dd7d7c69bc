// The resource path as seen from inside a shared object, for BundlePathsTest.
#include "native/bundle/BundlePaths.h"

#include "foundation/string/String.h"

#include <string>

extern "C" __attribute__((visibility("default"))) const char* bundleProbeResourcePath()
{
    static const std::string path = q1framework::BundlePaths::getResourcePath("resources.bin").getCString();
    return path.c_str();
}
