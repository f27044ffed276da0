// SPDX-License-Identifier: GPL-3.0-or-later
// HEIC and AVIF written through our item rewriter: exiftool reads the new
// values, every picture item keeps its coded bytes and its decoded pixels,
// and what the rewriter cannot keep safely leaves nothing.
#include <QDir>
#include <QRegularExpression>

#include "core/photo/heif_decode.h"
#include "core/photo/heif_items.h"
#include "core/photo/photo_picture.h"
#include "core/video/bmff_tree.h"
#include "photo_fixture.h"

namespace {

// A HEIC with a thumbnail, or an AVIF, that heif-enc makes of a PNG.
QString heifPicture(const QString& name) {
    const QString path = fixtureDir() + QLatin1Char('/') + name;
    if (QFileInfo(path).size() > 0) return path;
    const QString png = photoPicture(QStringLiteral("heif-base.png"), "PNG");
    const QStringList args = name.endsWith(".avif") ? QStringList{"-A", "-o", path, png}
                                                    : QStringList{"-t", "32", "-o", path, png};
    return runTool("heif-enc", args) ? path : QString();
}

// The same with an Exif item (exiftool puts it in mdat).
QString heifWithExif(const QString& name, const QString& bare) {
    return exiftoolFixture(name, heifPicture(bare),
                           words("-Make=Canon -Model=EOS -GPSLatitude=33.5 -GPSLatitudeRef=S "
                                 "-DateTimeOriginal=2020:01:02_03:04:05 -XMP-dc:Title=Old")
                               .replaceInStrings("_", " "));
}

// The photo with its Exif item moved into idat, which no packaged tool makes:
// the meta box rebuilt with our box writer (an iloc of version 1), the other
// items' offsets shifted by its growth.
QString exifInIdat(const QString& name, const QString& source) {
    const QByteArray file = readFile(source);
    Heif::ItemFile f;
    QByteArray exif;
    if (!Heif::parseItemFile(file, f, nullptr) ||
        !Heif::itemData(f, file, f.metadataOfPrimary("Exif").value(0), exif))
        return {};
    const quint32 exifId = f.metadataOfPrimary("Exif")[0];
    const auto build = [&](qint64 shift) {
        QByteArray iloc("\x44\0", 2), body, out;
        Bmff::appendU16(iloc, quint16(f.locations.size()));
        for (const Heif::ItemLocation& loc : f.locations) {
            const bool moved = loc.id == exifId;
            for (quint16 v : {quint16(loc.id), quint16(moved ? 1 : loc.method), quint16(0),
                              quint16(moved ? 1 : loc.extents.size())})
                Bmff::appendU16(iloc, v);
            for (const Heif::Extent& e :
                 moved ? QList<Heif::Extent>{{quint64(f.idat.size()), quint64(exif.size())}}
                       : loc.extents) {
                Bmff::appendU32(iloc, quint32(e.offset + (loc.method == 0 && !moved ? shift : 0)));
                Bmff::appendU32(iloc, quint32(e.length));
            }
        }
        Bmff::appendU32(body, f.metaVersionFlags);
        for (const Heif::StoredBox& box : f.metaChildren)
            body.append(box.type == "iloc"   ? Bmff::makeFullBox("iloc", 1, 0, iloc)
                        : box.type == "idat" ? Bmff::makeBox("idat", f.idat.toByteArray() + exif)
                                             : box.bytes.toByteArray());
        if (f.idat.isEmpty()) body.append(Bmff::makeBox("idat", exif));
        for (int i = 0; i < f.topLevel.size(); ++i)
            out.append(i == f.metaIndex ? Bmff::makeBox("meta", body)
                                        : f.topLevel[i].bytes.toByteArray());
        return out;
    };
    const QString path = fixtureDir() + QLatin1Char('/') + name;
    return writeFile(path, build(build(0).size() - file.size())) ? path : QString();
}

// Every item's bytes but the metadata's: what a write must keep.
QMap<quint32, QByteArray> pictureItems(const QString& path) {
    const QByteArray file = readFile(path);
    Heif::ItemFile items;
    QMap<quint32, QByteArray> out;
    if (!Heif::parseItemFile(file, items, nullptr)) return out;
    for (const Heif::ItemInfo& info : items.items)
        if (info.type != "Exif" && info.type != "mime")
            Heif::itemData(items, file, info.id, out[info.id]);
    return out;
}

// The primary picture as libheif decodes it.
QImage decoded(const QString& path) {
    const QString png = path + QStringLiteral(".png");
    return runTool("heif-convert", {path, png}) ? QImage(png) : QImage();
}

}  // namespace

class HeifWrite : public PhotoTest {};

