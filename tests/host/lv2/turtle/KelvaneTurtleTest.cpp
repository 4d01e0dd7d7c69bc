// The bundle's Turtle documents as lilv reads them from the build tree: the plug-in, its ports
// and their ranges are those of the parameter table, the meters and the adapter's port layout.

#include "LV2TestHost.h"

#include "host/lv2/LV2PortLayout.h"
#include "host/lv2/ui/LV2UIUri.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"

#include <lv2/instance-access/instance-access.h>
#include <lv2/port-props/port-props.h>
#include <lv2/state/state.h>
#include <lv2/ui/ui.h>
#include <lv2/units/units.h>
#include <lv2/urid/urid.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using q1framework::LV2PortLayout;

namespace
{
class KelvaneTurtle : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(host.plugin, nullptr) << "no plug-in " << host.uri << " in " << KELVANE_LV2_BUNDLE;
    }

    const LilvPort* port(uint32_t index) const { return lilv_plugin_get_port_by_index(host.plugin, index); }

    bool portIs(uint32_t index, const char* classUri) const
    {
        LilvNode* node = lilv_new_uri(host.world, classUri);
        const bool is = lilv_port_is_a(host.plugin, port(index), node);
        lilv_node_free(node);
        return is;
    }

    bool portHasProperty(uint32_t index, const char* propertyUri) const
    {
        LilvNode* node = lilv_new_uri(host.world, propertyUri);
        const bool has = lilv_port_has_property(host.plugin, port(index), node);
        lilv_node_free(node);
        return has;
    }

    std::string portSymbol(uint32_t index) const
    {
        return lilv_node_as_string(lilv_port_get_symbol(host.plugin, port(index)));
    }

    std::string portName(uint32_t index) const
    {
        LilvNode* name = lilv_port_get_name(host.plugin, port(index));
        std::string text = lilv_node_as_string(name);
        lilv_node_free(name);
        return text;
    }

    // The unit URI of a port, "" when it has none.
    std::string portUnit(uint32_t index) const
    {
        LilvNode* predicate = lilv_new_uri(host.world, LV2_UNITS__unit);
        LilvNodes* units = lilv_port_get_value(host.plugin, port(index), predicate);
        lilv_node_free(predicate);
        std::string unit = units != nullptr ? lilv_node_as_uri(lilv_nodes_get_first(units)) : "";
        lilv_nodes_free(units);
        return unit;
    }

    // Every URI in a list that lilv gives, freeing the list.
    static std::set<std::string> urisOf(LilvNodes* nodes)
    {
        std::set<std::string> uris;
        LILV_FOREACH(nodes, iterator, nodes)
            uris.insert(lilv_node_as_uri(lilv_nodes_get(nodes, iterator)));
        lilv_nodes_free(nodes);
        return uris;
    }

    // The objects of the user interface's statements with this predicate, as text.
    std::set<std::string> userInterfaceValues(const char* predicateUri) const
    {
        LilvNode* ui = lilv_new_uri(host.world, q1framework::getLV2UIUri(host.uri).c_str());
        LilvNode* predicate = lilv_new_uri(host.world, predicateUri);
        lilv_world_load_resource(host.world, ui);
        LilvNodes* objects = lilv_world_find_nodes(host.world, ui, predicate, nullptr);
        std::set<std::string> values;
        LILV_FOREACH(nodes, iterator, objects)
            values.insert(lilv_node_as_string(lilv_nodes_get(objects, iterator)));
        lilv_nodes_free(objects);
        lilv_node_free(predicate);
        lilv_node_free(ui);
        return values;
    }

    LV2TestHost host;
    const LV2PortLayout layout{2, 2, KLParameters::count, KLMeters::count};
};
}  // namespace

TEST_F(KelvaneTurtle, PluginIsADynamicsPluginNamedAfterTheEffect)
{
    LilvNode* name = lilv_plugin_get_name(host.plugin);
    EXPECT_STREQ(lilv_node_as_string(name), "Kelvane");
    lilv_node_free(name);
    EXPECT_STREQ(lilv_node_as_uri(lilv_plugin_class_get_uri(lilv_plugin_get_class(host.plugin))),
                 LV2_CORE__DynamicsPlugin);
    LilvNode* author = lilv_plugin_get_author_name(host.plugin);
    EXPECT_STREQ(lilv_node_as_string(author), "Morvenna Audio Technologies");
    lilv_node_free(author);
}

