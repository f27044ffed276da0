// SPDX-License-Identifier: GPL-3.0-or-later
// The date stamp: the date text per layout, the corner the text lands in,
// and the copy (JPEG data, upright, the photo's metadata and dates).
#include <QImageReader>
#include <QTimeZone>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/photo/photo_stamp.h"
#include "photo_fixture.h"

namespace {

// A dark 960 x 640 picture, stored turned (orientation 6: 640 x 960 upright).
QString stampJpeg() {
    const QString base = fixtureDir() + QStringLiteral("/stamp-base.jpg");
    QImage picture(960, 640, QImage::Format_RGB888);
    picture.fill(QColor(20, 30, 40));
    if (!QFileInfo::exists(base)) picture.save(base, "JPEG", 95);
    return exiftoolFixture(
        QStringLiteral("stamp.jpg"), base,
        QStringList{"-Orientation#=6", "-DateTimeOriginal=2021:03:04 05:06:07",
                    "-CreateDate=2021:03:04 05:06:07", "-Artist=Ann", "-GPSLatitude=48.5",
                    "-GPSLatitudeRef=N", "-XMP-tiff:Orientation#=6"});
}

// The share of bright pixels that lie in the given quadrant.
double brightShare(const QImage& image, bool right, bool lower) {
    int inside = 0, all = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) > 160) {
                ++all;
                inside += (x >= image.width() / 2) == right && (y >= image.height() / 2) == lower;
            }
    return all ? double(inside) / all : 0;
}

}  // namespace

class PhotoStamp : public PhotoTest {
protected:
    static void SetUpTestSuite() { ensureGuiApplication(); }
};

TEST_F(PhotoStamp, DateTextPerLayout) {
    const struct {
        const char *text, *layout, *expected;
    } cases[] = {
        {"2021:03:04 05:06:07", "MM/DD/YYYY HH:MM", "03/04/2021 05:06:07"},
        {"2021:03:04 05:06:07", "DD/MM/YYYY HH:MM", "04/03/2021 05:06:07"},
        {"2021:03:04 05:06:07", "YYYY/MM/DD HH:MM", "2021/03/04 05:06:07"},
        {"2021-03-04 05:06:07", "DD/MM/YYYY HH:MM", "2021-03-04 05:06:07"},
        {"2021:03:04 05:06:07 +0000", "YYYY/MM/DD HH:MM", "2021/03/04 05:06:07"},
        {"2021:03:04 05:06:07 +0000", "", "2021:03:04 05:06:07 +0000"},
        {"2021:03:04", "MM/DD/YYYY HH:MM", "2021:03:04"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(stampDateText(c.text, c.layout), c.expected) << c.text << " " << c.layout;
    // Without both Exif dates: the creation date's description, date and time.
    PhotoSource noDates;
    const QDateTime created(QDate(2020, 1, 2), QTime(3, 4, 5), QTimeZone::utc());
    EXPECT_EQ(stampDateSource(noDates, created), "2020-01-02 03:04:05");
}

TEST_F(PhotoStamp, LandsInTheCornerOfTheUprightCopy) {
    const QString source = stampJpeg();
    ASSERT_FALSE(source.isEmpty());
    const struct {
        const char* position;
        bool right, lower;
    } corners[] = {{"Lower left corner", false, true},
                   {"Lower right corner", true, true},
                   {"Upper left corner", false, false},
                   {"Upper right corner", true, false}};
    for (const auto& c : corners) {
        StampStyle style;
        style.currentFontname = QStringLiteral("DejaVu Sans");
        style.currentFontSize = 24;
        style.postion = c.position;
        OutputBatch batch;
        const PhotoWriteResult r = AddDateOnPhotoAction(photoAt(source), style, storage, batch);
        ASSERT_TRUE(r.ok()) << r.reason.toStdString();
        EXPECT_EQ(QFileInfo(r.outputPath).fileName(), "stamp_date.jpg");
        const QImage out(r.outputPath);
        EXPECT_EQ(out.size(), QSize(640, 960));
        EXPECT_GT(brightShare(out, c.right, c.lower), 0.9) << c.position;
    }
    const QJsonObject tags = tagsOf(storage.storagelocation + "/stamp_date.jpg");
    const QJsonObject expected{{"IFD0:Orientation", 1},
                               {"File:ImageWidth", 640},
                               {"IFD0:Artist", "Ann"},
                               {"GPS:GPSLatitude", 48.5},
                               {"ExifIFD:DateTimeOriginal", "2021:03:04 05:06:07"}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        EXPECT_EQ(tags[it.key()], it.value()) << it.key().toStdString();
    EXPECT_FALSE(tags.contains("XMP-tiff:Orientation"));
    const QDateTime taken = dateFromText(QStringLiteral("2021:03:04 05:06:07"));
    EXPECT_EQ(readFileDates(storage.storagelocation + "/stamp_date.jpg").modification, taken);
}

TEST_F(PhotoStamp, PngHoldsJpegDataAndTheSourceDates) {
    const QString png = copyOf(photoPicture(QStringLiteral("photo-base.png"), "PNG"), "b.png");
    const QDateTime created(QDate(2019, 5, 6), QTime(7, 8, 9));
    ASSERT_TRUE(setFileDates(png, created, created));
    OutputBatch batch;
    const PhotoWriteResult r = AddDateOnPhotoAction(photoAt(png), StampStyle(), storage, batch);
    ASSERT_TRUE(r.ok()) << r.reason.toStdString();
    EXPECT_EQ(QFileInfo(r.outputPath).fileName(), "b_date.png");
    EXPECT_EQ(QImageReader(r.outputPath).format(), "jpeg");
    EXPECT_EQ(readFileDates(r.outputPath).modification, readFileDates(png).creation);

    const QString junk = dir.path() + "/junk.jpg";
    writeFile(junk, "not a picture");
    const PhotoWriteResult skipped = AddDateOnPhotoAction(photoAt(junk), {}, storage, batch);
    EXPECT_TRUE(skipped.skipped);
    EXPECT_FALSE(QFileInfo::exists(storage.storagelocation + "/junk_date.jpg"));
}
