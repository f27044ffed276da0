// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include "core/app/update_check.h"

class QDialog;
class QLabel;
class QPlainTextEdit;
class QPushButton;

// The update check's windows: the update window (the new version, the
// version in use, the release notes, "Not Now" and "Download") and the
// window saying no update exists, shown only when the user asked.
class PRUpdateController : public QObject {
    Q_OBJECT
public:
    PRUpdateController(const QUrl& documentUrl, const QUrl& downloadUrl, QWidget* parent);
    ~PRUpdateController() override;

    // The menu's "Check for Updates...": the answer that no update exists
    // is shown too from now on.
    void CheckforUpdateAction();
    void checkServerVersion();
    // Takes the version in use and hides the update window.
    void hidUpdateWindow();
    void ClickNotNowAction();
    void ClickGoDownloadAction();
    void ClickOkAction();

    QDialog* updateWindow = nullptr;
    QDialog* noUpdateWindow = nullptr;
    QLabel* newversionlab = nullptr;
    QLabel* currentversionlab = nullptr;
    QPlainTextEdit* whatsnewContentView = nullptr;
    QLabel* bottomImageView = nullptr;
    QPushButton *notNowButton = nullptr, *downloadButton = nullptr, *okButton = nullptr;

    QString currentVersion;
    QString lastestVersion;
    QString whatsnewString;
    bool checkUpdate = false;

Q_SIGNALS:
    // Every check's end (tests wait for it).
    void checkFinished();

private:
    void showAnswer(const UpdateAnswer& answer);
    static void bringToFront(QDialog* window);

    UpdateCheck m_check;
    QUrl m_documentUrl;
    QUrl m_downloadUrl;
};
