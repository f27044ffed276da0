#pragma once

// Metadata items belong to the library floor, which every format reads into.
#include "core/library/metadata_item.h"
