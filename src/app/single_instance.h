// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

class AppDelegate;

// One window per user session. The running program owns a well-known name
// on the session bus with an object whose `OpenPaths` takes the paths of a
// later launch; that launch hands its paths over and ends. Without a
// session bus every launch runs on its own.
inline constexpr const char* kBusService = "io.github.tagsmith.Tagsmith";
inline constexpr const char* kBusPath = "/io/github/tagsmith/Tagsmith";
inline constexpr const char* kBusInterface = "io.github.tagsmith.Tagsmith.Window";

// Hands `paths` (absolute) to the program already running in this session,
// which raises its window. False when none runs or it did not answer: the
// caller then runs on its own.
bool handToRunningInstance(const QStringList& paths);

// The running window's object on the bus.
class WindowBusObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.github.tagsmith.Tagsmith.Window")
public:
    explicit WindowBusObject(AppDelegate& app, QObject* parent = nullptr);

    // Registers the object, then the name. False without a bus, or when
    // another program took the name first.
    bool registerOnBus();

public Q_SLOTS:
    // Imports the paths as if dropped on the window and raises it. Returns at
    // once: the import, and any question it asks, come after the reply.
    Q_SCRIPTABLE void OpenPaths(const QStringList& paths);
    // The paths of the records in the list, in import order.
    Q_SCRIPTABLE QStringList ListedFiles() const;

private:
    AppDelegate& m_app;
};
