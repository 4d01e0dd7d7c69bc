#pragma once

// Text: the String handle, UTF-8 decoding and encoding, and text ordering.
#include "foundation/string/Comparator.h"
#include "foundation/string/String.h"
#include "foundation/string/StringComparator.h"
#include "foundation/string/Utf8Cursor.h"
#include "foundation/string/Utf8Encoder.h"