TEST_F(KelvaneTurtle, PluginOffersTheStateExtensionAndRequiresNoFeature)
{
    EXPECT_EQ(urisOf(lilv_plugin_get_extension_data(host.plugin)), std::set<std::string>{LV2_STATE__interface});
    EXPECT_TRUE(urisOf(lilv_plugin_get_required_features(host.plugin)).empty());
    EXPECT_EQ(urisOf(lilv_plugin_get_optional_features(host.plugin)),
              (std::set<std::string>{LV2_CORE__hardRTCapable, LV2_URID__map}));
}

TEST_F(KelvaneTurtle, PortsAreThoseOfTheAdaptersLayout)
{
    ASSERT_EQ(lilv_plugin_get_num_ports(host.plugin), layout.getCount());
    for (uint32_t index = 0; index < layout.getCount(); ++index)
    {
        SCOPED_TRACE(testing::Message() << "port " << index << " " << portSymbol(index));
        switch (layout.getKind(index))
        {
        case LV2PortLayout::Kind::audioInput:
            EXPECT_TRUE(portIs(index, LV2_CORE__AudioPort) && portIs(index, LV2_CORE__InputPort));
            break;
        case LV2PortLayout::Kind::audioOutput:
            EXPECT_TRUE(portIs(index, LV2_CORE__AudioPort) && portIs(index, LV2_CORE__OutputPort));
            break;
        case LV2PortLayout::Kind::control:
            EXPECT_TRUE(portIs(index, LV2_CORE__ControlPort) && portIs(index, LV2_CORE__InputPort));
            EXPECT_EQ(portSymbol(index), KLParameters::getSymbol(layout.getNumber(index)));
            break;
        case LV2PortLayout::Kind::meter:
            EXPECT_TRUE(portIs(index, LV2_CORE__ControlPort) && portIs(index, LV2_CORE__OutputPort));
            EXPECT_EQ(portSymbol(index), KLMeters::getSymbol(layout.getNumber(index)));
            break;
        case LV2PortLayout::Kind::none:
            ADD_FAILURE();
        }
    }
    EXPECT_EQ(portSymbol(layout.getAudioInputPort(0)), "in_left");
    EXPECT_EQ(portSymbol(layout.getAudioOutputPort(1)), "out_right");
}

TEST_F(KelvaneTurtle, ControlPortsCarryTheParameterTable)
{
    std::vector<float> minimum(layout.getCount()), maximum(layout.getCount()), defaults(layout.getCount());
    lilv_plugin_get_port_ranges_float(host.plugin, minimum.data(), maximum.data(), defaults.data());
    const std::string units[] = {LV2_UNITS__pc, LV2_UNITS__pc, "", LV2_UNITS__db, "", "", LV2_UNITS__pc};
    for (int parameter = 0; parameter < KLParameters::count; ++parameter)
    {
        SCOPED_TRACE(KLParameters::getName(parameter));
        const uint32_t index = layout.getControlPort(parameter);
        EXPECT_EQ(portName(index), KLParameters::getName(parameter));
        EXPECT_EQ(minimum[index], KLParameters::getMinimum(parameter));
        EXPECT_EQ(maximum[index], KLParameters::getMaximum(parameter));
        EXPECT_EQ(defaults[index], KLParameters::toPhysical(KLParameters::getDefault(parameter), parameter));
        EXPECT_EQ(portUnit(index), units[parameter]);
        EXPECT_EQ(portHasProperty(index, LV2_CORE__toggled), parameter == KLParameters::bypass);
        const bool isChoice = parameter == KLParameters::attackTime || parameter == KLParameters::releaseTime;
        EXPECT_EQ(portHasProperty(index, LV2_CORE__enumeration), isChoice);
        EXPECT_EQ(portHasProperty(index, LV2_CORE__integer), isChoice);
    }
}

TEST_F(KelvaneTurtle, BypassIsNotTheHostsEnabledSwitch)
{
    // lv2:enabled means processing at 1; Kelvane's Bypass means the opposite.
    LilvNode* designation = lilv_new_uri(host.world, LV2_CORE__enabled);
    EXPECT_EQ(lilv_plugin_get_port_by_designation(host.plugin, nullptr, designation), nullptr);
    lilv_node_free(designation);
}

