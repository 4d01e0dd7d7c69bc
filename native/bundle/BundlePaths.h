#pragma once

namespace q1framework
{

class String;

// Where the loaded plug-in lives on disk. On Linux the bundle is the folder of the shared object
// that holds the framework's code (found through the dynamic loader), and its resources lie in
// that same folder, beside the shared object. In a program linked with the framework statically
// that is the program's folder.
//
// Thread contract: any thread; the folder is looked up once and kept.
class BundlePaths
{
public:
    // The bundle's folder, without a trailing "/"; empty if the loader cannot tell.
    static String getBundlePath();
    // The resource folder, "/" and name: the path of the resource file name (name alone when the
    // folder is unknown).
    static String getResourcePath(const String& name);
};

}  // namespace q1framework
