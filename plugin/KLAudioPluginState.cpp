// KLAudioPlugin's state: the chunk that a host stores, and the program list of the chunk format.

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/Stream.h"
#include "foundation/runtime/ScopedLock.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLStateDocument.h"

#include <cstring>

using q1framework::MemoryBlock;
using q1framework::ScopedLock;
using q1framework::Stream;
using q1framework::String;

namespace
{
// The chunk's magic, written and compared as its four bytes; as a little-endian 32-bit integer
// it is 0x21324356.
constexpr char chunkMagic[4] = {'V', 'C', '2', '!'};

// The text behind the magic and the length: at most `length` bytes, ending at the first zero
// byte. A length beyond what the stream holds reads what is there, instead of allocating what the
// length asks for. More text than any document of ours may hold is not read at all.
String readText(Stream& stream, int32_t length)
{
    const int64_t available = stream.getRemainingBytes();
    const int64_t count = length < available ? length : available;
    if (count < 1 || count > KLStateDocument::maximumTextBytes)
        return String();
    MemoryBlock text(count);
    if (text.getData() == nullptr)
        return String();
    const int64_t read = stream.read(text.getData(), count);
    return String(static_cast<const char*>(text.getData()), 0, static_cast<unsigned>(read > 0 ? read : 0));
}
}  // namespace

bool KLAudioPlugin::getState(Stream& stream)
{
    KLStateDocument::Contents contents;
    {
        const ScopedLock lock(getMutex());
        contents.uiWidth = uiWidth;
        contents.uiHeight = uiHeight;
        contents.uiWidthNew = uiWidthNew;
        contents.uiHeightNew = uiHeightNew;
        contents.programName.copyFrom(program.name);
        for (int index = 0; index < KLParameters::count; ++index)
            contents.values[index] = program.getValue(index);
    }
    const String text = KLStateDocument::print(contents);
    const int64_t length = static_cast<int64_t>(text.getBytesCount()) + 1;
    stream.write(chunkMagic, sizeof chunkMagic);
    stream.writeInt32(static_cast<int32_t>(length));
    stream.write(text.getCString(), length);
    return true;
}

// The chunk is read and parsed on the calling thread without the lock; only the values found are
// applied under it, so the audio thread waits for a few stores and never for the parser.
bool KLAudioPlugin::setState(Stream& stream)
{
    char magic[sizeof chunkMagic] = {};
    stream.read(magic, sizeof magic);
    const int32_t length = stream.readInt32();
    const String text = std::memcmp(magic, chunkMagic, sizeof magic) == 0 ? readText(stream, length) : String();
    KLStateDocument::Reading reading = KLStateDocument::parse(text);
    if (reading.isKelvane)
    {
        const ScopedLock lock(getMutex());
        if (reading.uiWidth)
            uiWidth = *reading.uiWidth;
        if (reading.uiHeight)
            uiHeight = *reading.uiHeight;
        // A chunk without the present size opens the editor at the default size, not at the size
        // it has now.
        uiWidthNew = reading.uiWidthNew.value_or(KLStateDocument::defaultEditorWidth);
        uiHeightNew = reading.uiHeightNew.value_or(KLStateDocument::defaultEditorHeight);
        // Stored, and written back as 0: with one program nothing is chosen by it.
        if (reading.currentProgram)
            currentProgram = *reading.currentProgram;
        mergeProgram(reading.program);
    }
    // Also after bad input: the processor and the editors are in step with the stored values.
    applyProgram();
    return true;
}

void KLAudioPlugin::setCurrentProgram(int index)
{
    const ScopedLock lock(getMutex());
    currentProgram = index;
    markAllEditors();
}

int KLAudioPlugin::getCurrentProgram()
{
    const ScopedLock lock(getMutex());
    return currentProgram;
}

String KLAudioPlugin::getProgramName(int)
{
    String name;
    const ScopedLock lock(getMutex());
    name.copyFrom(program.name);
    return name;
}

bool KLAudioPlugin::writeProgram(int, Stream& stream)
{
    String name;
    float values[KLParameters::count];
    {
        const ScopedLock lock(getMutex());
        name.copyFrom(program.name);
        for (int index = 0; index < KLParameters::count; ++index)
            values[index] = program.getValue(index);
    }
    stream.writeString(KLStateDocument::printProgram(name, values));
    return true;
}

bool KLAudioPlugin::readProgram(int, Stream& stream)
{
    KLStateDocument::ProgramReading reading = KLStateDocument::parseProgram(stream.readString());
    {
        const ScopedLock lock(getMutex());
        mergeProgram(reading);
    }
    applyProgram();
    return true;
}

void KLAudioPlugin::mergeProgram(KLStateDocument::ProgramReading& reading)
{
    if (!reading.present)
        return;
    // The old name leaves with the reading, so its buffer is freed after the lock is given up.
    program.name.swap(reading.name);
    for (int index = 0; index < KLParameters::count; ++index)
        if (reading.values[index])
            program.setValue(index, *reading.values[index]);
}
