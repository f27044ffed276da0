// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

#include <functional>
#include <memory>

// Cameras and phones through libgphoto2 (PTP and MTP over USB, and the
// directory driver that serves a plain folder as a camera). Every call
// blocks on the device: run them on a worker thread. libgphoto2 is reached
// only through this file's implementation.

// A camera as the library finds it: the driver's model name and the port
// ("usb:001,004", or "disk:/path" for a folder).
struct CameraPort {
    QString model;
    QString port;
    // The name shown for the camera.
    QString displayName() const;
    bool operator==(const CameraPort&) const = default;
};

// The model of the directory driver, which lists a plain folder as a camera.
extern const char* const kDirectoryCameraModel;

// The camera at `port`: a "disk:PATH" port is the directory driver over
// PATH (an existing folder); any other port is looked up among the connected
// cameras. An empty model when no camera is there.
CameraPort cameraAtPort(const QString& port);

// The cameras connected now (only those the library detects by itself, which
// never includes a folder), followed by the folder that the environment
// variable TAGSMITH_CAMERA_PORT names as "disk:PATH" while that folder
// exists, so demonstrations and tests can plug and unplug a camera by
// creating and removing a folder.
QList<CameraPort> connectedCameras();
extern const char* const kCameraPortVariable;

// One file on a camera.
struct CameraFileEntry {
    QString folder;  // the camera's folder, "/" or "/DCIM/100CANON"
    QString name;
    QString mimeType;  // as the driver tells it; may be empty
    qint64 size = -1;
    QDateTime modified;
    // "folder/name", unique on the camera: what the command line prints and takes.
    QString itemPath() const;
    bool operator==(const CameraFileEntry& o) const { return folder == o.folder && name == o.name; }
};

// An open session on one camera. Not thread-safe: one thread at a time.
class CameraSession {
public:
    ~CameraSession();
    CameraSession(const CameraSession&) = delete;
    CameraSession& operator=(const CameraSession&) = delete;

    // Opens a session; null with the reason in `error` when it cannot be.
    static std::unique_ptr<CameraSession> open(const CameraPort& camera, QString* error);
    const CameraPort& camera() const { return m_camera; }

    // Every file in every folder of the camera, folders in the driver's
    // order, each also given to `each` as soon as it is found. Deep or huge
    // trees are cut off (logged). `error` tells why the root could not be listed.
    using FileFound = std::function<void(const CameraFileEntry&)>;
    QList<CameraFileEntry> listFiles(QString* error = nullptr, const FileFound& each = {});
    // The file at "folder/name" (as itemPath gives it), if the camera has it.
    bool findFile(const QString& itemPath, CameraFileEntry* entry);
    // The driver's preview picture; a null image when it has none.
    QImage preview(const CameraFileEntry& entry);
    // The whole file into the (existing) file at `path`; "" on success,
    // else why not.
    QString download(const CameraFileEntry& entry, const QString& path);
    // Deletes the file on the camera; "" on success, else why not.
    QString remove(const CameraFileEntry& entry);

private:
    struct Library;
    CameraSession(const CameraPort& camera, std::unique_ptr<Library> library);
    void listFolder(const QString& folder, int depth, QList<CameraFileEntry>& out,
                    const FileFound& each);
    bool entryAt(const QString& folder, const QString& name, CameraFileEntry* entry);

    CameraPort m_camera;
    std::unique_ptr<Library> m_lib;
};

Q_DECLARE_METATYPE(CameraPort)
Q_DECLARE_METATYPE(CameraFileEntry)
