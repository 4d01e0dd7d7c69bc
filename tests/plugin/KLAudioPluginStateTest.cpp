// KLAudioPlugin's state chunk: the exact bytes of a fresh instance, round trips, partial and
// damaged chunks, and the program list's stream form.

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLStateDocument.h"

#include "support/StateChunk.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <locale.h>
#include <string>

using namespace q1framework;

// glibc's newlocale builds the folder list of LOCPATH, which the comma-locale test sets, and never
// frees it; LeakSanitizer would report it as a leak of ours. The function that allocates it is
// "__argz_add_sep" where glibc's debug symbols are installed and its public alias "argz_add_sep"
// where they are not; a suppression matches any function whose name contains its pattern.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:argz_add_sep\n";
}

namespace
{
const std::string freshText =
    "<KELVANE uiWidth=\"0\" uiHeight=\"0\" uiWidthNew=\"750\" uiHeightNew=\"175\" currentProgram=\"0\">\n"
    "    <Program name=\"init0\" attack=\"0.500000\" release=\"0.500000\" bypass=\"0.000000\" gain=\"0.500000\" "
    "attackTime=\"0.500000\" releaseTime=\"0.500000\" drive=\"0.000000\" />\n"
    "</KELVANE>\n";

std::string stateOf(KLAudioPlugin& plugin)
{
    MemoryStream stream;
    EXPECT_TRUE(plugin.getState(stream));
    return std::string(static_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

void load(KLAudioPlugin& plugin, const std::string& bytes)
{
    MemoryStream stream(MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true));
    EXPECT_TRUE(plugin.setState(stream));
}

}  // namespace

TEST(KLAudioPluginState, FreshInstanceWritesTheDocumentedChunkAndAPartialProgramIsMerged)
{
    KLAudioPlugin plugin;
    // "VC2!" (0x21324356 little-endian), the length of the 3 lines and their terminating zero.
    EXPECT_EQ(stateOf(plugin), chunkOf(freshText));
    plugin.setEditorSize(1000, 233);
    plugin.setParameter(0.75f, KLParameters::drive);
    load(plugin, chunkOf("<KELVANE uiWidth=\"12\" currentProgram=\"3\"><Program attack=\"0.25\"/></KELVANE>"));
    EXPECT_FLOAT_EQ(plugin.getProcessor().attackTarget, -0.3f);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.75);  // the values it lacks stay
    EXPECT_EQ(plugin.getProgramName(0), "");
    // Without "uiWidthNew" the editor has its default size. "currentProgram" is kept but chooses
    // nothing, and is written as 0; "uiWidth" comes back.
    EXPECT_EQ(plugin.getCurrentProgram(), 3);
    EXPECT_NE(stateOf(plugin).find("<KELVANE uiWidth=\"12\" uiHeight=\"0\" uiWidthNew=\"750\" uiHeightNew=\"175\" "
                                   "currentProgram=\"0\">"),
              std::string::npos);
}

TEST(KLAudioPluginState, HostileLengthsNestingAndAStateChunkReadAsAProgramAreReadQuietly)
{
    KLAudioPlugin plugin;
    // A length of 2 GB over a short text: what the stream holds is read, nothing more is asked for.
    std::string chunk = chunkOf("<KELVANE><Program drive=\"0.5\"/></KELVANE>");
    chunk[4] = chunk[5] = chunk[6] = '\xFF';
    chunk[7] = '\x7F';
    load(plugin, chunk);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.5);

    // Nesting far deeper than a host thread's stack could parse is refused before parsing.
    std::string deep = "<KELVANE uiWidthNew=\"1300\">";
    for (int level = 0; level < 200000; ++level)
        deep += "<a>";
    load(plugin, chunkOf(deep));
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.5);

    // Editor sizes a host's rectangle cannot hold count as missing.
    load(plugin, chunkOf("<KELVANE uiWidthNew=\"0\" uiHeightNew=\"40000\"></KELVANE>"));
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getEditorHeight(), 175);

    // The program stream form has no magic: a state chunk read as a program changes nothing.
    MemoryStream state;
    plugin.getState(state);
    state.setPosition(0);
    KLAudioPlugin untouched;
    untouched.readProgram(0, state);
    EXPECT_EQ(untouched.getParameter(KLParameters::drive), 0.0);
}

TEST(KLAudioPluginState, AChunkOfAHundredThousandAttributesIsRefusedBeforeParsing)
{
    // Each attribute the parser takes is compared with all it has taken: a hundred thousand of
    // them, a chunk of 1.3 MB, would hold the host's thread for most of a minute.
    KLAudioPlugin plugin;
    std::string text = "<KELVANE uiWidthNew=\"1300\"><Program drive=\"0.5\"";
    for (int attribute = 0; attribute < 100000; ++attribute)
        text += " a" + std::to_string(attribute) + "=\"1\"";
    load(plugin, chunkOf(text + "/></KELVANE>"));
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.0);
}

TEST(KLAudioPluginState, AChunkOfAMegabyteInOneAttributeIsRefusedBeforeParsing)
{
    KLAudioPlugin plugin;
    const std::string name(1 << 20, 'k');
    load(plugin, chunkOf("<KELVANE uiWidthNew=\"1300\"><Program name=\"" + name + "\" drive=\"0.5\"/></KELVANE>"));
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.0);
    EXPECT_EQ(plugin.getProgramName(0).getCString(), std::string("init0"));
}

TEST(KLAudioPluginState, AChunkAtTheLimitsOfSizeAndAttributesStillLoads)
{
    // Room for what a future version may add: a long name and dozens of attributes.
    KLAudioPlugin plugin;
    std::string text = "<KELVANE uiWidthNew=\"1300\"><Program name=\"" + std::string(60000, 'k') + "\" drive=\"0.5\"";
    for (int attribute = 0; attribute < KLStateDocument::maximumAttributes - 3; ++attribute)
        text += " a" + std::to_string(attribute) + "=\"1\"";
    text += "/></KELVANE>";
    ASSERT_LE(text.size() + 1, static_cast<std::size_t>(KLStateDocument::maximumTextBytes));
    load(plugin, chunkOf(text));
    EXPECT_EQ(plugin.getEditorWidth(), 1300);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.5);
}

TEST(KLAudioPluginState, NumbersAreWrittenAndReadTheSameInAHostThatUsesACommaLocale)
{
    // The build makes the locale when the system has its sources (Debian's "locales" package).
    setenv("LOCPATH", COMMA_LOCALE_FOLDER, 1);
    locale_t comma = newlocale(LC_ALL_MASK, "de_DE.UTF-8", static_cast<locale_t>(0));
    if (comma == static_cast<locale_t>(0))
        GTEST_SKIP() << "no de_DE.UTF-8 locale: install Debian's locales package";
    const locale_t previous = uselocale(comma);
    KLAudioPlugin plugin;
    plugin.setParameter(0.25f, KLParameters::attack);
    const std::string chunk = stateOf(plugin);
    KLAudioPlugin copy;
    load(copy, chunk);
    uselocale(previous);
    freelocale(comma);
    EXPECT_NE(chunk.find("attack=\"0.250000\""), std::string::npos);
    EXPECT_EQ(copy.getParameter(KLParameters::attack), 0.25);
}
