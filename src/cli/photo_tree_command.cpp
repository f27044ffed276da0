// SPDX-License-Identifier: GPL-3.0-or-later
// `tagsmith-cli tree`: a photo's property dictionary, as photo mode's
// outline shows it or as JSON.
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

#include "cli/commands.h"
#include "core/photo/exif_segment_reader.h"
#include "core/photo/photo_properties.h"

namespace {

const char* const kTreeHelp =
    "Usage: tagsmith-cli tree [--json] FILE...\n"
    "\n"
    "Prints the metadata of each photo as one dictionary of groups and keys, under\n"
    "the names photo mode's outline shows: the groups {Exif}, {TIFF}, {GPS}, {IPTC},\n"
    "{PNG}, {JFIF}, ... and the top-level keys PixelWidth, PixelHeight, Orientation,\n"
    "DPIWidth, ... Dates read \"yyyy:MM:dd HH:mm:ss\"; the GPS latitude and longitude\n"
    "are unsigned decimal degrees beside their references (LatitudeRef \"N\" or \"S\",\n"
    "LongitudeRef \"E\" or \"W\"), the altitude an unsigned number beside AltitudeRef\n"
    "(0 above, 1 below sea level); IPTC keywords are a list.\n"
    "\n"
    "Text form: the photo's path, then one line per key, \"Key: value\", keys in\n"
    "code-point order, each group's keys indented under it.\n"
    "\n"
    "  --json    one JSON array instead, an object per file: \"filePath\" and\n"
    "            \"properties\" (the dictionary), or \"problem\" when it cannot be read\n"
    "\n"
    "A file that does not exist or cannot be read as a photo is reported on stderr\n"
    "and makes the exit code 1; the other files are still printed.\n";

// Binary values are described, not dumped.
QString bytesText(const QByteArray& bytes) {
    return QStringLiteral("%1 bytes").arg(bytes.size());
}

QString valueText(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray) return bytesText(value.toByteArray());
    if (value.typeId() == QMetaType::QVariantList) {
        QStringList parts;
        for (const QVariant& v : value.toList()) parts << valueText(v);
        return QLatin1Char('(') + parts.join(QStringLiteral(", ")) + QLatin1Char(')');
    }
    return value.toString();
}

QJsonValue valueJson(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QByteArray:
            return bytesText(value.toByteArray());
        case QMetaType::QVariantList: {
            QJsonArray list;
            for (const QVariant& v : value.toList()) list.append(valueJson(v));
            return list;
        }
        case QMetaType::QVariantMap: {
            QJsonObject group;
            const QVariantMap map = value.toMap();
            for (auto it = map.begin(); it != map.end(); ++it)
                group.insert(it.key(), valueJson(*it));
            return group;
        }
        default:
            return QJsonValue::fromVariant(value);
    }
}

void printRows(const QList<PropertyTreeRow>& rows, int depth) {
    const QByteArray indent(2 * depth, ' ');
    for (const PropertyTreeRow& row : rows) {
        if (row.children.isEmpty())
            std::printf("%s%s: %s\n", indent.constData(), qPrintable(row.key),
                        qPrintable(valueText(row.val)));
        else
            std::printf("%s%s\n", indent.constData(), qPrintable(row.key));
        printRows(row.children, depth + 1);
    }
}

}  // namespace

int runTree(const QStringList& args) {
    QStringList paths;
    bool json = false;
    bool optionsEnded = false;
    for (const QString& arg : args) {
        if (!optionsEnded && arg == QLatin1String("--")) {
            optionsEnded = true;
        } else if (!optionsEnded &&
                   (arg == QLatin1String("--help") || arg == QLatin1String("-h"))) {
            std::fputs(kTreeHelp, stdout);
            return 0;
        } else if (!optionsEnded && arg == QLatin1String("--json")) {
            json = true;
        } else if (!optionsEnded && arg.startsWith(QLatin1Char('-')) && arg.size() > 1) {
            std::fprintf(stderr, "tagsmith-cli tree: unknown option '%s'\n\n%s", qPrintable(arg),
                         kTreeHelp);
            return 2;
        } else {
            paths.append(arg);
        }
    }
    if (paths.isEmpty()) {
        std::fputs(kTreeHelp, stderr);
        return 2;
    }
    QJsonArray array;
    bool allRead = true;
    for (const QString& path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        const PhotoSource source =
            QFileInfo(path).isFile()
                ? readPhotoProperties(absolute)
                : PhotoSource{{}, {}, 0, false, QStringLiteral("no such file")};
        QJsonObject record{{QStringLiteral("filePath"), absolute}};
        if (!source.ok()) {
            allRead = false;
            std::fprintf(stderr, "tagsmith-cli: %s: %s\n", qPrintable(path),
                         qPrintable(source.problem));
            record.insert(QStringLiteral("problem"), source.problem);
        } else if (json) {
            record.insert(QStringLiteral("properties"), valueJson(source.properties));
        } else {
            std::printf("%s\n", qPrintable(absolute));
            printRows(propTree(source.properties), 1);
            std::fflush(stdout);
        }
        array.append(record);
    }
    if (json) {
        const QByteArray text = QJsonDocument(array).toJson(QJsonDocument::Indented);
        std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    }
    return allRead ? 0 : 1;
}
