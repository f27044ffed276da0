// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/camera/camera_device.h"

#include <QFile>
#include <QFileInfo>
#include <QtGlobal>

#include <mutex>

#include <fcntl.h>
#include <gphoto2/gphoto2.h>
#include <unistd.h>

#include "core/common/logging.h"

const char* const kDirectoryCameraModel = "Directory Browse";
const char* const kCameraPortVariable = "TAGSMITH_CAMERA_PORT";

namespace {

constexpr int kMaxFolderDepth = 32;
constexpr int kMaxFiles = 200000;

QString resultText(int code) {
    return QString::fromUtf8(gp_result_as_string(code));
}

// The drivers' table is loaded once (it opens every driver module) and only
// read afterwards.
CameraAbilitiesList* abilities() {
    static std::once_flag once;
    static CameraAbilitiesList* list = nullptr;
    std::call_once(once, [] {
        gp_abilities_list_new(&list);
        if (gp_abilities_list_load(list, nullptr) < GP_OK)
            qCWarning(lcTagsmith) << "camera drivers could not be loaded";
    });
    return list;
}

// A fresh list of ports: USB devices come and go.
struct PortList {
    PortList() {
        gp_port_info_list_new(&list);
        if (gp_port_info_list_load(list) < GP_OK)
            qCWarning(lcTagsmith) << "camera ports could not be listed";
    }
    ~PortList() { gp_port_info_list_free(list); }
    GPPortInfoList* list = nullptr;
};

struct NameList {
    NameList() { gp_list_new(&list); }
    ~NameList() { gp_list_unref(list); }
    int count() const { return qMax(0, gp_list_count(list)); }
    QString name(int i) const {
        const char* n = nullptr;
        gp_list_get_name(list, i, &n);
        return QString::fromUtf8(n ? n : "");
    }
    QString value(int i) const {
        const char* v = nullptr;
        gp_list_get_value(list, i, &v);
        return QString::fromUtf8(v ? v : "");
    }
    CameraList* list = nullptr;
};

QList<CameraPort> detectedCameras() {
    PortList ports;
    NameList found;
    if (gp_abilities_list_detect(abilities(), ports.list, found.list, nullptr) < GP_OK) return {};
    QList<CameraPort> cameras;
    for (int i = 0; i < found.count(); ++i) cameras << CameraPort{found.name(i), found.value(i)};
    return cameras;
}

}  // namespace

QString CameraPort::displayName() const {
    if (model == QLatin1String(kDirectoryCameraModel)) return port.mid(5);  // "disk:"
    return model;
}

