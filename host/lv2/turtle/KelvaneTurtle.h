#pragma once

#include <string>

namespace q1framework
{
struct PluginDescription;
}

// The Turtle documents of Kelvane's LV2 bundle, made from the same tables as the plug-in itself:
// its identity (PluginDescription), its parameters (KLParameters), its meters (KLMeters), the port
// numbering of the adapter (LV2PortLayout) and the factory presets (KelvanePresets).
//
//   manifest.ttl   what the bundle holds: the plug-in and its user interface with their shared
//                  object (one for both), and each preset
//   Kelvane.ttl    the plug-in: class, maintainer, version, features, state, its user interface
//                  and every port; then the user interface: an X11 UI, the features it needs
//                  and uses, its extension data (idle, resize), and the meter ports it must be
//                  told of
//   presets.ttl    each factory preset as the physical value of every control port
//
// Thread contract: any thread.
class KelvaneTurtle
{
public:
    // binaryName: the file name of the plug-in's shared object inside the bundle.
    KelvaneTurtle(const q1framework::PluginDescription& description, const std::string& binaryName);

    static constexpr const char* manifestFileName = "manifest.ttl";
    static constexpr const char* pluginFileName = "Kelvane.ttl";
    static constexpr const char* presetsFileName = "presets.ttl";

    std::string manifest() const;
    std::string plugin() const;
    std::string presets() const;

    // The URI of the preset with this slug (KelvanePresets).
    std::string presetUri(const std::string& slug) const;

private:
    std::string pluginPorts() const;
    std::string userInterface() const;

    std::string uri;
    std::string uiUri;
    std::string binary;
    std::string name;
    std::string vendor;
    std::string homepage;
    std::string email;
    std::string category;
    int minorVersion;
    int microVersion;
    int audioInputs;
    int audioOutputs;
};
