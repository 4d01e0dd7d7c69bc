#pragma once

#include "foundation/string/String.h"

#include <string>

// The two empty forms of String are told apart by toUTF32, which answers null only for the null
// handle.
inline bool isNullHandle(const q1framework::String& text)
{
    return text.toUTF32() == nullptr;
}

inline bool isEmptyTextHandle(const q1framework::String& text)
{
    return text.isEmpty() && text.toUTF32() != nullptr;
}

// The text's bytes, for exact comparisons that print readably on failure.
inline std::string bytesOf(const q1framework::String& text)
{
    return std::string(text.getCString());
}