TEST_F(HeifWrite, EditsReachExiftoolAndTheItemsStay) {
    if (!haveTool("heif-enc") || !haveTool("heif-convert")) GTEST_SKIP() << "no heif-enc";
    PropertyEdit grow, shrink, add, title, strip, noIptc;
    grow.values[PhotoGroup::TIFF]["Artist"] = QString(300, QLatin1Char('a'));
    grow.values[PhotoGroup::GPS] = {{"Latitude", 10.0}, {"LatitudeRef", "N"}};
    shrink.removedGroups = {PhotoGroup::GPS, PhotoGroup::Exif};
    add.values[PhotoGroup::TIFF]["Artist"] = "Ann";
    title.values[PhotoGroup::IPTC]["ObjectName"] = "New";
    strip.removedGroups = {PhotoGroup::GPS, PhotoGroup::Exif, PhotoGroup::TIFF};
    strip.removeXmp = true;
    noIptc.removedGroups = {PhotoGroup::IPTC};
    const QString heic = heifWithExif("exif.heic", "bare.heic");
    const QString avif = heifWithExif("exif.avif", "bare.avif");
    const QString idat = exifInIdat("idat.heic", heic);
    // exiftool 12.57 reads no Exif item in idat (a rewritten one goes to mdat).
    ASSERT_EQ(readPhotoProperties(idat).properties[PhotoGroup::TIFF].toMap()["Make"], "Canon");
    const struct {
        QString source;
        PropertyEdit edit;
        QMap<QString, QString> tags;  // "" for a tag that must be gone
        QString changes;              // the groups the edit may change, beside `tags`
    } cases[] = {
        {heic, grow, {{"IFD0:Artist", QString(300, 'a')}, {"GPS:GPSLatitude", "10"}}, "GPS"},
        {heic, shrink, {{"IFD0:Make", "Canon"}, {"GPS:GPSLatitude", ""}}, "GPS|ExifIFD"},
        {heic, shrink, {{"ExifIFD:DateTimeOriginal", ""}, {"XMP-dc:Title", "Old"}}, "GPS|ExifIFD"},
        {heifPicture("bare.heic"), add, {{"IFD0:Artist", "Ann"}}, ""},
        {idat, grow, {{"IFD0:Artist", QString(300, 'a')}, {"IFD0:Model", "EOS"}}, ""},
        {idat, shrink, {{"IFD0:Make", "Canon"}, {"GPS:GPSLatitude", ""}}, ""},
        {avif, title, {{"XMP-dc:Title", "New"}, {"IFD0:Model", "EOS"}}, "XMP-x"},
        {avif, strip, {{"XMP-dc:Title", ""}, {"IFD0:Make", ""}, {"GPS:GPSLatitude", ""}}, ".*"},
        {heifPicture("bare.avif"), add, {{"IFD0:Artist", "Ann"}}, ""},
        {avif, noIptc, {{"XMP-dc:Title", ""}, {"IFD0:Model", "EOS"}}, "XMP-x"},
    };
    const QRegularExpression metadata("^(IFD\\d|ExifIFD|GPS|InteropIFD|XMP-\\w+):");
    int n = 0;
    for (const auto& c : cases) {
        const QString target =
            dir.filePath(QStringLiteral("out%1.%2").arg(++n).arg(QFileInfo(c.source).suffix()));
        writeFile(target, {});
        const PhotoWriteOutcome outcome = writePhotoCopy(c.source, target, c.edit);
        ASSERT_EQ(outcome.status, PhotoWriteStatus::Written) << n << outcome.reason.toStdString();
        EXPECT_EQ(exiftoolValidation(target), "OK") << n;
        const QJsonObject tags = tagsOf(target), before = tagsOf(c.source);
        for (auto it = c.tags.cbegin(); it != c.tags.cend(); ++it)
            EXPECT_EQ(tags[it.key()].toVariant().toString(), it.value())
                << n << it.key().toStdString();
        // Every tag the edit did not touch survives.
        const QRegularExpression changed("^(" + c.changes + "):");
        for (auto it = before.constBegin(); it != before.constEnd(); ++it) {
            if (it.key().contains(metadata) && !c.tags.contains(it.key()) &&
                (c.changes.isEmpty() || !it.key().contains(changed))) {
                EXPECT_EQ(tags[it.key()], it.value()) << n << it.key().toStdString();
            }
        }
        EXPECT_TRUE(readPhotoProperties(target).ok()) << n;
        EXPECT_FALSE(pictureItems(target).isEmpty());
        EXPECT_EQ(pictureItems(target), pictureItems(c.source)) << n;
        EXPECT_EQ(decoded(target), decoded(c.source)) << n;
        // An edit that leaves the Exif alone copies its item byte for byte.
        QStringList groups = c.edit.values.keys() + c.edit.removedGroups;
        groups.removeAll(PhotoGroup::IPTC);
        if (groups.isEmpty()) {
            EXPECT_EQ(Heif::primaryExifTiff(readFile(target)),
                      Heif::primaryExifTiff(readFile(c.source)))
                << n;
        }
    }
}

