// KLAudioPlugin's state chunk: the exact bytes of a fresh instance, round trips, partial and
// damaged chunks, and the program list's stream form.

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLStateDocument.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <locale.h>
#include <string>

using namespace q1framework;

// glibc keeps the folder list of LOCPATH, which the comma-locale test sets, for the life of the
// process without holding a pointer to it; LeakSanitizer would report it as a leak of ours.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:__argz_add_sep\n";
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

// A chunk around `text`: magic, little-endian length (text and its zero), text, zero.
std::string chunkOf(const std::string& text)
{
    const uint32_t length = static_cast<uint32_t>(text.size() + 1);
    std::string chunk = "VC2!";
    for (int shift = 0; shift < 32; shift += 8)
        chunk += static_cast<char>((length >> shift) & 0xFF);
    return chunk + text + '\0';
}

void load(KLAudioPlugin& plugin, const std::string& bytes)
{
    MemoryStream stream(MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true));
    EXPECT_TRUE(plugin.setState(stream));
}

std::string document(const std::string& rootAttributes, const std::string& program)
{
    return "<KELVANE " + rootAttributes + ">" + program + "</KELVANE>";
}

}  // namespace

TEST(KLAudioPluginState, FreshInstanceWritesTheDocumentedChunk)
{
    KLAudioPlugin plugin;
    const std::string chunk = stateOf(plugin);
    // 0x21324356 little-endian, then the length: 3 lines of text and the terminating zero.
    ASSERT_GE(chunk.size(), 8u);
    EXPECT_EQ(chunk.substr(0, 4), "VC2!");
    const uint32_t length = static_cast<uint8_t>(chunk[4]) | static_cast<uint8_t>(chunk[5]) << 8
                            | static_cast<uint8_t>(chunk[6]) << 16 | static_cast<uint32_t>(static_cast<uint8_t>(chunk[7])) << 24;
    EXPECT_EQ(length, freshText.size() + 1);
    EXPECT_EQ(chunk, chunkOf(freshText));
}

TEST(KLAudioPluginState, SavedChunkLoadsBackValuesToSixDecimalsAndTheEditorSize)
{
    KLAudioPlugin source;
    const float values[] = {0.1234567f, 0.9f, 1.0f, 0.0000004f, 0.25f, 0.75f, 0.333333f};
    for (int index = 0; index < 7; ++index)
        source.setParameter(values[index], index);
    source.setEditorSize(1200, 280);

    KLAudioPlugin copy;
    load(copy, stateOf(source));
    for (int index = 0; index < 7; ++index)
        EXPECT_NEAR(copy.getParameter(index), values[index], 0.000001) << index;
    EXPECT_EQ(copy.getEditorWidth(), 1200);
    EXPECT_EQ(copy.getEditorHeight(), 280);
    EXPECT_TRUE(copy.getProcessor().bypassed);
    EXPECT_EQ(copy.getProcessor().releaseTimeFactor, 2.0f);
    // The same chunk again, and a second save gives the same bytes.
    EXPECT_EQ(stateOf(copy), stateOf(source));
}

TEST(KLAudioPluginState, PartialProgramIsMergedAndAMissingSizeMeansTheDefault)
{
    KLAudioPlugin plugin;
    plugin.setParameter(0.9f, KLParameters::release);
    plugin.setEditorSize(1000, 233);
    load(plugin, chunkOf(document("uiWidth=\"12\" currentProgram=\"3\"", "<Program attack=\"0.25\"/>")));
    EXPECT_EQ(plugin.getParameter(KLParameters::attack), 0.25);
    EXPECT_FLOAT_EQ(plugin.getProcessor().attackTarget, -0.3f);
    EXPECT_EQ(plugin.getParameter(KLParameters::release), static_cast<double>(0.9f));
    EXPECT_EQ(plugin.getProgramName(0), "");
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getEditorHeight(), 175);
    // "currentProgram" is kept but chooses nothing, and is written as 0; "uiWidth" comes back.
    EXPECT_EQ(plugin.getCurrentProgram(), 3);
    const std::string saved = stateOf(plugin);
    EXPECT_NE(saved.find("<KELVANE uiWidth=\"12\" uiHeight=\"0\" uiWidthNew=\"750\" uiHeightNew=\"175\" "
                         "currentProgram=\"0\">"),
              std::string::npos);

    // Values are taken as they stand, also beyond 0..1; a number that is no finite value counts
    // as malformed and leaves its value.
    load(plugin, chunkOf(document("", "<Program gain=\"1.25\" drive=\"nan\" release=\"inf\"/>")));
    EXPECT_EQ(plugin.getParameter(KLParameters::gain), 1.25);
    EXPECT_EQ(plugin.getParameter(KLParameters::drive), 0.0);
    EXPECT_EQ(plugin.getParameter(KLParameters::release), static_cast<double>(0.9f));
}

TEST(KLAudioPluginState, HostileLengthsAndNestingAreReadQuietly)
{
    KLAudioPlugin plugin;
    // A length of 2 GB over a short text: what the stream holds is read, nothing more is asked for.
    std::string chunk = chunkOf(document("", "<Program drive=\"0.5\"/>"));
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
    load(plugin, chunkOf(document("uiWidthNew=\"0\" uiHeightNew=\"40000\"", "")));
    EXPECT_EQ(plugin.getEditorWidth(), 750);
    EXPECT_EQ(plugin.getEditorHeight(), 175);
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

TEST(KLAudioPluginState, ProgramStreamFormHoldsTheProgramAloneAndMergesOnReading)
{
    KLAudioPlugin source;
    source.setParameter(0.125f, KLParameters::gain);
    MemoryStream stream;
    ASSERT_TRUE(source.writeProgram(0, stream));
    stream.setPosition(0);
    const std::string written = stream.readString().getCString();
    EXPECT_EQ(written.rfind("<KELVANE>\n    <Program name=\"init0\" attack=\"0.500000\"", 0), 0u);
    EXPECT_NE(written.find("gain=\"0.125000\""), std::string::npos);

    KLAudioPlugin target;
    stream.setPosition(0);
    ASSERT_TRUE(target.readProgram(0, stream));
    EXPECT_EQ(target.getParameter(KLParameters::gain), 0.125);
    // The stream form has no magic: a state chunk is not a program.
    MemoryStream chunk;
    source.getState(chunk);
    chunk.setPosition(0);
    KLAudioPlugin untouched;
    untouched.readProgram(0, chunk);
    EXPECT_EQ(untouched.getParameter(KLParameters::gain), 0.5);
}
