// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/metadata_rows.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include "core/library/ik_image_item.h"
#include "core/video/bmff_box.h"
#include "core/video/bmff_tree.h"

namespace {

// The user type of the XMP box (a `uuid` box) at a file's top level.
constexpr unsigned char kXmpUuid[16] = {0xbe, 0x7a, 0xcf, 0xcb, 0x97, 0xa9, 0x42, 0xe8,
                                        0x9c, 0x71, 0x99, 0x94, 0x91, 0xe3, 0xaf, 0xac};
constexpr qint64 kMaxXmpSize = 8 * 1024 * 1024;
// A hostile packet could hold millions of properties; a list stops here.
constexpr int kMaxXmpRows = 2000;
constexpr int kHexPreviewBytes = 16;

QString keySpaceName(const QString& keySpace) {
    static const std::pair<const char*, const char*> names[] = {
        {"itsk", "iTunes"},
        {"mdta", "QuickTime keys"},
        {"udta", "QuickTime user data"},
        {"uiso", "3GPP"},
        {"id3", "ID3"},
        {"org.id3", "ID3"},
        {"comn", "Common"},
        {"caaf", "CAF"},
        {"riff", "RIFF INFO"},
        {"vorbis", "Vorbis comment"},
    };
    for (const auto& [code, name] : names)
        if (keySpace == QLatin1String(code)) return QString::fromLatin1(name);
    return keySpace;
}

// Four-byte types ("\xa9nam", "XMP_") read as Latin-1; longer keys (QuickTime
// key names, freeform iTunes names) are UTF-8.
QString keyText(const QByteArray& key) {
    return key.size() == 4 ? QString::fromLatin1(key) : QString::fromUtf8(key);
}

QString hexPreview(const QByteArray& bytes) {
    QString text = QStringLiteral("%1 bytes").arg(bytes.size());
    if (bytes.isEmpty()) return text;
    text += QStringLiteral(": ") + QString::fromLatin1(bytes.left(kHexPreviewBytes).toHex(' '));
    if (bytes.size() > kHexPreviewBytes) text += QStringLiteral(" \u2026");
    return text;
}

// Raw data that is readable text (trailing zero bytes aside) reads as that text.
bool readsAsText(const QByteArray& bytes, QString* text) {
    QByteArray trimmed = bytes;
    while (trimmed.endsWith('\0')) trimmed.chop(1);
    if (trimmed.isEmpty()) return false;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(trimmed);
    if (decoder.hasError()) return false;
    for (const QChar c : decoded) {
        if (!c.isPrint() && c != QLatin1Char('\n') && c != QLatin1Char('\t') &&
            c != QLatin1Char('\r'))
            return false;
    }
    *text = decoded;
    return true;
}

// A picture's format and size, read from its header only.
bool describePicture(const QByteArray& bytes, QString* text) {
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return false;
    QImageReader reader(&buffer);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if (format.isEmpty() || !size.isValid()) return false;
    *text = QStringLiteral("%1 picture, %2 x %3")
                .arg(QString::fromLatin1(format).toUpper())
                .arg(size.width())
                .arg(size.height());
    return true;
}

QString chapterTime(quint64 hundredNanoseconds) {
    const quint64 ms = hundredNanoseconds / 10000;
    return QStringLiteral("%1:%2:%3.%4")
        .arg(ms / 3600000, 2, 10, QLatin1Char('0'))
        .arg(ms / 60000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms % 1000, 3, 10, QLatin1Char('0'));
}

// Nero chapters (`chpl`): version and flags, four reserved bytes in version
// 1, a count, then per chapter a start in 100 ns units and a short title.
QStringList neroChapters(const QByteArray& payload) {
    QStringList chapters;
    if (payload.size() < 5) return chapters;
    qint64 pos = 4 + (payload.at(0) != 0 ? 4 : 0);
    if (pos >= payload.size()) return chapters;
    const int count = static_cast<unsigned char>(payload.at(pos++));
    for (int i = 0; i < count && payload.size() - pos >= 9; ++i) {
        const quint64 start = Bmff::readU64(payload, pos);
        const int length = static_cast<unsigned char>(payload.at(pos + 8));
        pos += 9;
        if (payload.size() - pos < length) break;
        chapters << chapterTime(start) + QLatin1Char(' ') +
                        QString::fromUtf8(payload.mid(pos, length));
        pos += length;
    }
    return chapters;
}

// The properties of an XMP packet: attributes of each rdf:Description, and
// each property element with the text it holds (list items joined by ", ").
void appendXmpRows(const QByteArray& packet, QList<MetadataRow>& rows) {
    const auto add = [&rows](const QString& key, const QString& value) {
        if (rows.size() < kMaxXmpRows)
            rows.append({QStringLiteral("XMP"), key, value, QString(), QByteArray(), -1});
    };
    QXmlStreamReader xml(packet);
    int descriptionDepth = -1;  // depth of the rdf:Description being read
    int depth = 0;
    QString property;  // the property element being read and its texts
    QStringList texts;
    int propertyDepth = -1;
    const QString rdf = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
    while (!xml.atEnd() && rows.size() < kMaxXmpRows) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            ++depth;
            const bool isDescription =
                xml.namespaceUri() == rdf && xml.name() == QLatin1String("Description");
            if (isDescription && descriptionDepth < 0) {
                descriptionDepth = depth;
                for (const QXmlStreamAttribute& a : xml.attributes()) {
                    if (a.namespaceUri() == rdf || a.qualifiedName().isEmpty()) continue;
                    add(a.qualifiedName().toString(), a.value().toString());
                }
            } else if (descriptionDepth > 0 && depth == descriptionDepth + 1) {
                property = xml.qualifiedName().toString();
                propertyDepth = depth;
                texts.clear();
                const QStringView resource =
                    xml.attributes().value(rdf, QStringLiteral("resource"));
                if (!resource.isEmpty()) texts << resource.toString();
            }
        } else if (token == QXmlStreamReader::Characters && propertyDepth > 0) {
            const QString text = xml.text().toString().trimmed();
            if (!text.isEmpty()) texts << text;
        } else if (token == QXmlStreamReader::EndElement) {
            if (depth == propertyDepth) {
                add(property, texts.join(QStringLiteral(", ")));
                propertyDepth = -1;
            }
            if (depth == descriptionDepth) descriptionDepth = -1;
            --depth;
        }
    }
}

