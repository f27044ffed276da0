// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/single_instance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QTimer>

#include "app/app_delegate.h"
#include "core/common/logging.h"

namespace {
// Long enough for a busy window to answer; it replies before importing.
constexpr int kCallTimeoutMs = 10000;
}  // namespace

bool handToRunningInstance(const QStringList& paths) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCInfo(lcTagsmith) << "no session bus, running on its own";
        return false;
    }
    const QString service = QString::fromLatin1(kBusService);
    if (!bus.interface() || !bus.interface()->isServiceRegistered(service)) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(service, QString::fromLatin1(kBusPath),
                                                       QString::fromLatin1(kBusInterface),
                                                       QStringLiteral("OpenPaths"));
    call << paths;
    const QDBusMessage reply = bus.call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qCWarning(lcTagsmith).noquote()
            << "the running window did not take the paths:" << reply.errorMessage();
        return false;
    }
    qCInfo(lcTagsmith) << "paths handed to the running window ==" << paths;
    return true;
}

WindowBusObject::WindowBusObject(AppDelegate& app, QObject* parent) : QObject(parent), m_app(app) {}

bool WindowBusObject::registerOnBus() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    if (!bus.registerObject(QString::fromLatin1(kBusPath), this,
                            QDBusConnection::ExportScriptableSlots)) {
        qCWarning(lcTagsmith) << "bus object not registered:" << bus.lastError().message();
        return false;
    }
    if (!bus.registerService(QString::fromLatin1(kBusService))) {
        bus.unregisterObject(QString::fromLatin1(kBusPath));
        return false;
    }
    return true;
}

void WindowBusObject::OpenPaths(const QStringList& paths) {
    // Queued: a question the import asks must not hold the caller's reply.
    QTimer::singleShot(0, &m_app, [app = &m_app, paths] {
        app->raiseMainWindow();
        app->openPaths(paths);
    });
}

QStringList WindowBusObject::ListedFiles() const {
    QStringList paths;
    for (const IKImageItemPtr& item : std::as_const(m_app.localPhotoItemArray))
        paths << item->filePath;
    return paths;
}
