// SPDX-License-Identifier: GPL-3.0-or-later
// Photo commands of tagsmith-cli: the photo side of `set` and `strip`, and
// `gps` and `photo-date`, over the same core calls as photo mode (local mode).
#include "cli/photo_commands.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "cli/cli_common.h"
#include "cli/commands.h"
#include "core/batch/date_check.h"
#include "core/library/media_kinds.h"
#include "core/library/media_record.h"
#include "core/photo/photo_removal.h"

namespace {

enum class Group { Basic, Camera, Gps };

struct PhotoOption {
    const char* name;
    QString PhotoEditorState::*field;  // the panel's field
    QString PhotoEditorState::*entry;  // the GPS window's field, or null
    Group group;
};

// The options of `set` a photo takes, and the editor fields they fill.
const PhotoOption kPhotoOptions[] = {
    {"title", &PhotoEditorState::titlelab, nullptr, Group::Basic},
    {"artist", &PhotoEditorState::artistlab, nullptr, Group::Basic},
    {"comments", &PhotoEditorState::commentslab, nullptr, Group::Basic},
    {"description", &PhotoEditorState::imageDescrilab, nullptr, Group::Basic},
    {"keywords", &PhotoEditorState::keywordslab, nullptr, Group::Basic},
    {"copyright", &PhotoEditorState::copyrightlab, nullptr, Group::Basic},
    {"make", &PhotoEditorState::cameraMakelab, nullptr, Group::Camera},
    {"model", &PhotoEditorState::cameraModelab, nullptr, Group::Camera},
    {"shoot-date", &PhotoEditorState::cameraDatelab, nullptr, Group::Camera},
    {"latitude", &PhotoEditorState::gpsLatilab, &PhotoEditorState::latitudelab, Group::Gps},
    {"longitude", &PhotoEditorState::gpsLongtlab, &PhotoEditorState::longtitudelab, Group::Gps},
    {"altitude", &PhotoEditorState::gpsAitlab, &PhotoEditorState::altitudelab, Group::Gps},
    {"gps-date", &PhotoEditorState::gpsDatelab, &PhotoEditorState::dateStamplab, Group::Gps},
    {"gps-time", &PhotoEditorState::gpsTimelab, &PhotoEditorState::timeStamplab, Group::Gps},
};

// Options only photos take.
const char* const kPhotoOnlyOptions[] = {"make", "model", "gps-date", "gps-time"};
// Options every kind takes (not field options).
const char* const kGeneralOptions[] = {"storage", "help"};
// strip's flags that only photos take.
const char* const kPhotoStripFlags[] = {"iptc", "exif", "exif-gps"};

bool isSet(const QCommandLineParser& parser, const char* name) {
    return parser.isSet(QLatin1String(name));
}

QString doesNotApply(const QStringList& given, const QString& kind) {
    if (given.isEmpty()) return {};
    return QStringLiteral("--%1 does not apply to %2 files")
        .arg(given.join(QStringLiteral(", --")), kind);
}

// Why a latitude, longitude or altitude text is refused; "" when it reads.
QString gpsValueProblem(const QString& option, const QString& text, double limit) {
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return QStringLiteral("--%1 must be a number (signed decimal degrees or metres): %2")
            .arg(option, text);
    if (limit > 0 && std::fabs(value) > limit)
        return QStringLiteral("--%1 must lie between -%2 and %2").arg(option).arg(limit);
    return {};
}

// The first problem with the position options given; "" when there is none.
QString gpsOptionsProblem(const QCommandLineParser& parser) {
    const struct {
        const char* name;
        double limit;
    } numbers[] = {{"latitude", 90}, {"longitude", 180}, {"altitude", 0}};
    for (const auto& n : numbers) {
        if (!isSet(parser, n.name)) continue;
        const QString problem =
            gpsValueProblem(QLatin1String(n.name), parser.value(QLatin1String(n.name)), n.limit);
        if (!problem.isEmpty()) return problem;
    }
    return {};
}

PhotoRemoval removalOf(const QCommandLineParser& parser) {
    if (isSet(parser, "all")) return PhotoRemoval::Privacy;
    if (isSet(parser, "exif-gps") || (isSet(parser, "exif") && isSet(parser, "gps")))
        return PhotoRemoval::ExifAndGPS;
    if (isSet(parser, "exif")) return PhotoRemoval::Exif;
    if (isSet(parser, "gps")) return PhotoRemoval::GPS;
    return PhotoRemoval::IPTC;
}

}  // namespace

bool isPhotoPath(const QString& path) {
    return isImagePath(path) && !isAudioPath(path) && !isVideoPath(path);
}

