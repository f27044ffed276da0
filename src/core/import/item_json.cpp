// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/import/item_json.h"

#include <QJsonDocument>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

// ISO 8601 with the date's own offset ("Z" for none), as Qt::ISODate writes
// it; formatted here for the common dates, as Qt's formatter costs more than
// the rest of a record's text.
QString dateText(const QDateTime& value) {
    const int offset = value.offsetFromUtc();
    const QDate day = value.date();
    const QTime time = value.time();
    if (offset % 60 != 0 || day.year() < 1000 || day.year() > 9999)
        return value.toOffsetFromUtc(offset).toString(Qt::ISODate);
    char text[32];
    int n = std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", day.year(),
                          day.month(), day.day(), time.hour(), time.minute(), time.second());
    if (offset == 0)
        text[n++] = 'Z';
    else
        n += std::snprintf(text + n, sizeof text - size_t(n), "%c%02d:%02d", offset < 0 ? '-' : '+',
                           std::abs(offset) / 3600, std::abs(offset) % 3600 / 60);
    return QString::fromLatin1(text, n);
}

void putText(QJsonObject& o, const char* name, const QString& value) {
    if (!value.isEmpty()) o.insert(QLatin1String(name), value);
}

// The record's fields as a JSON object.
struct ObjectPut {
    QJsonObject object;
    void text(const char* name, const QString& value) { putText(object, name, value); }
    void date(const char* name, const QDateTime& value) {
        if (value.isValid()) object.insert(QLatin1String(name), dateText(value));
    }
    void number(const char* name, double value) {
        if (value != 0.0) object.insert(QLatin1String(name), value);
    }
    void flag(const char* name) { object.insert(QLatin1String(name), true); }
};

// A value as QJsonDocument writes it (the one way to be sure of its escapes).
QByteArray qtJson(const QJsonValue& value) {
    QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2);
}

// Whether a text can be written as its UTF-8 bytes in quotes: nothing to
// escape and no lone surrogate.
bool plainText(const QString& value) {
    for (qsizetype k = 0; k < value.size(); ++k) {
        const char16_t c = value.at(k).unicode();
        if (c < 0x20 || c == u'"' || c == u'\\') return false;
        if (QChar::isHighSurrogate(c)) {
            if (k + 1 >= value.size() || !QChar::isLowSurrogate(value.at(k + 1).unicode()))
                return false;
            ++k;
        } else if (QChar::isLowSurrogate(c)) {
            return false;
        }
    }
    return true;
}

// The record's fields, named and kept as they are until they are written
// in the order of their names.
struct TextPut {
    struct Field {
        const char* name;
        QString text;  // a text's value
        double number = 0;
        enum Kind { Text, Number, Flag } kind = Text;
    };
    std::vector<Field> fields;
    void text(const char* name, const QString& value) {
        if (!value.isEmpty()) fields.push_back({name, value});
    }
    void date(const char* name, const QDateTime& value) {
        if (value.isValid()) text(name, dateText(value));
    }
    void number(const char* name, double value) {
        if (value != 0.0) fields.push_back({name, {}, value, Field::Number});
    }
    void flag(const char* name) { fields.push_back({name, {}, 0, Field::Flag}); }

    // A field's value as QJsonDocument writes it.
    static void write(QByteArray& out, const Field& field) {
        switch (field.kind) {
            case Field::Text:
                if (!plainText(field.text)) {
                    out.append(qtJson(field.text));
                    return;
                }
                out.append('"').append(field.text.toUtf8()).append('"');
                return;
            case Field::Number:
                // QJsonDocument's own form of a double; it has no text for
                // an infinite one.
                if (std::isfinite(field.number))
                    out.append(
                        QByteArray::number(field.number, 'g', QLocale::FloatingPointShortest));
                else
                    out.append("null");
                return;
            case Field::Flag:
                out.append("true");
                return;
        }
    }
};

