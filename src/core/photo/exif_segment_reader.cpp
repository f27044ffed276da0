// SPDX-License-Identifier: GPL-3.0-or-later
// The diagnostic walk of a JPEG's Exif segment over hexadecimal text.
#include "core/photo/exif_segment_reader.h"

#include <QFile>
#include <QStringDecoder>

#include <algorithm>

#include "core/common/logging.h"

namespace {

// Larger files are scanned over their first part only.
constexpr qint64 kMaxScanned = qint64(64) << 20;
// Entries one directory walk reads at most, its sub-walks included (the
// walks can loop), and entries one scan reads at most: every Exif
// identifier starts a walk, so a crafted file could otherwise keep the scan
// busy for a time that grows with the square of its size.
constexpr int kMaxEntries = 4096;
constexpr int kMaxScanEntries = 65536;

const QMap<QString, QString>& mainLabels() {
    static const QMap<QString, QString> labels{
        {"010f", "makeString====%1"},
        {"0110", "ModelString====%1"},
        {"0112", "Orientation====%1"},
        {"011a", "XResolution====%1"},
        {"011b", "YResolution====%1"},
        {"0128", "ResolutionUnitString====%1"},
        {"0131", "SoftwareString====%1"},
        {"0132", "DateTimeString====%1"},
        {"0213", "YCbCrPostioningString====%1"},
        {"8825", "GPSIFDString====%1"},
    };
    return labels;
}

const QMap<QString, QString>& exifLabels() {
    static const QMap<QString, QString> labels{
        {"829a", "ExposoureTime====%1"},
        {"829d", "FNumber====%1"},
        {"8822", "ExposureProgram====%1"},
        {"8827", "ISOSpeedRatings====%1"},
        {"9000", "ExifVersion====%1"},
        {"9003", "DateTimeOriginal====%1"},
        {"9004", "DateTimeDigitized====%1"},
        {"9101", "ComponentsConfiguration====%1"},
        {"9201", "GPSIFDString====%1"},
        {"9202", "ApertureValue====%1"},
        {"9203", "BrightnessValue====%1"},
        {"9207", "ApertureValue====%1"},
        {"9209", "Flashfired====%1"},
        {"920a", "FocalLength====%1"},
        {"a000", "FlashpixVersion====%1"},
        {"a001", "ColorSpace====%1"},
        {"a002", "PixelXDimension====%1"},
        {"a003", "PixelYDimension====%1"},
        {"a217", "SensingMethod Colarea sens====%1"},
        {"a401", "CustomRendered====%1"},
        {"a402", "ExposureMode====%1"},
        {"a403", "GPSIFDString====%1"},
        {"a405", "GPSIFDString====%1"},
        {"a406", "GPSIFDString====%1"},
    };
    return labels;
}

// Offsets of values are taken from the TIFF header's usual place.
constexpr qint64 kTiffBase = 12;

class Walk {
public:
    Walk(const QByteArray& file, QStringList& lines) : m_file(file), m_lines(lines) {}

    qint32 number(qint64 at, int bytes) const {
        return DemaNumberFormHexChar(getHexString(m_file, at, bytes), bytes * 2);
    }
    QString hex(qint64 at, int bytes) const { return getHexString(m_file, at, bytes); }
    void log(const QString& line) {
        m_lines << line;
        qCDebug(lcTagsmith).noquote() << line;
    }

    // One entry at the cursor; moves the cursor as the entry's type says.
    // `valid` is false when the value is of a type not listed.
    QString entry(qint64& c, bool* valid) {
        *valid = true;
        c += 2;
        const qint32 type = number(c, 2);
        if (type < 2 || type > 5) {
            *valid = false;
            return {};
        }
        c += 2;
        if (type == 3) {
            const QString text = QString::number(number(c, 4));
            c += 8;
            return text;
        }
        const qint32 count = number(c, 4);
        c += 4;
        const qint64 value = quint32(number(c, 4));
        if (type == 4) {
            c = qint32(value + 14);
            return {};
        }
        const int length = type == 2 ? std::clamp<qint32>(count, 0, 1 << 16) : 8;
        c += 4;
        return GetStringFormChar(m_file.mid(value + kTiffBase, length));
    }