QString CameraFileEntry::itemPath() const {
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

CameraPort cameraAtPort(const QString& port) {
    if (port.startsWith(QLatin1String("disk:")))
        return QFileInfo(port.mid(5)).isDir()
                   ? CameraPort{QString::fromLatin1(kDirectoryCameraModel), port}
                   : CameraPort{};
    for (const CameraPort& camera : detectedCameras())
        if (camera.port == port) return camera;
    return {};
}

QList<CameraPort> connectedCameras() {
    QList<CameraPort> cameras = detectedCameras();
    const QString folder = qEnvironmentVariable(kCameraPortVariable);
    if (folder.startsWith(QLatin1String("disk:"))) {
        const CameraPort camera = cameraAtPort(folder);
        if (!camera.model.isEmpty()) cameras << camera;
    }
    return cameras;
}

struct CameraSession::Library {
    ~Library() {
        if (camera) {
            gp_camera_exit(camera, context);
            gp_camera_unref(camera);
        }
        gp_context_unref(context);
    }
    Camera* camera = nullptr;
    GPContext* context = gp_context_new();
};

CameraSession::CameraSession(const CameraPort& camera, std::unique_ptr<Library> library)
    : m_camera(camera), m_lib(std::move(library)) {}

CameraSession::~CameraSession() = default;

std::unique_ptr<CameraSession> CameraSession::open(const CameraPort& camera, QString* error) {
    auto fail = [&](const QString& why) {
        qCWarning(lcTagsmith).noquote() << "camera not opened ==" << camera.port << why;
        if (error) *error = why;
        return nullptr;
    };
    const QByteArray model = camera.model.toUtf8(), port = camera.port.toUtf8();
    const int m = gp_abilities_list_lookup_model(abilities(), model.constData());
    if (m < GP_OK) return fail(QStringLiteral("no driver for %1").arg(camera.model));
    CameraAbilities a;
    gp_abilities_list_get_abilities(abilities(), m, &a);
    PortList ports;
    const int p = gp_port_info_list_lookup_path(ports.list, port.constData());
    GPPortInfo info;
    if (p < GP_OK || gp_port_info_list_get_info(ports.list, p, &info) < GP_OK)
        return fail(QStringLiteral("no port %1").arg(camera.port));
    auto lib = std::make_unique<Library>();
    gp_camera_new(&lib->camera);
    int r = gp_camera_set_abilities(lib->camera, a);
    if (r >= GP_OK) r = gp_camera_set_port_info(lib->camera, info);
    if (r >= GP_OK) r = gp_camera_init(lib->camera, lib->context);
    if (r < GP_OK) return fail(resultText(r));
    return std::unique_ptr<CameraSession>(new CameraSession(camera, std::move(lib)));
}

bool CameraSession::entryAt(const QString& folder, const QString& name, CameraFileEntry* entry) {
    CameraFileInfo info{};
    const QByteArray f = folder.toUtf8(), n = name.toUtf8();
    *entry = CameraFileEntry{folder, name, {}, -1, {}};
    if (gp_camera_file_get_info(m_lib->camera, f.constData(), n.constData(), &info,
                                m_lib->context) < GP_OK)
        return false;
    if (info.file.fields & GP_FILE_INFO_TYPE) entry->mimeType = QString::fromLatin1(info.file.type);
    if (info.file.fields & GP_FILE_INFO_SIZE) entry->size = qint64(info.file.size);
    if ((info.file.fields & GP_FILE_INFO_MTIME) && info.file.mtime > 0)
        entry->modified = QDateTime::fromSecsSinceEpoch(info.file.mtime);
    return true;
}

void CameraSession::listFolder(const QString& folder, int depth, QList<CameraFileEntry>& out,
                               const FileFound& each) {
    const QByteArray f = folder.toUtf8();
    NameList files;
    if (const int r =
            gp_camera_folder_list_files(m_lib->camera, f.constData(), files.list, m_lib->context);
        r < GP_OK) {
        qCWarning(lcTagsmith).noquote() << "camera folder not listed ==" << folder << resultText(r);
        return;
    }
    for (int i = 0; i < files.count() && out.size() < kMaxFiles; ++i) {
        CameraFileEntry entry;
        entryAt(folder, files.name(i), &entry);  // without its facts when they are not told
        out << entry;
        if (each) each(entry);
    }
    if (out.size() >= kMaxFiles) {
        qCWarning(lcTagsmith) << "camera lists more than" << kMaxFiles << "files; the rest is left";
        return;
    }
    NameList folders;
    if (gp_camera_folder_list_folders(m_lib->camera, f.constData(), folders.list, m_lib->context) <
        GP_OK)
        return;
    if (depth >= kMaxFolderDepth && folders.count() > 0) {
        qCWarning(lcTagsmith).noquote()
            << "camera folders nested too deep, not listed ==" << folder;
        return;
    }
    for (int i = 0; i < folders.count(); ++i)
        listFolder(CameraFileEntry{folder, folders.name(i), {}, -1, {}}.itemPath(), depth + 1, out,
                   each);
}

QList<CameraFileEntry> CameraSession::listFiles(QString* error, const FileFound& each) {
    QList<CameraFileEntry> out;
    NameList probe;
    if (const int r = gp_camera_folder_list_files(m_lib->camera, "/", probe.list, m_lib->context);
        r < GP_OK && error)
        *error = resultText(r);
    listFolder(QStringLiteral("/"), 0, out, each);
    return out;
}

bool CameraSession::findFile(const QString& itemPath, CameraFileEntry* entry) {
    const qsizetype slash = itemPath.lastIndexOf(QLatin1Char('/'));
    // Only the camera's own folders: no way up out of a folder served as a camera.
    if (slash < 0 || itemPath.contains(QLatin1String("/../")) ||
        itemPath.endsWith(QLatin1String("/..")) || slash + 1 == itemPath.size())
        return false;
    return entryAt(slash == 0 ? QStringLiteral("/") : itemPath.left(slash), itemPath.mid(slash + 1),
                   entry);
}

QImage CameraSession::preview(const CameraFileEntry& entry) {
    CameraFile* file = nullptr;
    gp_file_new(&file);
    const QByteArray f = entry.folder.toUtf8(), n = entry.name.toUtf8();
    QImage picture;
    if (gp_camera_file_get(m_lib->camera, f.constData(), n.constData(), GP_FILE_TYPE_PREVIEW, file,
                           m_lib->context) >= GP_OK) {
        const char* data = nullptr;
        unsigned long size = 0;
        if (gp_file_get_data_and_size(file, &data, &size) >= GP_OK && data && size > 0 &&
            size < (64ul << 20))
            picture.loadFromData(reinterpret_cast<const uchar*>(data), int(size));
    }
    gp_file_unref(file);
    return picture;
}

QString CameraSession::download(const CameraFileEntry& entry, const QString& path) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) return QStringLiteral("the file could not be written");
    CameraFile* file = nullptr;
    // The file takes the descriptor and closes it.
    if (gp_file_new_from_fd(&file, fd) < GP_OK) {
        ::close(fd);
        return QStringLiteral("the file could not be written");
    }
    const QByteArray f = entry.folder.toUtf8(), n = entry.name.toUtf8();
    const int r = gp_camera_file_get(m_lib->camera, f.constData(), n.constData(),
                                     GP_FILE_TYPE_NORMAL, file, m_lib->context);
    gp_file_unref(file);
    if (r < GP_OK) {
        qCWarning(lcTagsmith).noquote()
            << "camera download failed ==" << entry.itemPath() << resultText(r);
        return QStringLiteral("the camera did not give the file (%1)").arg(resultText(r));
    }
    return {};
}

QString CameraSession::remove(const CameraFileEntry& entry) {
    const QByteArray f = entry.folder.toUtf8(), n = entry.name.toUtf8();
    const int r =
        gp_camera_file_delete(m_lib->camera, f.constData(), n.constData(), m_lib->context);
    if (r >= GP_OK) return {};
    qCWarning(lcTagsmith).noquote()
        << "camera delete failed ==" << entry.itemPath() << resultText(r);
    return QStringLiteral("the camera did not delete the file (%1)").arg(resultText(r));
}
