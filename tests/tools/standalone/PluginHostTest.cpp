// kelvane-standalone's host side: loading a plug-in, and the editor's size in Kelvane's state.

#include "PluginHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace
{
// A state chunk around document: "VC2!", its length with the terminating zero, little-endian.
std::vector<char> chunkOf(const std::string& document)
{
    std::vector<char> chunk = {'V', 'C', '2', '!'};
    const uint32_t length = static_cast<uint32_t>(document.size() + 1);
    for (int byte = 0; byte < 4; ++byte)
        chunk.push_back(static_cast<char>(length >> (8 * byte) & 0xff));
    chunk.insert(chunk.end(), document.begin(), document.end());
    chunk.push_back('\0');
    return chunk;
}

const char kelvaneDocument[] =
    "<KELVANE uiWidth=\"0\" uiHeight=\"0\" uiWidthNew=\"750\" uiHeightNew=\"175\" currentProgram=\"0\">\n"
    "    <Program name=\"init0\" attack=\"0.500000\" />\n"
    "</KELVANE>\n";
}  // namespace

TEST(PluginHost, TheEditorSizeIsReplacedInTheStatesDocumentAndTheLengthFollows)
{
    std::vector<char> chunk = chunkOf(kelvaneDocument);
    ASSERT_TRUE(PluginHost::replaceEditorSize(chunk, 1100, 257));
    std::string expected = kelvaneDocument;
    expected.replace(expected.find("750"), 3, "1100");
    expected.replace(expected.find("175"), 3, "257");
    EXPECT_EQ(chunk, chunkOf(expected));
}

TEST(PluginHost, AChunkOfAnotherKindIsLeftAsItIs)
{
    for (const std::string& document : {std::string("<OTHER uiWidthNew=\"1\" uiHeightNew=\"2\" />"),
                                        std::string("<KELVANE currentProgram=\"0\" />")})
    {
        std::vector<char> chunk = chunkOf(document);
        const std::vector<char> before = chunk;
        EXPECT_FALSE(PluginHost::replaceEditorSize(chunk, 1100, 257)) << document;
        EXPECT_EQ(chunk, before);
    }
    std::vector<char> tooShort = {'V', 'C', '2', '!', 100, 0, 0, 0, '<'};
    EXPECT_FALSE(PluginHost::replaceEditorSize(tooShort, 1100, 257));
}

TEST(PluginHost, LoadingRefusesWhatIsNoStereoEffect)
{
    std::string error;
    EXPECT_EQ(PluginHost::load("/no/such/plugin.so", error), nullptr);
    EXPECT_NE(error.find("cannot load /no/such/plugin.so"), std::string::npos) << error;
    EXPECT_EQ(PluginHost::load(NO_ENTRY_POINT_PLUGIN, error), nullptr);
    EXPECT_EQ(error, std::string(NO_ENTRY_POINT_PLUGIN) + " is no VST 2.4 plug-in: it has no entry point VSTPluginMain");
    EXPECT_EQ(PluginHost::load(NULL_EFFECT_PLUGIN, error), nullptr);
    EXPECT_EQ(error, std::string(NULL_EFFECT_PLUGIN) + " gave no effect");
}

TEST(PluginHost, KelvaneKeepsTheEditorSizeInItsState)
{
    std::string error;
    std::unique_ptr<PluginHost> host = PluginHost::load(KELVANE_PLUGIN, error);
    ASSERT_NE(host, nullptr) << error;
    EXPECT_TRUE(host->hasEditor());
    EXPECT_TRUE(host->setEditorSize(1100, 257));
}