TEST_F(HeifWrite, DateSaveAndHostileFiles) {
    if (!haveTool("heif-enc")) GTEST_SKIP() << "no heif-enc";
    const QString source = copyOf(heifWithExif("exif.heic", "bare.heic"), "d.heic");
    const PhotoWriteResult r =
        ClickDateChangedSaveAction(photoAt(source), "2019-03-04 05:06:07", "2019-03-04 05:06:07",
                                   PhotoMode::Local, storage, batch);
    ASSERT_TRUE(r.ok()) << r.message().toStdString();
    EXPECT_EQ(tagsOf(r.outputPath)["ExifIFD:DateTimeOriginal"].toString(), "2019:03:04 05:06:07");

    const QByteArray heic = readFile(source);
    QByteArray pastEnd = heic.left(heic.size() - 40);  // mdat is last: shorten it too
    const qsizetype mdat = pastEnd.lastIndexOf("mdat") - 4;
    qToBigEndian(qFromBigEndian<quint32>(pastEnd.constData() + mdat) - 40, pastEnd.data() + mdat);
    QByteArray loop = heic;  // the thumbnail refers to itself
    const qsizetype thmb = loop.indexOf("thmb") + 4;
    loop.replace(thmb + 4, 2, loop.mid(thmb, 2));
    QByteArray twice = heic;  // a second, empty item location box in the meta box
    const QByteArray emptyIloc("\0\0\0\x10iloc\0\0\0\0\x44\0\0\0", 16);
    const qsizetype meta = twice.indexOf("meta") - 4;
    twice.insert(twice.indexOf("iloc") - 4, emptyIloc);
    qToBigEndian(qFromBigEndian<quint32>(twice.constData() + meta) + 16, twice.data() + meta);
    const struct {
        QString name;
        QByteArray bytes;
        bool written;
    } cases[] = {{"cut.heic", heic.left(heic.size() / 2), false},
                 {"end.heic", pastEnd, false},
                 {"twice.heic", twice, false},
                 {"loop.heic", loop, true}};
    for (const auto& c : cases) {
        QDir(storage.storagelocation).removeRecursively();
        const QString path = dir.filePath(c.name);
        writeFile(path, c.bytes);
        PhotoEditorState e;
        e.basicInfoChange = true;
        e.artistlab = "x";
        const PhotoWriteResult w =
            ClickApplyChangeAction(photoAt(path), e, PhotoMode::Local, storage, batch);
        EXPECT_EQ(w.ok(), c.written) << c.name.toStdString() << w.message().toStdString();
        if (!c.written) {
            EXPECT_TRUE(
                QDir(storage.storagelocation).entryList(QDir::Files | QDir::Hidden).isEmpty());
        }
    }
}

TEST_F(HeifWrite, DecodesUprightPicturesAndThumbnails) {
    if (!haveTool("heif-enc")) GTEST_SKIP() << "no heif-enc";
    const QString heic = heifPicture("bare.heic"), avif = heifPicture("bare.avif");
    const QString cut = dir.filePath("cut.heic");
    writeFile(cut, readFile(heic).left(400));
    EXPECT_TRUE(isHeifPicture(heic) && isHeifPicture(avif));
    EXPECT_FALSE(isHeifPicture(photoPicture("heif-base.png", "PNG")));
    EXPECT_EQ(decodeHeifPicture(heic).size(), QSize(64, 48));
    const PropertyDictionary read = readPhotoProperties(heic).properties;  // not a tile's size
    EXPECT_EQ(QSize(read["PixelWidth"].toInt(), read["PixelHeight"].toInt()), QSize(64, 48));
    EXPECT_EQ(decodeHeifPicture(avif, 16).size(), QSize(16, 12));
    EXPECT_EQ(decodeHeifPicture(heic, 32).size(), QSize(32, 24));  // the stored thumbnail
    EXPECT_TRUE(decodeHeifPicture(cut).isNull());
    // One loader for every type: upright once (an Exif orientation on a HEIC
    // is not applied over libheif's picture), scaled, null when undecodable.
    const QString jpeg = photoPicture("heif-base.jpg", "JPEG");
    const struct {
        QString path;
        int side;
        QSize size;
    } pictures[] = {
        {exiftoolFixture("turned.heic", heic, {"-Orientation#=6"}), 0, {64, 48}},
        {exiftoolFixture("turned.jpg", jpeg, {"-Orientation#=6"}), 0, {48, 64}},
        {exiftoolFixture("turned.jpg", jpeg, {"-Orientation#=6"}), 32, {24, 32}},
        {avif, 16, {16, 12}},
        {cut, 0, {0, 0}},
    };
    for (const auto& p : pictures)
        EXPECT_EQ(loadPhotoPicture(p.path, p.side).size(), p.size) << p.path.toStdString();
}