TEST_F(KelvaneTurtle, TimeChoicesNameTheirThreeSteps)
{
    for (const int parameter : {KLParameters::attackTime, KLParameters::releaseTime})
    {
        LilvScalePoints* points = lilv_port_get_scale_points(host.plugin, port(layout.getControlPort(parameter)));
        std::set<std::pair<float, std::string>> found;
        LILV_FOREACH(scale_points, iterator, points)
        {
            const LilvScalePoint* point = lilv_scale_points_get(points, iterator);
            found.insert({lilv_node_as_float(lilv_scale_point_get_value(point)),
                          lilv_node_as_string(lilv_scale_point_get_label(point))});
        }
        lilv_scale_points_free(points);
        EXPECT_EQ(found, (std::set<std::pair<float, std::string>>{{0.0f, "sharp"}, {1.0f, "mid"}, {2.0f, "soft"}}))
            << KLParameters::getName(parameter);
    }
}

TEST_F(KelvaneTurtle, MeterPortsRangeOverTheirLevels)
{
    std::vector<float> minimum(layout.getCount()), maximum(layout.getCount());
    lilv_plugin_get_port_ranges_float(host.plugin, minimum.data(), maximum.data(), nullptr);
    for (int meter = 0; meter < KLMeters::count; ++meter)
    {
        const uint32_t index = layout.getMeterPort(meter);
        EXPECT_EQ(portName(index), KLMeters::getName(meter));
        EXPECT_EQ(minimum[index], 0.0f);
        EXPECT_EQ(maximum[index], KLMeters::getMaximum(meter));
        EXPECT_EQ(portUnit(index), LV2_UNITS__coef);
    }
}

TEST_F(KelvaneTurtle, UserInterfaceNeedsAParentAndIdleCallsAndUsesTheOtherFeaturesItKnows)
{
    EXPECT_EQ(userInterfaceValues(LV2_CORE__requiredFeature),
              (std::set<std::string>{LV2_UI__idleInterface, LV2_UI__parent}));
    EXPECT_EQ(userInterfaceValues(LV2_CORE__optionalFeature),
              (std::set<std::string>{LV2_UI__resize, LV2_UI__touch, LV2_URID__map, LV2_INSTANCE_ACCESS_URI}));
    EXPECT_EQ(userInterfaceValues(LV2_CORE__extensionData),
              (std::set<std::string>{LV2_UI__idleInterface, LV2_UI__resize}));
}

TEST_F(KelvaneTurtle, UserInterfaceAsksForEveryMeterPortAsFloats)
{
    LilvNode* ui = lilv_new_uri(host.world, q1framework::getLV2UIUri(host.uri).c_str());
    LilvNode* notification = lilv_new_uri(host.world, LV2_UI__portNotification);
    LilvNode* symbol = lilv_new_uri(host.world, LV2_CORE__symbol);
    LilvNode* protocol = lilv_new_uri(host.world, LV2_UI__protocol);
    LilvNode* plugin = lilv_new_uri(host.world, LV2_UI__plugin);
    lilv_world_load_resource(host.world, ui);
    LilvNodes* notifications = lilv_world_find_nodes(host.world, ui, notification, nullptr);
    std::set<std::string> symbols;
    LILV_FOREACH(nodes, iterator, notifications)
    {
        const LilvNode* node = lilv_nodes_get(notifications, iterator);
        LilvNode* named = lilv_world_get(host.world, node, symbol, nullptr);
        LilvNode* sent = lilv_world_get(host.world, node, protocol, nullptr);
        LilvNode* of = lilv_world_get(host.world, node, plugin, nullptr);
        symbols.insert(named != nullptr ? lilv_node_as_string(named) : "");
        EXPECT_STREQ(sent != nullptr ? lilv_node_as_uri(sent) : "", LV2_UI__floatProtocol);
        EXPECT_EQ(of != nullptr ? std::string(lilv_node_as_uri(of)) : "", host.uri);
        lilv_node_free(named);
        lilv_node_free(sent);
        lilv_node_free(of);
    }
    lilv_nodes_free(notifications);
    for (LilvNode* node : {ui, notification, symbol, protocol, plugin})
        lilv_node_free(node);
    std::set<std::string> meters;
    for (int meter = 0; meter < KLMeters::count; ++meter)
        meters.insert(KLMeters::getSymbol(meter));
    EXPECT_EQ(symbols, meters);
}