    void directories(qint64 e) {
        const qint64 segmentEnd = e - 2 + number(e - 2, 2);
        qint64 c = e + 16;
        m_walkLeft = kMaxEntries;
        while (c < segmentEnd && step()) {
            const QString tag = hex(c, 2);
            bool valid = true;
            if (mainLabels().contains(tag)) {
                const QString text = entry(c, &valid);
                log(mainLabels().value(tag).arg(text));
                if (!valid) return;
            } else if (tag == QLatin1String("8769")) {
                c += 2;
                if (number(c, 2) != 4) continue;
                c += 6;
                const qint64 x = quint32(number(c, 4));
                c += 4;
                const qint64 bound = quint32(number(c + 8, 4));
                subDirectory(x + 14, bound);
            } else {
                // An unlisted tag: the walk cannot go on from here.
                return;
            }
        }
    }

    void subDirectory(qint64 s, qint64 bound) {
        while (s <= bound && step()) {
            const QString tag = hex(s, 2);
            if (!exifLabels().contains(tag)) return;
            bool valid = true;
            const QString text = entry(s, &valid);
            log(exifLabels().value(tag).arg(text));
            if (!valid) return;
        }
    }

private:
    // Takes one entry from the walk's and the scan's allowance.
    bool step() {
        if (m_walkLeft <= 0 || m_scanLeft <= 0) return false;
        --m_walkLeft;
        --m_scanLeft;
        return true;
    }

    const QByteArray& m_file;
    QStringList& m_lines;
    int m_walkLeft = 0;
    int m_scanLeft = kMaxScanEntries;
};

}  // namespace

void ExifSegmentReader::ReadExifDataFromPiture(const QString& path) {
    lines.clear();
    QByteArray file;
    {
        QFile in(path);
        if (!in.open(QIODevice::ReadOnly)) return;
        // Bounded by the file's size too: read() sets aside what it is asked for.
        file = in.read(std::min(kMaxScanned, in.size()));
    }  // closed here
    Walk walk(file, lines);
    const QString start = getHexString(file, 0, 2);
    walk.log(start);
    if (start != QLatin1String("ffd8")) {
        walk.log(start);
        return;
    }
    const qint64 size = file.size();
    for (qint64 p = 0; p < size; ++p) {
        const QString six = getHexString(file, p, 6);
        if (six == QLatin1String("457869660000")) {
            walk.log(six);
            walk.directories(p);
        } else if (six == QLatin1String("000c03010002")) {
            walk.log(six);
            if (bhasThumImage) theImageData.clear();
        } else if (six.startsWith(QLatin1String("ffd9")) && p + 2 != size) {
            bhasThumImage = true;
        }
    }
}

QString getHexString(const QByteArray& file, qint64 offset, int count) {
    QString text;
    text.reserve(count * 2);
    static const char digits[] = "0123456789abcdef";
    for (int i = 0; i < count; ++i) {
        const qint64 at = offset + i;
        const uchar byte = at >= 0 && at < file.size() ? uchar(file.at(at)) : 0;
        text += QLatin1Char(digits[byte >> 4]);
        text += QLatin1Char(digits[byte & 15]);
    }
    return text;
}

qint32 DemaNumberFormHexChar(const QString& hex, int longth) {
    if (longth <= 0 || hex.size() < longth) return 0;
    quint32 value = 0;
    for (int i = 0; i < longth; ++i) {
        const QChar c = hex.at(i);
        int digit = 0;
        if (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
            digit = c.unicode() - 'a' + 10;
        else if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digit = c.unicode() - '0';
        value = value * 16 + quint32(digit);
    }
    return qint32(value);
}

QString GetStringFormChar(const QByteArray& bytes) {
    const qsizetype end = bytes.indexOf('\0');
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(end < 0 ? bytes : bytes.left(end));
    return utf8.hasError() ? QString() : text;
}

QString stringFromHex(const QString& hex) {
    QByteArray bytes;
    for (qsizetype i = 0; i + 1 < hex.size(); i += 2)
        bytes += char(hex.mid(i, 2).toUInt(nullptr, 16));
    return QString::fromLatin1(bytes);
}

QString stringToHex(const QString& text) {
    QString hex;
    for (const QChar c : text) hex += QString::asprintf("%02x", c.unicode());
    return hex;
}

QList<PropertyTreeRow> propTree(const PropertyDictionary& properties) {
    QStringList keys = properties.keys();
    std::sort(keys.begin(), keys.end(), [](const QString& a, const QString& b) {
        return QString::compare(a, b, Qt::CaseSensitive) < 0;
    });
    QList<PropertyTreeRow> rows;
    for (const QString& key : keys) {
        const QVariant value = properties.value(key);
        if (value.typeId() == QMetaType::QVariantMap)
            rows.append({key, QString(), propTree(value.toMap())});
        else
            rows.append({key, value, {}});
    }
    return rows;
}
