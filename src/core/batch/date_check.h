// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Whether a date text reads with "yyyy:MM:dd HH:mm:ss" or, failing that, with
// "yyyy-MM-dd HH:mm:ss".
bool CheckDateFormatWithDateString(const QString& text);
