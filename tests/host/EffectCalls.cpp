#include "EffectCalls.h"

#include <cstdio>

using namespace q1framework;

namespace EffectCalls
{
void processStereo(AEffect* effect, std::vector<float>& left, std::vector<float>& right)
{
    float* channels[2] = {left.data(), right.data()};
    effect->processReplacing(effect, channels, channels, static_cast<VstInt32>(left.size()));
}

std::vector<char> getChunk(AEffect* effect)
{
    void* data = nullptr;
    const VstIntPtr size = effect->dispatcher(effect, effGetChunk, 0, 0, &data, 0.0f);
    if (data == nullptr || size <= 0)
        return {};
    return std::vector<char>(static_cast<const char*>(data), static_cast<const char*>(data) + size);
}

VstIntPtr setChunk(AEffect* effect, std::vector<char> bytes)
{
    return effect->dispatcher(effect, effSetChunk, 0, static_cast<VstIntPtr>(bytes.size()), bytes.data(), 0.0f);
}

std::string chunkText(AEffect* effect)
{
    const std::vector<char> chunk = getChunk(effect);
    if (chunk.size() < 9)
        return {};
    return std::string(chunk.begin() + 8, chunk.end() - 1);
}

std::set<std::string> exportedSymbols(const char* path)
{
    std::set<std::string> symbols;
    const std::string command = std::string("nm -D --defined-only ") + path;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return symbols;
    char line[512];
    while (std::fgets(line, sizeof line, pipe) != nullptr)
    {
        char name[512];
        if (std::sscanf(line, "%*s %*s %511s", name) == 1)
            symbols.insert(name);
    }
    pclose(pipe);
    return symbols;
}
}  // namespace EffectCalls