void appendItemRows(const MetadataItem& item, QList<MetadataRow>& rows) {
    MetadataRow row{keySpaceName(item.keySpace),
                    keyText(item.key),
                    QString(),
                    item.identifier,
                    QByteArray(),
                    -1};
    // An ID3 picture is a dictionary; its "data" entry is the picture.
    const bool dictionary = item.value.typeId() == QMetaType::QVariantMap;
    if (item.value.typeId() != QMetaType::QByteArray && !dictionary) {
        row.value = item.value.toString();
        rows.append(row);
        return;
    }
    const QByteArray bytes = dictionary
                                 ? item.value.toMap().value(QStringLiteral("data")).toByteArray()
                                 : item.value.toByteArray();
    row.bytes = bytes.size();
    if (item.key == "XMP_" && item.keySpace == QLatin1String("udta")) {
        appendXmpRows(bytes, rows);
        return;
    }
    if (item.key == "chpl" && item.keySpace == QLatin1String("udta")) {
        const QStringList chapters = neroChapters(bytes);
        for (const QString& chapter : chapters)
            rows.append({row.keySpace, row.key, chapter, row.identifier, QByteArray(), -1});
        if (!chapters.isEmpty()) return;
    }
    if ((item.key == "trkn" || item.key == "disk") && item.keySpace == QLatin1String("itsk") &&
        bytes.size() >= 6) {
        row.value =
            QStringLiteral("%1 of %2").arg(Bmff::readU16(bytes, 2)).arg(Bmff::readU16(bytes, 4));
    } else if (describePicture(bytes, &row.value)) {
        row.picture = bytes;
    } else if (!readsAsText(bytes, &row.value)) {
        row.value = hexPreview(bytes);
    }
    rows.append(row);
}

}  // namespace

QList<MetadataRow> metadataRows(const QList<MetadataItem>& items, const QByteArray& xmp) {
    QList<MetadataRow> rows;
    for (const MetadataItem& item : items) appendItemRows(item, rows);
    if (!xmp.isEmpty()) appendXmpRows(xmp, rows);
    return rows;
}

QByteArray readTopLevelXmp(const QString& path) {
    if (path.isEmpty()) return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    // A damaged file still gives the boxes listed before the damage.
    QList<Bmff::FileBox> boxes;
    Bmff::scanFileBoxes(file, file.size(), boxes, nullptr);
    for (const Bmff::FileBox& box : boxes) {
        const qint64 payload = box.size - box.headerSize - 16;
        if (box.type != "uuid" || payload <= 0 || payload > kMaxXmpSize) continue;
        if (!file.seek(box.offset + box.headerSize)) continue;
        const QByteArray userType = file.read(16);
        if (userType != QByteArray::fromRawData(reinterpret_cast<const char*>(kXmpUuid), 16))
            continue;
        return file.read(payload);
    }
    return {};
}

QList<MetadataRow> videoMetadataRows(const IKImageItem& item) {
    return metadataRows(item.fileMetaArray, readTopLevelXmp(item.filePath));
}
