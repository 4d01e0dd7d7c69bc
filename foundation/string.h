#pragma once

// Text: the String handle, UTF-8 decoding and encoding, text ordering and four-character codes.
#include "foundation/string/Comparator.h"
#include "foundation/string/FourCharacterCode.h"
#include "foundation/string/String.h"
#include "foundation/string/StringComparator.h"
#include "foundation/string/Utf8Cursor.h"
#include "foundation/string/Utf8Encoder.h"
