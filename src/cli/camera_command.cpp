// SPDX-License-Identifier: GPL-3.0-or-later
// tagsmith-cli camera: the camera browser's list, download and delete on the
// command line, over libgphoto2 (a folder through its directory driver).
#include <QCommandLineParser>
#include <QTextStream>

#include <cstdio>

#include "cli/cli_common.h"
#include "cli/commands.h"
#include "core/camera/camera_device.h"
#include "core/camera/camera_import.h"

namespace {

const char* const kCameraHelp =
    "Lists, downloads or deletes the photos and movies of a camera or phone\n"
    "(PTP or MTP over USB). Other files on the camera (sound recordings, documents)\n"
    "are never listed, downloaded or deleted.\n"
    "\n"
    "  list                 print the camera's photos and movies, one FOLDER/NAME a line\n"
    "  download [ITEM...]   copy the named items (all photos and movies when none is\n"
    "                       named) into the storage folder, dated as on the camera\n"
    "  delete [--yes] ITEM...\n"
    "                       delete the items on the camera, after the question the\n"
    "                       camera window asks (answered on stdin) unless --yes\n"
    "\n"
    "ITEM is a FOLDER/NAME path as `list` prints it. Without --port the first\n"
    "connected camera is used, else the folder that TAGSMITH_CAMERA_PORT names\n"
    "as disk:PATH. --port disk:PATH reads a plain folder as a camera.";

int fail(const QString& message) {
    std::fprintf(stderr, "tagsmith-cli camera: %s\n", qPrintable(message));
    return 1;
}

// The question of the camera window's delete; true when answered yes.
bool confirmDelete() {
    std::fputs("Are you sure you want to delete the selected photo ? [Delete/Cancel] ", stderr);
    std::fflush(stderr);
    const QString answer = QTextStream(stdin).readLine().trimmed().toLower();
    return answer == QLatin1String("delete") || answer == QLatin1String("d") ||
           answer == QLatin1String("y") || answer == QLatin1String("yes");
}

// The camera files the ITEM arguments name, each reported when it is not one.
QList<CameraFileEntry> namedItems(CameraSession& session, const QStringList& items,
                                  FileReport& report) {
    QList<CameraFileEntry> found;
    for (const QString& item : items) {
        CameraFileEntry entry;
        if (!session.findFile(item, &entry))
            report.failed(QStringLiteral("%1: no such item on the camera").arg(item));
        else if (cameraItemKind(entry).isEmpty())
            report.skipped(QStringLiteral("%1: not a photo or movie").arg(item));
        else
            found << entry;
    }
    return found;
}

}  // namespace

int runCamera(const QStringList& args) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kCameraHelp) + QLatin1String(kOutputHelp));
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("storage"),
         QStringLiteral("Folder for the downloads (default: the app's storage folder)."),
         QStringLiteral("DIR")});
    parser.addPositionalArgument(QStringLiteral("ACTION"),
                                 QStringLiteral("list, download or delete."));
    parser.addPositionalArgument(QStringLiteral("ITEM"), QStringLiteral("FOLDER/NAME paths."),
                                 QStringLiteral("[ITEM...]"));
    parser.addOption({QStringLiteral("port"),
                      QStringLiteral("The camera's port (usb:BUS,DEVICE or disk:PATH)."),
                      QStringLiteral("PORT")});
    parser.addOption(
        {QStringLiteral("yes"), QStringLiteral("Delete without asking (delete only).")});
    const QString command = QStringLiteral("camera");
    if (const int code = parse(parser, command, args); code >= 0) return code;
    const QString action = parser.positionalArguments().first();
    const QStringList items = parser.positionalArguments().mid(1);
    if (action != QLatin1String("list") && action != QLatin1String("download") &&
        action != QLatin1String("delete"))
        return usageError(command, QStringLiteral("unknown action '%1'").arg(action));
    if (action == QLatin1String("list") && !items.isEmpty())
        return usageError(command, QStringLiteral("list takes no ITEM"));
    if (action == QLatin1String("delete") && items.isEmpty())
        return usageError(command, QStringLiteral("delete needs at least one ITEM"));

    CameraPort camera;
    if (parser.isSet(QStringLiteral("port"))) {
        camera = cameraAtPort(parser.value(QStringLiteral("port")));
        if (camera.model.isEmpty())
            return fail(
                QStringLiteral("no camera at %1").arg(parser.value(QStringLiteral("port"))));
    } else {
        const QList<CameraPort> cameras = connectedCameras();
        if (cameras.isEmpty()) return fail(QStringLiteral("no camera or phone is connected"));
        camera = cameras.first();
    }
    QString error;
    const std::unique_ptr<CameraSession> session = CameraSession::open(camera, &error);
    if (!session)
        return fail(QStringLiteral("%1 could not be opened: %2").arg(camera.displayName(), error));

    FileReport report;
    if (action == QLatin1String("list")) {
        const QList<CameraFileEntry> all = session->listFiles(&error);
        if (!error.isEmpty())
            return fail(QStringLiteral("the camera was not listed: %1").arg(error));
        for (const CameraFileEntry& entry : cameraMediaFiles(all)) report.written(entry.itemPath());
        return 0;
    }
    const QList<CameraFileEntry> files = items.isEmpty() ? cameraMediaFiles(session->listFiles())
                                                         : namedItems(*session, items, report);
    if (action == QLatin1String("download")) {
        const QString storage = resolveStorage(parser);
        OutputBatch batch;
        for (const CameraFileEntry& entry : files) {
            const PublishedCopy copy = downloadCameraFile(*session, entry, storage, batch, false);
            if (!copy.note.isEmpty())
                std::fprintf(stderr, "tagsmith-cli: %s: %s\n", qPrintable(entry.itemPath()),
                             qPrintable(copy.note));
            copy.ok() ? report.written(copy.outputPath)
                      : report.failed(QStringLiteral("%1: %2").arg(entry.itemPath(), copy.reason));
        }
        return report.exitCode();
    }
    if (!files.isEmpty() && !parser.isSet(QStringLiteral("yes")) && !confirmDelete()) {
        std::fputs("tagsmith-cli camera: nothing deleted\n", stderr);
        return 1;
    }
    for (const CameraFileEntry& entry : files) {
        const QString problem = session->remove(entry);
        problem.isEmpty() ? report.written(entry.itemPath())
                          : report.failed(QStringLiteral("%1: %2").arg(entry.itemPath(), problem));
    }
    return report.exitCode();
}