IKImageItemPtr photoRecordForWriting(const QString& path) {
    auto item = std::make_shared<IKImageItem>();
    item->filePath = path;
    item->fileName = QFileInfo(path).fileName();
    fillFileAttributes(*item);
    return item;
}

void addPhotoSetOptions(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("make"),
                      QStringLiteral("New camera make (photos: TIFF make)."),
                      QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("model"),
                      QStringLiteral("New camera model (photos: TIFF model)."),
                      QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("gps-date"),
                      QStringLiteral("New GPS date stamp, \"yyyy:MM:dd\" (photos)."),
                      QStringLiteral("DATE")});
    parser.addOption({QStringLiteral("gps-time"),
                      QStringLiteral("New GPS time stamp, \"HH:mm:ss\" in UTC (photos)."),
                      QStringLiteral("TIME")});
}

QString inapplicablePhotoOptions(const QCommandLineParser& parser, const QString& path) {
    QStringList given;
    if (isPhotoPath(path)) {
        for (const QString& name : parser.optionNames()) {
            const auto same = [&](const char* n) { return name == QLatin1String(n); };
            if (std::none_of(std::begin(kPhotoOptions), std::end(kPhotoOptions),
                             [&](const PhotoOption& o) { return same(o.name); }) &&
                std::none_of(std::begin(kGeneralOptions), std::end(kGeneralOptions), same) &&
                !given.contains(name))
                given << name;
        }
        return doesNotApply(given, QStringLiteral("photo"));
    }
    for (const char* name : kPhotoOnlyOptions)
        if (isSet(parser, name)) given << QLatin1String(name);
    return doesNotApply(given,
                        isAudioPath(path) ? QStringLiteral("audio") : QStringLiteral("video"));
}

PhotoWriteResult setPhotoFile(const QCommandLineParser& parser, const IKImageItem& item,
                              const StorageContext& storage, OutputBatch& batch) {
    // Nothing shown and nothing remembered: every option given is a changed
    // field, every other field is empty and left as the photo has it.
    PhotoEditorState editor;
    for (const PhotoOption& o : kPhotoOptions) {
        if (!isSet(parser, o.name)) continue;
        editor.*o.field = parser.value(QLatin1String(o.name));
        if (o.entry) editor.*o.entry = editor.*o.field;
        (o.group == Group::Basic    ? editor.basicInfoChange
         : o.group == Group::Camera ? editor.cameraInfoChange
                                    : editor.gpsInfoChange) = true;
    }
    if (editor.gpsInfoChange && (editor.gpsLatilab.isEmpty() || editor.gpsLongtlab.isEmpty())) {
        // A part of the position not given stays the photo's own: shown and
        // remembered as it is, so it is not rewritten and keeps its hemisphere.
        const PhotoEditorState shown =
            photoEditorStateFor(readPhotoProperties(item.filePath).properties);
        if (editor.gpsLatilab.isEmpty())
            editor.gpsLatilab = editor.latitudelab = editor.oldGpsLatiStr = shown.gpsLatilab;
        if (editor.gpsLongtlab.isEmpty())
            editor.gpsLongtlab = editor.longtitudelab = editor.oldGpsLongtStr = shown.gpsLongtlab;
        if (editor.gpsLatilab.isEmpty() || editor.gpsLongtlab.isEmpty())
            return PhotoWriteResult::skippedFile(
                item.filePath, QStringLiteral("the photo has no position: give both --latitude "
                                              "and --longitude"));
    }
    return ClickApplyChangeAction(item, editor, PhotoMode::Local, storage, batch);
}

void addPhotoStripOptions(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("iptc"), QStringLiteral("Photos: remove the IPTC group.")});
    parser.addOption({QStringLiteral("exif"), QStringLiteral("Photos: remove the Exif group.")});
    parser.addOption({QStringLiteral("exif-gps"),
                      QStringLiteral("Photos: remove the Exif and GPS groups (the same as "
                                     "--exif --gps).")});
}

QString photoStripUsageError(const QCommandLineParser& parser) {
    if (isSet(parser, "iptc") && !isSet(parser, "all") &&
        (isSet(parser, "exif") || isSet(parser, "gps") || isSet(parser, "exif-gps")))
        return QStringLiteral(
            "--iptc goes with no other flag but --all (strip the copy a second time)");
    return {};
}

QString inapplicablePhotoStripFlags(const QCommandLineParser& parser, const QString& kind) {
    QStringList given;
    for (const char* name : kPhotoStripFlags)
        if (isSet(parser, name)) given << QLatin1String(name);
    return doesNotApply(given, kind);
}

