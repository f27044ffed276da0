// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "core/batch/batch_rename.h"
#include "core/common/file_dates.h"

namespace {

IKImageItemPtr touch(const QString& folder, const QString& name) {
    QFile f(folder + "/" + name);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(name.toUtf8());
    f.close();
    const QDateTime when(QDate(2001, 2, 3), QTime(4, 5, 6));
    setFileDates(f.fileName(), when, when);
    auto item = std::make_shared<IKImageItem>();
    item->filePath = f.fileName();
    item->fileName = name;
    return item;
}

RenameOptions customText(const QString& text, bool number) {
    RenameOptions o;
    o.customText = text;
    o.startNumber = number;
    return o;
}

}  // namespace

TEST(BatchRename, NamesFromTextNumbersTagsAndLayouts) {
    const IKImageItem none;
    const std::pair<int, const char*> numbers[] = {
        {1, "Trip000001"},    {9, "Trip000009"},      {10, "Trip000010"},
        {99, "Trip000099"},   {100, "Trip000100"},    {999, "Trip000999"},
        {1000, "Trip001000"}, {100000, "Trip100000"}, {1234567, "Trip1234567"}};
    for (const auto& [n, want] : numbers)
        EXPECT_EQ(newBaseName(none, customText("Trip", true), n), want);
    EXPECT_EQ(newBaseName(none, customText("Trip", false), 5), "Trip");

    IKImageItem item;
    item.fileName = "old.name.jpg";
    item.fileTitle = "Sunset (Final)";
    item.fileArist = "Smith, Ann";
    item.fileDescription = "d";
    item.fileCopyright = "c";
    item.fileKeyWords = "k";
    item.fileMake = "Canon";
    item.fileModel = "R5";
    item.filePixWidth = 64;
    item.filepixHeigh = 48;
    item.shootDateStr = "2020:01:02 03:04:05";
    RenameOptions t;
    t.useCustomName = false;
    t.templateText = renameTemplateTags().join(" ");
    EXPECT_EQ(newBaseName(item, t, 1),
              "old.name Sunset Final Smith Ann d c 64 x 48 k Canon R5 2020:01:02 03:04:05");
    t.replaceInvalid = true;
    t.templateText = "{Camera Make} {Artist} {Camera Date} a*b?";
    t.sequence = true;
    t.suffix = "_x";
    item.fileArist.clear();  // an empty tag leaves no double blank
    EXPECT_EQ(newBaseName(item, t, 7), "Canon 2020_01_02 03_04_05 a_b_ 000007_x");
    t = customText("a/b\x01:c", false);
    EXPECT_EQ(newBaseName(item, t, 1), "ab\x01:c");
    t.replaceInvalid = true;
    EXPECT_EQ(newBaseName(item, t, 1), "a_b__c");
    EXPECT_EQ(newBaseName(item, customText("..", false), 1), "");
    EXPECT_EQ(insertRenameTag("x", "{Title}", true), "{Title} x");
    EXPECT_EQ(insertRenameTag("x", "{Title}", false), "x {Title}");

    const char* const layouts[] = {
        "01:02:2020 03:04:05", "02:01:2020 03:04:05", "2020:01:02 03:04:05", "20200102 030405",
        "2020_01_02 03.04.05", "2020_01_02",          "01022020 030405",     "01_02_2020 03.04.05",
        "02012020 030405",     "02_01_2020 03.04.05"};
    const QStringList titles = renameDateFormatTitles();
    ASSERT_EQ(titles.size(), 10);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(cameraDateInLayout("2020:01:02 03:04:05", titles[i]), layouts[i]) << i;
    EXPECT_EQ(cameraDateInLayout("2020:01:02 03:04:05", "Please Choose Date format"),
              "2020:01:02 03:04:05");
    EXPECT_EQ(cameraDateInLayout("unknown", titles[0]), "unknown");
}

TEST(BatchRename, MovesWithCollisionsKeepsDatesAndUndoes) {
    QTemporaryDir dir;
    const QString d = dir.path();
    IKImageItemList items{touch(d, "a.jpg"), touch(d, "b.jpg"), touch(d, "c.jpg"),
                          touch(d, "noext")};
    touch(d, "Same 2.jpg");  // the second file's fallback name is taken
    const QList<RenameStep> preview = previewRename(items, customText("Same", false));
    const QList<RenameStep> done = renameItems(items, customText("Same", false));
    ASSERT_EQ(done.size(), 4);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(preview[i].newPath, done[i].newPath) << i;
    EXPECT_EQ(done[0].newPath, d + "/Same.jpg");
    EXPECT_FALSE(done[1].ok());  // Same.jpg and "Same 2.jpg" taken: b.jpg stays
    EXPECT_TRUE(QFile::exists(d + "/b.jpg"));
    EXPECT_EQ(done[2].newPath, d + "/Same 3.jpg");
    EXPECT_EQ(done[3].newPath, d + "/Same");
    EXPECT_EQ(items[2]->fileName, "Same 3.jpg");
    EXPECT_EQ(items[2]->filePath, d + "/Same 3.jpg");
    EXPECT_EQ(readFileDates(d + "/Same 3.jpg").modification,
              QDateTime(QDate(2001, 2, 3), QTime(4, 5, 6)));
    QFile same(d + "/Same.jpg");
    ASSERT_TRUE(same.open(QIODevice::ReadOnly));
    EXPECT_EQ(same.readAll(), "a.jpg");  // nothing was overwritten

    const QString journal = d + "/journal/last.json";
    ASSERT_TRUE(saveRenameJournal(journal, done));
    const QList<RenameStep> undone = undoRename(loadRenameJournal(journal), items);
    EXPECT_EQ(undone.size(), 3);
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "noext", "Same 2.jpg"})
        EXPECT_TRUE(QFile::exists(d + "/" + name)) << name;
    EXPECT_EQ(items[0]->fileName, "a.jpg");
    EXPECT_EQ(QDir(d).entryList(QDir::Files).size(), 5);
}

TEST(BatchRename, NumbersPastAThousandFilesAndCancels) {
    QTemporaryDir dir;
    IKImageItemList items;
    for (int i = 0; i < 1001; ++i) items << touch(dir.path(), QString("f%1.txt").arg(i));
    const QList<RenameStep> done = renameItems(items, customText("N", true));
    EXPECT_EQ(done.last().newPath, dir.path() + "/N001001.txt");
    EXPECT_EQ(done[998].newPath, dir.path() + "/N000999.txt");
    const QList<RenameStep> stopped =
        renameItems(items, customText("M", true), [](int done, int) { return done < 3; });
    EXPECT_EQ(stopped.size(), 3);
    EXPECT_TRUE(QFile::exists(dir.path() + "/N000004.txt"));
}
