#pragma once

// Values and containers: the tagged Var, the growable Array and the small SortedMap.
#include "foundation/var/Array.h"
#include "foundation/var/SortedMap.h"
#include "foundation/var/Var.h"
