// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>
#include <mutex>

// Services of the desktop that tests must not trigger: revealing a file in
// the file manager and opening an address in the browser. The program asks
// `DesktopIntegration::instance()`; tests install a recorder.
class DesktopIntegration {
public:
    virtual ~DesktopIntegration() = default;
    // Shows `path` selected in the file manager; `root` is the folder the
    // view should start from (the storage folder).
    virtual void revealFile(const QString& path, const QString& root) = 0;
    virtual bool openUrl(const QUrl& url) = 0;

    static DesktopIntegration& instance();
    // Replaces the service (tests); the previous one is destroyed.
    static void setInstance(std::unique_ptr<DesktopIntegration> service);
};

// The real desktop: the freedesktop file-manager call over D-Bus, falling
// back to opening the folder; URLs through the default handler.
class SystemDesktopIntegration : public DesktopIntegration {
public:
    void revealFile(const QString& path, const QString& root) override;
    bool openUrl(const QUrl& url) override;
};

// Records every request instead of carrying it out. Safe to use from the
// worker threads that finish exports.
class RecordingDesktopIntegration : public DesktopIntegration {
public:
    void revealFile(const QString& path, const QString& root) override;
    bool openUrl(const QUrl& url) override;

    QStringList revealed() const;
    QList<QUrl> opened() const;

private:
    mutable std::mutex m_mutex;
    QStringList m_revealed;
    QList<QUrl> m_opened;
};
