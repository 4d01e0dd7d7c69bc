#pragma once

// What Kelvane's shared objects (the VST 2.4 and the LV2 one) set up when they load, before any
// entry point runs: the font engine and the toolkit's default look come up and go down with the
// framework; resource files are found in the bundle (the folder of the shared object); the
// plug-in's shared pack is read from there; and the plug-in makes its editor through
// KLAudioPluginEditor. A test program that builds the plug-in in, rather than loading a shared
// object, registers the same.
//
// Thread contract: load time (static initialisation), or a test's main thread before any
// plug-in is made.
class KelvaneServices
{
public:
    static void registerAll();
};
