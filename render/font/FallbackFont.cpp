#include "render/font/FallbackFont.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "render/font/FontEngine.h"
#include "render/font/FontFace.h"
#include "render/font/SystemFontPaths.h"

namespace q1framework
{

namespace
{
FallbackFont* instance = nullptr;

constexpr double fallbackSize = 10.0;
}  // namespace

const Font& Font::getFallback() { return FallbackFont::getInstance(); }

FallbackFont& FallbackFont::getInstance()
{
    if (!instance)
    {
        // The engine comes first, so that it outlives this font at shutdown.
        FontEngine* engine = FontEngine::getInstance();
        const MemoryBlock data = MemoryBlock::loadFromFile(getFallbackFontPath());
        instance = new FallbackFont(engine->loadFace(data));
    }
    return *instance;
}

FallbackFont* FallbackFont::getInstanceWithoutCreating() { return instance; }

FallbackFont::FallbackFont(FontFace* face)
    : Font(face, fallbackSize, true, true, 0, 0, 0.0), ownedFace(face)
{
}

FallbackFont::~FallbackFont()
{
    delete ownedFace;
    if (instance == this)
        instance = nullptr;
}

}  // namespace q1framework