// Every field that is not empty, zero or false, in one place for both forms.
template <typename Put>
void forEachField(const IKImageItem& i, Put& o) {
    if (i.fileImage.hasPicture())
        o.text("fileImage",
               QStringLiteral("%1x%2").arg(i.fileImage.width()).arg(i.fileImage.height()));
    o.text("fileImagePath", i.fileImagePath);
    o.text("filePath", i.filePath);
    o.text("fileType", i.fileType);
    if (i.bhasCopy) o.flag("bhasCopy");
    o.text("hasCopy", i.hasCopy);
    o.text("fileName", i.fileName);
    o.text("fileSize", i.fileSize);
    o.text("shootDateStr", i.shootDateStr);
    o.date("shootDate", i.shootDate);
    o.date("fileCreateDate", i.fileCreateDate);
    o.date("fileModifyDate", i.fileModifyDate);
    o.text("fileCreateDateStr", i.fileCreateDateStr);
    o.text("fileReleasedYear", i.fileReleasedYear);
    o.text("fileAblumName", i.fileAblumName);
    o.number("fileduration", i.fileduration);
    o.text("fileduratStr", i.fileduratStr);
    o.number("filePixWidth", i.filePixWidth);
    o.number("filepixHeigh", i.filepixHeigh);
    const std::pair<const char*, const QString*> texts[] = {
        {"fileArist", &i.fileArist},
        {"fileCopyright", &i.fileCopyright},
        {"fileTitle", &i.fileTitle},
        {"fileMake", &i.fileMake},
        {"fileModel", &i.fileModel},
        {"fileSoftware", &i.fileSoftware},
        {"fileFormat", &i.fileFormat},
        {"fileKeyWords", &i.fileKeyWords},
        {"filePublisher", &i.filePublisher},
        {"fileDescription", &i.fileDescription},
        {"fileBitRate", &i.fileBitRate},
        {"fileSampleRate", &i.fileSampleRate},
        {"fileChannels", &i.fileChannels},
        {"fileVideoEncodeFormat", &i.fileVideoEncodeFormat},
        {"fileAudioEncodeFormat", &i.fileAudioEncodeFormat},
        {"fileVideoDataRate", &i.fileVideoDataRate},
        {"latitudeFormat", &i.latitudeFormat},
        {"longtitudeFormat", &i.longtitudeFormat},
        {"AtitudeFormat", &i.AtitudeFormat},
    };
    for (const auto& [name, value] : texts) o.text(name, *value);
    o.number("filelatitude", i.filelatitude);
    o.number("filelongtitude", i.filelongtitude);
    o.number("fileAtitude", i.fileAtitude);
    const std::pair<const char*, const QString*> more[] = {
        {"fileComments", &i.fileComments},
        {"fileSubTitle", &i.fileSubTitle},
        {"fileBand", &i.fileBand},
        {"fileComposer", &i.fileComposer},
        {"fileLyricist", &i.fileLyricist},
        {"fileAlbumArist", &i.fileAlbumArist},
        {"fileDirector", &i.fileDirector},
        {"fileActor", &i.fileActor},
        {"fileproducer", &i.fileproducer},
        {"videoResolutionStr", &i.videoResolutionStr},
        {"videocodeIDStr", &i.videocodeIDStr},
        {"videoBitDepStr", &i.videoBitDepStr},
        {"videoCodeFPSStr", &i.videoCodeFPSStr},
        {"videoDataRateStr", &i.videoDataRateStr},
        {"videoAspectStr", &i.videoAspectStr},
        {"videoCurScaleStr", &i.videoCurScaleStr},
        {"videoColorPrimStr", &i.videoColorPrimStr},
        {"videoTransfStr", &i.videoTransfStr},
        {"videoYCbCrStr", &i.videoYCbCrStr},
        {"videoCodePointStr", &i.videoCodePointStr},
        {"videoTrackIDStr", &i.videoTrackIDStr},
        {"videoDurationStr", &i.videoDurationStr},
        {"audioCodecIDStr", &i.audioCodecIDStr},
        {"audiolanguageStr", &i.audiolanguageStr},
        {"audioDurationStr", &i.audioDurationStr},
        {"audioDataRateStr", &i.audioDataRateStr},
        {"audioFrameRateStr", &i.audioFrameRateStr},
        {"audioChanelsStr", &i.audioChanelsStr},
        {"audioTrackIDStr", &i.audioTrackIDStr},
    };
    for (const auto& [name, value] : more) o.text(name, *value);
    o.text("fileReadProblem", i.fileReadProblem);
}

}  // namespace

QJsonObject itemToJson(const IKImageItem& item) {
    ObjectPut put;
    forEachField(item, put);
    return put.object;
}

QByteArray itemToJsonText(const IKImageItem& item, int indent) {
    TextPut put;
    forEachField(item, put);
    // QJsonObject keeps its keys sorted, and so does its text.
    std::sort(put.fields.begin(), put.fields.end(),
              [](const auto& a, const auto& b) { return qstrcmp(a.name, b.name) < 0; });
    const QByteArray outer(4 * indent, ' ');
    const QByteArray inner(4 * (indent + 1), ' ');
    QByteArray out;
    out.reserve(2048);
    out.append(outer).append('{');
    for (size_t k = 0; k < put.fields.size(); ++k) {
        out.append(k ? ",\n" : "\n").append(inner).append('"').append(put.fields[k].name);
        out.append("\": ");
        TextPut::write(out, put.fields[k]);
    }
    out.append('\n').append(outer).append('}');
    return out;
}

QJsonArray metadataRowsToJson(const QList<MetadataRow>& rows) {
    QJsonArray out;
    for (const MetadataRow& row : rows) {
        QJsonObject o;
        o.insert(QStringLiteral("keySpace"), row.keySpace);
        o.insert(QStringLiteral("key"), row.key);
        o.insert(QStringLiteral("value"), row.value);
        putText(o, "identifier", row.identifier);
        if (row.bytes >= 0) o.insert(QStringLiteral("bytes"), row.bytes);
        out.append(o);
    }
    return out;
}