PhotoWriteResult stripPhotoFile(const QCommandLineParser& parser, const IKImageItem& item,
                                const StorageContext& storage, OutputBatch& batch) {
    if (isSet(parser, "tracks"))
        return PhotoWriteResult::skippedFile(item.filePath,
                                             QStringLiteral("--tracks does not apply to photos"));
    const bool flagged = isSet(parser, "all") || isSet(parser, "gps") ||
                         std::any_of(std::begin(kPhotoStripFlags), std::end(kPhotoStripFlags),
                                     [&](const char* name) { return isSet(parser, name); });
    if (!flagged)
        return PhotoWriteResult::skippedFile(
            item.filePath,
            QStringLiteral("photos need one of --iptc, --exif, --gps, --exif-gps or --all"));
    return removePhotoMetadata(item, removalOf(parser), PhotoMode::Local, storage, batch);
}

int runGps(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Writes a copy of each photo into the storage folder with the given position, as\n"
            "the GPS window's save does. All five values are required. The latitude and\n"
            "longitude are signed decimal degrees (south and west negative) and are stored as\n"
            "their magnitudes with the references N/S and E/W; the altitude is in metres\n"
            "(negative below sea level, stored with the reference \"below sea level\"). The\n"
            "values are merged into the photo's GPS group: its other GPS tags are kept. The\n"
            "GPS version, date stamp and time stamp are written too, and the copy's file\n"
            "dates are set to the GPS date and time when they read as a date\n"
            "(\"yyyy:MM:dd\" and \"HH:mm:ss\", or with dashes); otherwise the copy keeps the\n"
            "source's dates.") +
        QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    const struct {
        const char* name;
        const char* help;
        const char* value;
        QString PhotoEditorState::*field;
    } fields[] = {
        {"latitude", "Latitude, signed decimal degrees.", "DEG", &PhotoEditorState::latitudelab},
        {"longitude", "Longitude, signed decimal degrees.", "DEG",
         &PhotoEditorState::longtitudelab},
        {"altitude", "Altitude in metres.", "M", &PhotoEditorState::altitudelab},
        {"gps-date", "GPS date, \"yyyy:MM:dd\".", "DATE", &PhotoEditorState::dateStamplab},
        {"gps-time", "GPS time, \"HH:mm:ss\".", "TIME", &PhotoEditorState::timeStamplab},
    };
    for (const auto& f : fields)
        parser.addOption({QLatin1String(f.name), QLatin1String(f.help), QLatin1String(f.value)});
    const QString command = QStringLiteral("gps");
    if (const int code = parse(parser, command, args); code >= 0) return code;
    PhotoEditorState editor;
    for (const auto& f : fields) {
        editor.*f.field = parser.value(QLatin1String(f.name)).trimmed();
        if ((editor.*f.field).isEmpty())
            return usageError(command, QStringLiteral("Each value cannot be empty."));
    }
    if (const QString problem = gpsOptionsProblem(parser); !problem.isEmpty())
        return usageError(command, problem);
    return writePhotos(
        parser, [&](const IKImageItem& item, const StorageContext& storage, OutputBatch& batch) {
            return ClickSaveChangeGPSAction(item, editor, true, PhotoMode::Local, storage, batch);
        });
}

int runPhotoDate(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Writes a copy of each photo into the storage folder whose Exif original and\n"
            "digitized dates and TIFF date are the given date, as the date window's save\n"
            "does, and sets the copy's file dates to it (local time). The date reads as\n"
            "\"yyyy:MM:dd HH:mm:ss\" or \"yyyy-MM-dd HH:mm:ss\"; dashes are stored as colons.") +
        QLatin1String(kOutputHelp));
    addCommonOptions(parser);
    parser.addOption(
        {QStringLiteral("date"), QStringLiteral("The new date."), QStringLiteral("DATE")});
    const QString command = QStringLiteral("photo-date");
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const QString date = parser.value(QStringLiteral("date")).trimmed();
    if (!CheckDateFormatWithDateString(date))
        return usageError(command, QStringLiteral("Input the valid date format: YYYY:MM:DD "
                                                  "HH:MM:SS or YYYY-MM-DD HH:MM:SS"));
    return writePhotos(
        parser, [&](const IKImageItem& item, const StorageContext& storage, OutputBatch& batch) {
            return ClickDateChangedSaveAction(item, date, date, PhotoMode::Local, storage, batch);
        });
}

// The position options of `set` that do not read; "" when all do.
QString photoSetUsageError(const QCommandLineParser& parser) {
    return gpsOptionsProblem(parser);
}
