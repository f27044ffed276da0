#include "core/batch/date_check.h"

#include "core/common/dates.h"

bool CheckDateFormatWithDateString(const QString& text) {
    return dateFromText(text).isValid();
}
