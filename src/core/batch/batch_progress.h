// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

// Told after each file of a batch (`done` of `total`); answers false to stop
// the batch before the next file. Empty: the batch runs to its end.
using BatchProgress = std::function<bool(int done, int total)>;

// Calls `progress` when there is one; false when the batch is to stop.
inline bool reportProgress(const BatchProgress& progress, int done, int total) {
    return !progress || progress(done, total);
}
