// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/desktop_integration.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>

#include "core/common/logging.h"

namespace {
std::unique_ptr<DesktopIntegration>& current() {
    static std::unique_ptr<DesktopIntegration> service =
        std::make_unique<SystemDesktopIntegration>();
    return service;
}
}  // namespace

DesktopIntegration& DesktopIntegration::instance() {
    return *current();
}

void DesktopIntegration::setInstance(std::unique_ptr<DesktopIntegration> service) {
    if (service) current() = std::move(service);
}

void SystemDesktopIntegration::revealFile(const QString& path, const QString& root) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 3000);
    if (reply.type() != QDBusMessage::ErrorMessage) return;
    qCInfo(lcTagsmith) << "file manager did not answer; opening the folder instead =="
                       << reply.errorMessage();
    const QString folder = QFileInfo(path).absolutePath();
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder.isEmpty() ? root : folder));
}

bool SystemDesktopIntegration::openUrl(const QUrl& url) {
    return QDesktopServices::openUrl(url);
}

void RecordingDesktopIntegration::revealFile(const QString& path, const QString&) {
    std::lock_guard lock(m_mutex);
    m_revealed.append(path);
}

bool RecordingDesktopIntegration::openUrl(const QUrl& url) {
    std::lock_guard lock(m_mutex);
    m_opened.append(url);
    return true;
}

QStringList RecordingDesktopIntegration::revealed() const {
    std::lock_guard lock(m_mutex);
    return m_revealed;
}

QList<QUrl> RecordingDesktopIntegration::opened() const {
    std::lock_guard lock(m_mutex);
    return m_opened;
}
