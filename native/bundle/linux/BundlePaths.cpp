#include "native/bundle/BundlePaths.h"

#include "foundation/string/String.h"

#include <dlfcn.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

namespace q1framework
{

namespace
{
// The folder of the object file (shared object or program) that contains this function.
std::string findBundleFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&findBundleFolder), &info) == 0 || info.dli_fname == nullptr)
        return {};
    char resolved[PATH_MAX];
    const std::string file = realpath(info.dli_fname, resolved) != nullptr ? resolved : info.dli_fname;
    const size_t slash = file.rfind('/');
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? std::string("/") : file.substr(0, slash);
}

// Looked up once: the object cannot move while it is loaded. A std::string, not a String, since
// String's count is not atomic and callers may be on any thread.
const std::string& bundleFolder()
{
    static const std::string folder = findBundleFolder();
    return folder;
}
}

String BundlePaths::getBundlePath()
{
    return String(bundleFolder().c_str());
}

String BundlePaths::getResourcePath(const String& name)
{
    const std::string& folder = bundleFolder();
    if (folder.empty())
        return name;
    return String((folder == "/" ? folder : folder + "/").c_str()) + name;
}

}  // namespace q1framework
