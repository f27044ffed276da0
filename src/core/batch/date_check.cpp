// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/date_check.h"

#include "core/common/dates.h"

bool CheckDateFormatWithDateString(const QString& text) {
    return dateFromText(text).isValid();
}
