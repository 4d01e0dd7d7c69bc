#include "host/lv2/turtle/KelvaneTurtle.h"

#include "host/lv2/KelvanePresets.h"
#include "host/lv2/LV2PortLayout.h"
#include "host/lv2/turtle/TurtleText.h"
#include "host/lv2/ui/LV2UIUri.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/PluginDescription.h"

#include <lv2/instance-access/instance-access.h>

#include <vector>

using q1framework::LV2PortLayout;
using q1framework::PluginDescription;

namespace
{
const char* const prefixes =
    "@prefix doap:  <http://usefulinc.com/ns/doap#> .\n"
    "@prefix foaf:  <http://xmlns.com/foaf/0.1/> .\n"
    "@prefix lv2:   <http://lv2plug.in/ns/lv2core#> .\n"
    "@prefix pset:  <http://lv2plug.in/ns/ext/presets#> .\n"
    "@prefix rdf:   <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .\n"
    "@prefix rdfs:  <http://www.w3.org/2000/01/rdf-schema#> .\n"
    "@prefix state: <http://lv2plug.in/ns/ext/state#> .\n"
    "@prefix ui:    <http://lv2plug.in/ns/extensions/ui#> .\n"
    "@prefix units: <http://lv2plug.in/ns/extensions/units#> .\n"
    "@prefix urid:  <http://lv2plug.in/ns/ext/urid#> .\n"
    "\n";

// One statement per line, "predicate object", of a blank node or a subject.
using Statements = std::vector<std::string>;

// The statements joined as Turtle's ";" list, each line indented by `indent`.
std::string join(const Statements& statements, const std::string& indent)
{
    std::string text;
    for (std::size_t line = 0; line < statements.size(); ++line)
        text += indent + statements[line] + (line + 1 < statements.size() ? " ;\n" : "\n");
    return text;
}

// Blank nodes as the objects of one predicate: "predicate [ ... ] , [ ... ]".
std::string blankNodes(const std::string& predicate, const std::vector<Statements>& nodes, const std::string& indent)
{
    std::string text = predicate + " ";
    for (std::size_t node = 0; node < nodes.size(); ++node)
        text += "[\n" + join(nodes[node], indent + "\t") + indent + (node + 1 < nodes.size() ? "] , " : "]");
    return text;
}

// The LV2 class of a category such as "Fx|Dynamics".
std::string pluginClasses(const std::string& category)
{
    if (category.find("Dynamics") != std::string::npos)
        return "lv2:Plugin , lv2:DynamicsPlugin";
    return "lv2:Plugin";
}

// The units vocabulary's name of a unit KLParameters gives.
std::string unitOf(const std::string& unit)
{
    if (unit == "%")
        return "units:pc";
    if (unit == "dB")
        return "units:db";
    return "";
}

// Names of the audio channels: "Left"/"Right" for a pair, numbers otherwise.
std::string channelName(int channel, int count)
{
    if (count == 2)
        return channel == 0 ? "Left" : "Right";
    return std::to_string(channel + 1);
}

std::string lowerCase(std::string text)
{
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

Statements audioPort(uint32_t index, bool input, int channel, int count)
{
    const std::string channelText = channelName(channel, count);
    return {std::string("a ") + (input ? "lv2:InputPort" : "lv2:OutputPort") + " , lv2:AudioPort",
            "lv2:index " + std::to_string(index),
            "lv2:symbol " + TurtleText::literal((input ? "in_" : "out_") + lowerCase(channelText)),
            "lv2:name " + TurtleText::literal((input ? "Input " : "Output ") + channelText)};
}

Statements controlPort(uint32_t index, int parameter)
{
    const float defaultValue = KLParameters::toPhysical(KLParameters::getDefault(parameter), parameter);
    Statements port = {"a lv2:InputPort , lv2:ControlPort",
                       "lv2:index " + std::to_string(index),
                       "lv2:symbol " + TurtleText::literal(KLParameters::getSymbol(parameter)),
                       "lv2:name " + TurtleText::literal(KLParameters::getName(parameter)),
                       "lv2:default " + TurtleText::number(defaultValue),
                       "lv2:minimum " + TurtleText::number(KLParameters::getMinimum(parameter)),
                       "lv2:maximum " + TurtleText::number(KLParameters::getMaximum(parameter))};
    switch (KLParameters::getKind(parameter))
    {
    case KLParameters::Kind::toggle:
        port.push_back("lv2:portProperty lv2:toggled");
        break;
    case KLParameters::Kind::steps:
    {
        port.push_back("lv2:portProperty lv2:integer , lv2:enumeration");
        std::vector<Statements> points;
        for (int step = 0; step < KLParameters::getStepCount(parameter); ++step)
            points.push_back({"rdfs:label " + TurtleText::literal(KLParameters::getStepName(parameter, step)),
                              "rdf:value " + TurtleText::number(static_cast<float>(step))});
        port.push_back(blankNodes("lv2:scalePoint", points, "\t\t"));
        break;
    }
    case KLParameters::Kind::linear:
    default:
        if (const std::string unit = unitOf(KLParameters::getUnit(parameter)); !unit.empty())
            port.push_back("units:unit " + unit);
        break;
    }
    return port;
}

Statements meterPort(uint32_t index, int meter)
{
    return {"a lv2:OutputPort , lv2:ControlPort",
            "lv2:index " + std::to_string(index),
            "lv2:symbol " + TurtleText::literal(KLMeters::getSymbol(meter)),
            "lv2:name " + TurtleText::literal(KLMeters::getName(meter)),
            "lv2:minimum " + TurtleText::number(0.0f),
            "lv2:maximum " + TurtleText::number(KLMeters::getMaximum(meter)),
            "units:unit units:coef"};
}
}  // namespace

KelvaneTurtle::KelvaneTurtle(const PluginDescription& description, const std::string& binaryName)
    : uri(description.uri.getCString()),
      uiUri(q1framework::getLV2UIUri(uri)),
      binary(binaryName),
      name(description.name.getCString()),
      vendor(description.vendor.getCString()),
      homepage(description.url.getCString()),
      email(description.email.getCString()),
      category(description.category.getCString()),
      minorVersion(description.version[1]),
      microVersion(description.version[2]),
      audioInputs(description.numInputs),
      audioOutputs(description.numOutputs)
{
}

std::string KelvaneTurtle::presetUri(const std::string& slug) const
{
    return uri + "/presets/" + slug;
}

std::string KelvaneTurtle::manifest() const
{
    std::string text = prefixes;
    text += TurtleText::uri(uri) + "\n"
            + join({"a lv2:Plugin", "lv2:binary " + TurtleText::uri(binary),
                    "rdfs:seeAlso " + TurtleText::uri(pluginFileName)},
                   "\t")
            + "\t.\n\n" + TurtleText::uri(uiUri) + "\n"
            + join({"a ui:X11UI", "ui:binary " + TurtleText::uri(binary), "rdfs:seeAlso " + TurtleText::uri(pluginFileName)},
                   "\t")
            + "\t.\n";
    for (int preset = 0; preset < KelvanePresets::getCount(); ++preset)
        text += "\n" + TurtleText::uri(presetUri(KelvanePresets::get(preset).slug)) + "\n"
                + join({"a pset:Preset", "lv2:appliesTo " + TurtleText::uri(uri),
                        "rdfs:seeAlso " + TurtleText::uri(presetsFileName)},
                       "\t")
                + "\t.\n";
    return text;
}

std::string KelvaneTurtle::plugin() const
{
    const Statements maintainer = {"foaf:name " + TurtleText::literal(vendor),
                                   "foaf:homepage " + TurtleText::uri(homepage),
                                   "foaf:mbox " + TurtleText::uri("mailto:" + email)};
    const Statements plugin = {"a " + pluginClasses(category),
                               "doap:name " + TurtleText::literal(name),
                               blankNodes("doap:maintainer", {maintainer}, "\t"),
                               "lv2:minorVersion " + std::to_string(minorVersion),
                               "lv2:microVersion " + std::to_string(microVersion),
                               "lv2:optionalFeature lv2:hardRTCapable , urid:map",
                               "lv2:extensionData state:interface",
                               "ui:ui " + TurtleText::uri(uiUri),
                               pluginPorts()};
    return prefixes + TurtleText::uri(uri) + "\n" + join(plugin, "\t") + "\t.\n\n" + userInterface();
}

std::string KelvaneTurtle::userInterface() const
{
    // The meters are output ports, of which hosts tell a user interface only what it asks for.
    const LV2PortLayout layout(audioInputs, audioOutputs, KLParameters::count, KLMeters::count);
    std::vector<Statements> notifications;
    for (int meter = 0; meter < layout.getNumMeters(); ++meter)
        notifications.push_back({"ui:plugin " + TurtleText::uri(uri),
                                 "lv2:symbol " + TurtleText::literal(KLMeters::getSymbol(meter)),
                                 "ui:protocol ui:floatProtocol"});
    const Statements userInterface = {
        "a ui:X11UI",
        "lv2:requiredFeature ui:idleInterface , ui:parent",
        "lv2:optionalFeature ui:resize , ui:touch , urid:map , " + TurtleText::uri(LV2_INSTANCE_ACCESS_URI),
        "lv2:extensionData ui:idleInterface , ui:resize",
        blankNodes("ui:portNotification", notifications, "\t")};
    return TurtleText::uri(uiUri) + "\n" + join(userInterface, "\t") + "\t.\n";
}

std::string KelvaneTurtle::pluginPorts() const
{
    const LV2PortLayout layout(audioInputs, audioOutputs, KLParameters::count, KLMeters::count);
    std::vector<Statements> ports;
    for (int channel = 0; channel < layout.getNumAudioInputs(); ++channel)
        ports.push_back(audioPort(layout.getAudioInputPort(channel), true, channel, audioInputs));
    for (int channel = 0; channel < layout.getNumAudioOutputs(); ++channel)
        ports.push_back(audioPort(layout.getAudioOutputPort(channel), false, channel, audioOutputs));
    for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
        ports.push_back(controlPort(layout.getControlPort(parameter), parameter));
    for (int meter = 0; meter < layout.getNumMeters(); ++meter)
        ports.push_back(meterPort(layout.getMeterPort(meter), meter));
    return blankNodes("lv2:port", ports, "\t");
}

std::string KelvaneTurtle::presets() const
{
    std::string text = prefixes;
    for (int index = 0; index < KelvanePresets::getCount(); ++index)
    {
        const KelvanePresets::Preset& preset = KelvanePresets::get(index);
        std::vector<Statements> values;
        for (int parameter = 0; parameter < KLParameters::count; ++parameter)
            values.push_back({"lv2:symbol " + TurtleText::literal(KLParameters::getSymbol(parameter)),
                              "pset:value " + TurtleText::number(preset.physical[parameter])});
        text += TurtleText::uri(presetUri(preset.slug)) + "\n"
                + join({"a pset:Preset", "lv2:appliesTo " + TurtleText::uri(uri),
                        "rdfs:label " + TurtleText::literal(preset.name), blankNodes("lv2:port", values, "\t")},
                       "\t")
                + "\t.\n" + (index + 1 < KelvanePresets::getCount() ? "\n" : "");
    }
    return text;
}
