// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// A file-system error number in words a user understands: "the disk is
// full", "permission denied", ... (never empty).
QString plainFileError(int error);
