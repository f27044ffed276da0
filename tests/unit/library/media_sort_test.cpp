// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/library/media_sort.h"

namespace {

IKImageItemPtr named(const QString& name) {
    auto item = std::make_shared<IKImageItem>();
    item->fileName = name;
    return item;
}

QStringList namesAfterSort(const QStringList& names, bool flag) {
    IKImageItemList items;
    for (const QString& n : names) items.append(named(n));
    sortMediaItems(items, [flag](const IKImageItem& a, const IKImageItem& b) {
        return compareMediaItems(a, b, MediaColumn::Name, flag);
    });
    QStringList out;
    for (const auto& i : items) out.append(i->fileName);
    return out;
}

}  // namespace

TEST(MediaSort, TextColumnsFlagSetIsDescendingWithEmptyAndPunctuationLast) {
    const QStringList names{"beta", "", "Alpha", "_under", "gamma", "émile"};
    EXPECT_EQ(namesAfterSort(names, true),
              (QStringList{"gamma", "émile", "beta", "Alpha", "_under", ""}));
    EXPECT_EQ(namesAfterSort(names, false).mid(2),
              (QStringList{"Alpha", "beta", "émile", "gamma"}));
    // Flag clear: empty and punctuated values come first.
    const QStringList first = namesAfterSort(names, false).mid(0, 2);
    EXPECT_TRUE(first.contains("") && first.contains("_under"));
}

TEST(MediaSort, TextComparisonNeverAnswersEqual) {
    EXPECT_EQ(compareMediaTexts("same", "same", true), 1);
    EXPECT_EQ(compareMediaTexts("same", "same", false), -1);
    EXPECT_EQ(compareMediaTexts("Same", "same", false), -1);
    // Both empty: the first one's rule applies.
    EXPECT_EQ(compareMediaTexts("", "", true), 1);
    EXPECT_EQ(compareMediaTexts("", "", false), -1);
    // Diacritics and case are ignored.
    EXPECT_EQ(compareMediaTexts("Émile", "emile", false), -1);
    EXPECT_EQ(compareMediaTexts("zeta", "Émile", false), 1);
    // A punctuated first value goes to the empty side either way round.
    EXPECT_EQ(compareMediaTexts("(a)", "b", true), 1);
    EXPECT_EQ(compareMediaTexts("b", "(a)", true), -1);
    EXPECT_EQ(compareMediaTexts("(a)", "b", false), -1);
}

TEST(MediaSort, NumberAndDateColumnsFlagSetIsAscending) {
    IKImageItem a, b;
    a.fileSizeBytes = 999;
    b.fileSizeBytes = 5000000;
    a.fileduration = 10;
    b.fileduration = 20;
    a.fileCreateDate = QDateTime(QDate(2020, 1, 1), QTime(0, 0));
    b.fileCreateDate = QDateTime(QDate(2021, 1, 1), QTime(0, 0));
    for (MediaColumn column : {MediaColumn::Size, MediaColumn::Time, MediaColumn::Date}) {
        SCOPED_TRACE(mediaColumnTitle(column));
        EXPECT_EQ(compareMediaItems(a, b, column, true), -1);
        EXPECT_EQ(compareMediaItems(a, b, column, false), 1);
        EXPECT_EQ(compareMediaItems(a, a, column, false), 0);
    }
    // A missing date compares equal rather than failing.
    b.fileCreateDate = QDateTime();
    EXPECT_EQ(compareMediaItems(a, b, MediaColumn::Date, true), 0);
}

TEST(MediaSort, SortSurvivesInconsistentComparatorsAndKeepsEveryItem) {
    IKImageItemList items;
    for (int i = 0; i < 97; ++i) items.append(named(QString::number(i % 5)));
    int calls = 0;
    sortMediaItems(items,
                   [&calls](const IKImageItem&, const IKImageItem&) { return (++calls % 3) - 1; });
    EXPECT_EQ(items.size(), 97);
    for (const auto& i : items) ASSERT_TRUE(i);
}
