// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/camera/camera_worker.h"

#include <QTimer>

#include "core/camera/camera_import.h"
#include "core/common/logging.h"

CameraWorker::CameraWorker(int pollMilliseconds) : m_pollInterval(pollMilliseconds) {
    qRegisterMetaType<CameraPort>();
    qRegisterMetaType<CameraFileEntry>();
    qRegisterMetaType<QList<CameraPort>>();
}

CameraWorker::~CameraWorker() = default;

void CameraWorker::start() {
    if (!m_timer) {
        m_timer = new QTimer(this);
        connect(m_timer, &QTimer::timeout, this, &CameraWorker::poll);
    }
    poll();
    m_timer->start(m_pollInterval);
}

void CameraWorker::poll() {
    const QList<CameraPort> now = connectedCameras();
    if (m_polled && now == m_cameras) return;
    m_polled = true;
    m_cameras = now;
    // The camera in use is gone: its session goes with it.
    if (m_session && !m_cameras.contains(m_session->camera())) closeCamera();
    Q_EMIT camerasChanged(m_cameras);
}

void CameraWorker::openCamera(const CameraPort& camera) {
    closeCamera();
    QString error;
    m_session = CameraSession::open(camera, &error);
    Q_EMIT sessionOpened(camera, m_session ? QString() : error);
    if (!m_session) return;
    QString problem;
    // Each photo or movie is told as it is found: a phone's folders take a while.
    m_session->listFiles(&problem, [this](const CameraFileEntry& file) {
        for (const CameraFileEntry& entry : cameraMediaFiles({file})) {
            m_thumbnailQueue << entry;
            Q_EMIT fileListed(entry);
        }
    });
    if (!problem.isEmpty())
        qCWarning(lcTagsmith).noquote() << "camera not listed ==" << camera.port << problem;
    Q_EMIT listingFinished(int(m_thumbnailQueue.size()));
    QMetaObject::invokeMethod(this, &CameraWorker::nextThumbnail, Qt::QueuedConnection);
}

void CameraWorker::closeCamera() {
    m_thumbnailQueue.clear();
    m_session.reset();
}

void CameraWorker::nextThumbnail() {
    if (!m_session || m_thumbnailQueue.isEmpty()) return;
    const CameraFileEntry entry = m_thumbnailQueue.takeFirst();
    const QImage picture = cameraThumbnail(*m_session, entry);
    if (!picture.isNull()) Q_EMIT thumbnailReady(entry, picture);
    // Queued, so requests that came meanwhile run before the next one.
    QMetaObject::invokeMethod(this, &CameraWorker::nextThumbnail, Qt::QueuedConnection);
}

CameraSession* CameraWorker::sessionFor(const QString& what) {
    if (!m_session) qCWarning(lcTagsmith).noquote() << what << "without an open camera";
    return m_session.get();
}

void CameraWorker::download(const QList<CameraFileEntry>& files, const QString& storageFolder,
                            Purpose purpose, const std::shared_ptr<OutputBatch>& batch) {
    CameraSession* session = sessionFor(QStringLiteral("download"));
    for (const CameraFileEntry& entry : files) {
        if (!session) {
            Q_EMIT fileDownloaded(entry, {}, QStringLiteral("the camera is not open"), purpose);
            continue;
        }
        const PublishedCopy copy = downloadCameraFile(*session, entry, storageFolder, *batch, true);
        if (!copy.note.isEmpty()) qCInfo(lcTagsmithUser).noquote() << copy.note;
        Q_EMIT fileDownloaded(entry, copy.outputPath, copy.reason, purpose);
    }
}

void CameraWorker::remove(const QList<CameraFileEntry>& files) {
    CameraSession* session = sessionFor(QStringLiteral("delete"));
    for (const CameraFileEntry& entry : files) {
        m_thumbnailQueue.removeAll(entry);
        Q_EMIT fileRemoved(
            entry, session ? session->remove(entry) : QStringLiteral("the camera is not open"));
    }
}
