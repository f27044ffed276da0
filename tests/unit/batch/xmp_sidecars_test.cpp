// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "core/batch/xmp_sidecars.h"
#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/output_files.h"
#include "core/video/video_writers.h"
#include "support/media_fixtures.h"

namespace {

QString sidecar(const QString& body) {
    return QStringLiteral(
               "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
               "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
               "xmlns:dc='http://purl.org/dc/elements/1.1/' "
               "xmlns:exif='http://ns.adobe.com/exif/1.0/'>%1</rdf:Description></rdf:RDF>"
               "</x:xmpmeta>")
        .arg(body);
}

}  // namespace

TEST(XmpSidecars, ExtractorsTakeTheTextBetweenTheFirstTags) {
    EXPECT_EQ(getTitlewithXMPStr("<dc:title>Trip</dc:title><dc:title>2</dc:title>"), "Trip");
    EXPECT_EQ(getTitlewithXMPStr("<dc:title><rdf:Alt>x</rdf:Alt></dc:title>"),
              "<rdf:Alt>x</rdf:Alt>");
    EXPECT_EQ(getTitlewithXMPStr("<dc:title>no closing tag"), "");
    EXPECT_EQ(getTitlewithXMPStr("</dc:title> <dc:title>closing first"), "");
    // The altitude's reference element does not pass for the altitude.
    EXPECT_EQ(getGPSAltitudewithJsonStr("<exif:GPSAltitudeRef>1</exif:GPSAltitudeRef>"), "");
    EXPECT_EQ(getKeywordswithXMPStr("<dc:subject>\n <rdf:Seq>\n  <rdf:li>a</rdf:li>\n  "
                                    "<rdf:li>b c</rdf:li>\n </rdf:Seq>\n</dc:subject>"),
              "a,bc");
}

TEST(XmpSidecars, PositionsBecomeSignedDegreesAndMetres) {
    const struct {
        const char *value, *ref;
        double limit;
        const char* expected;
    } coordinates[] = {
        {"48,51.396N", "", 90, "48.8566"},
        {"2,21,7.92E", "", 180, "2.3522"},
        {"33,51.5s", "N", 90, "-33.8583333"},
        {"12.5", "S", 90, "-12.5"},
        {"-3.25", "", 180, "-3.25"},
        {"91,0N", "", 90, ""},
        {"48,60N", "", 90, ""},
        {"48.1.2N", "", 90, ""},
        {"", "", 90, ""},
    };
    for (const auto& c : coordinates)
        EXPECT_EQ(xmpCoordinateDegrees(c.value, c.ref, c.limit), c.expected) << c.value;
    EXPECT_EQ(xmpAltitudeMetres("35/1", ""), "35");
    EXPECT_EQ(xmpAltitudeMetres("1234/10", "1"), "-123.4");
    EXPECT_EQ(xmpAltitudeMetres("5/0", ""), "");
}

TEST(XmpSidecars, DatesDropTheOffsetAndNeedSixParts) {
    QTemporaryDir tmp;
    const QString video = tmp.path() + "/v.mov";
    ASSERT_TRUE(writeFile(video, "v"));
    const QDateTime created = readFileDates(video).creation;  // the birth time where known
    EXPECT_EQ(dateText(xmpSidecarDate("2019-05-06T07:08:09+02:00", video)), "2019:05:06 07:08:09");
    EXPECT_EQ(dateText(xmpSidecarDate("2019-05-06T07:08:09Z", video)), "2019:05:06 07:08:09");
    EXPECT_FALSE(xmpSidecarDate("2019-05-06", video).isValid());
    EXPECT_EQ(xmpSidecarDate("", video), created);
    EXPECT_EQ(xmpSidecarDate("2019-13-06T07:08:09", video), created);  // does not read
}

TEST(XmpSidecars, EachSidecarReplacesTheVideoBesideIt) {
    QTemporaryDir tmp;
    const auto put = [&](const QString& name, const QString& bytes = "old bytes") {
        QDir(tmp.path()).mkpath(QFileInfo(name).path());
        return writeFile(tmp.path() + "/" + name, bytes.toUtf8());
    };
    const QString a =
        "<dc:title>Paris</dc:title><exif:GPSLatitude>48,51.396N</exif:GPSLatitude>"
        "<exif:GPSLongitude>2,21,7.92W</exif:GPSLongitude>"
        "<exif:GPSAltitude>35/1</exif:GPSAltitude>";
    ASSERT_TRUE(put("a.xmp", sidecar(a)) && put("a.mov") && put("a.MOV") &&  // lower case first
                put("sub/b.XMP", sidecar("")) && put("sub/b.Mp4") &&
                put("c.xmp", sidecar("")) &&  // no video
                put("d.xmp", "<x><dc:title>broken</x>") && put("d.mov") &&
                put("e.Xmp", sidecar("")) && put("e.mov"));  // not a sidecar's name
    // No date text: the video's own creation date is written.
    const QString date = xmpDateText(readFileDates(tmp.path() + "/a.mov").creation);
    QStringList outcomes, items;
    XmpBatchCallbacks callbacks;
    callbacks.finished = [&](const VideoWriteResult& r) {
        outcomes << QFileInfo(r.sourcePath).fileName() + (r.ok()      ? ""
                                                          : r.skipped ? " skipped"
                                                                      : " failed");
    };
    ScnXmpPhotosItemThreader({tmp.path()}, callbacks, [&](const PassthroughExport& e) {
        if (e.sourcePath.endsWith("a.mov")) {
            EXPECT_EQ(e.outputPath, tmp.path() + "/.a.mov.new");
            for (const MetadataItem& m : e.metadata)
                items << m.identifier + "=" + m.value.toString();
        }
        return writeFile(e.outputPath, "new bytes") ? ExportStatus::Completed
                                                    : ExportStatus::Failed;
    });
    outcomes.sort();
    EXPECT_EQ(outcomes, (QStringList{"a.mov", "b.Mp4", "c.xmp skipped", "d.xmp failed"}));
    EXPECT_EQ(items, (QStringList{"itsk/%A9nam=Paris", "uiso/date=" + date,
                                  "uiso/loci=+48.8566-2.3522+35"}));
    for (const char* name : {"a.mov", "sub/b.Mp4"}) {
        EXPECT_EQ(readFile(tmp.path() + "/" + name), "new bytes");
        EXPECT_FALSE(isOutputOfOurs(tmp.path() + "/" + name));
    }
    for (const char* name : {"a.MOV", "d.mov", "e.mov"})
        EXPECT_EQ(readFile(tmp.path() + "/" + name), "old bytes");
    EXPECT_FALSE(QFile::exists(tmp.path() + "/.a.mov.new"));
}
