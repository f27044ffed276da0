// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/media_sort.h"

#include "core/library/formatters.h"

namespace {

// Folds case and diacritics: decomposed, combining marks removed, case-folded.
QString folded(const QString& text) {
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const QChar::Category cat = c.category();
        if (cat == QChar::Mark_NonSpacing || cat == QChar::Mark_SpacingCombining ||
            cat == QChar::Mark_Enclosing) {
            continue;
        }
        out += c;
    }
    return out.toCaseFolded();
}

bool startsWithPunctuation(const QString& text) {
    return !text.isEmpty() && text.front().isPunct();
}

template <typename T>
int compareNumbers(T a, T b, bool flag) {
    if (a == b) return 0;
    const int ascending = a > b ? 1 : -1;
    return flag ? ascending : -ascending;
}

}  // namespace

const char* mediaColumnIdentifier(MediaColumn column) {
    static const char* const ids[] = {"Name", "Size", "Time", "Type", "Artist", "Album", "Date"};
    return ids[static_cast<int>(column)];
}

const char* mediaColumnTitle(MediaColumn column) {
    // Shown translated by the table (context "MediaTableModel").
    static const char* const titles[] = {
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Name"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Size"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Length"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Kind"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Artist"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Album"),
        QT_TRANSLATE_NOOP("MediaTableModel", "Media Created Date")};
    return titles[static_cast<int>(column)];
}

QString mediaCellText(const IKImageItem& item, MediaColumn column) {
    switch (column) {
        case MediaColumn::Name:
            return item.fileName;
        case MediaColumn::Size:
            return item.fileSize;
        case MediaColumn::Time:
            return item.fileduratStr;
        case MediaColumn::Type:
            return item.fileType;
        case MediaColumn::Artist:
            return item.fileArist;
        case MediaColumn::Album:
            return item.fileAblumName;
        case MediaColumn::Date:
            return item.fileCreateDateStr;
    }
    return {};
}

int compareMediaTexts(const QString& a, const QString& b, bool flag) {
    const int first = flag ? 1 : -1;  // the first value goes after the second
    if (a.isEmpty()) return first;
    if (b.isEmpty()) return -first;
    const bool pa = startsWithPunctuation(a);
    const bool pb = startsWithPunctuation(b);
    if (pa && !pb) return first;
    if (pb && !pa) return -first;
    const int order = folded(a).compare(folded(b));
    if (order > 0) return flag ? -1 : 1;
    return flag ? 1 : -1;  // smaller or equal: never answers equal
}

bool mediaItemMatches(const IKImageItem& item, const QString& filter) {
    if (filter.isEmpty()) return true;
    const QString wanted = folded(filter);
    for (const MediaColumn column :
         {MediaColumn::Name, MediaColumn::Type, MediaColumn::Artist, MediaColumn::Album})
        if (folded(mediaCellText(item, column)).contains(wanted)) return true;
    return false;
}

int compareMediaItems(const IKImageItem& a, const IKImageItem& b, MediaColumn column, bool flag,
                      SizeSortKey sizeKey) {
    switch (column) {
        case MediaColumn::Size:
            if (sizeKey == SizeSortKey::ByteCount)
                return compareNumbers(a.fileSizeBytes, b.fileSizeBytes, flag);
            return compareNumbers(sizeFormString(a.fileSize), sizeFormString(b.fileSize), flag);
        case MediaColumn::Time:
            return compareNumbers(a.fileduration, b.fileduration, flag);
        case MediaColumn::Date: {
            // A record without a date compares equal to any other.
            if (!a.fileCreateDate.isValid() || !b.fileCreateDate.isValid()) return 0;
            return compareNumbers(a.fileCreateDate.toMSecsSinceEpoch(),
                                  b.fileCreateDate.toMSecsSinceEpoch(), flag);
        }
        default:
            return compareMediaTexts(mediaCellText(a, column), mediaCellText(b, column), flag);
    }
}

void sortMediaItems(IKImageItemList& items,
                    const std::function<int(const IKImageItem&, const IKImageItem&)>& cmp) {
    // Bottom-up merge sort: every index is checked against its run's end.
    const qsizetype n = items.size();
    IKImageItemList buffer(n);
    for (qsizetype width = 1; width < n; width *= 2) {
        for (qsizetype lo = 0; lo < n; lo += 2 * width) {
            const qsizetype mid = std::min(lo + width, n);
            const qsizetype hi = std::min(lo + 2 * width, n);
            qsizetype i = lo, j = mid, k = lo;
            while (i < mid && j < hi)
                buffer[k++] = cmp(*items[i], *items[j]) <= 0 ? items[i++] : items[j++];
            while (i < mid) buffer[k++] = items[i++];
            while (j < hi) buffer[k++] = items[j++];
        }
        items.swap(buffer);
    }
}
