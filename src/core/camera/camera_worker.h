// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

#include "core/camera/camera_device.h"
#include "core/common/output_files.h"

class QTimer;

// The device side of the camera browser, living on a thread of its own so a
// slow or hanging device never stops the window. Every call is made on the
// worker's thread (QMetaObject::invokeMethod); every answer is a signal,
// delivered to the window's thread by queued connections.
//
// It polls the connected cameras for hot-plug, keeps one session open on the
// camera in use, lists its photos and movies, then fetches their
// thumbnails one at a time, between which downloads and deletions run.
class CameraWorker : public QObject {
    Q_OBJECT
public:
    // What a download is for; handed back with each downloaded file.
    enum Purpose { Save, Edit, GpsWindow };

    explicit CameraWorker(int pollMilliseconds = 2000);
    ~CameraWorker() override;

    // Polls now and then at the worker's interval.
    void start();
    void poll();
    // Opens a session on `camera` (closing any other) and lists its files.
    void openCamera(const CameraPort& camera);
    void closeCamera();
    void download(const QList<CameraFileEntry>& files, const QString& storageFolder,
                  Purpose purpose, const std::shared_ptr<OutputBatch>& batch);
    void remove(const QList<CameraFileEntry>& files);

Q_SIGNALS:
    // The connected cameras changed (also once after start()).
    void camerasChanged(const QList<CameraPort>& cameras);
    // A session was opened ("" as error) or could not be.
    void sessionOpened(const CameraPort& camera, const QString& error);
    // One photo or movie of the camera; a sound recording or other file is
    // never told.
    void fileListed(const CameraFileEntry& entry);
    void listingFinished(int count);
    void thumbnailReady(const CameraFileEntry& entry, const QImage& picture);
    // A download ended: the new file's path, or "" and the reason.
    void fileDownloaded(const CameraFileEntry& entry, const QString& path, const QString& reason,
                        int purpose);
    // A deletion ended: "" or why the file is still there.
    void fileRemoved(const CameraFileEntry& entry, const QString& reason);

private:
    void nextThumbnail();
    CameraSession* sessionFor(const QString& what);

    int m_pollInterval;
    QTimer* m_timer = nullptr;
    QList<CameraPort> m_cameras;
    bool m_polled = false;
    std::unique_ptr<CameraSession> m_session;
    QList<CameraFileEntry> m_thumbnailQueue;
};
