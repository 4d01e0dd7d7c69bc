#pragma once

// Bytes: shared memory blocks, the stream interface with its wire forms, streams over memory and
// files, and byte-order conversion.
#include "foundation/memory/ByteOrder.h"
#include "foundation/memory/FileStream.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "foundation/memory/Stream.h"
