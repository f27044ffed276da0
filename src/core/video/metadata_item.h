// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Metadata items belong to the library floor, which every format reads into.
#include "core/library/metadata_item.h"
