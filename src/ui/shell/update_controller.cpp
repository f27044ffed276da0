// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/update_controller.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/common/desktop_integration.h"

namespace {

QPushButton* buttonIn(QDialog* window, const QString& title, const QString& tip) {
    auto* button = new QPushButton(title, window);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

QLabel* labelIn(QDialog* window, const char* name, const QString& accessible) {
    auto* label = new QLabel(window);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setAccessibleName(accessible);
    return label;
}

}  // namespace

PRUpdateController::PRUpdateController(const QUrl& documentUrl, const QUrl& downloadUrl,
                                       QWidget* parent)
    : QObject(parent), m_documentUrl(documentUrl), m_downloadUrl(downloadUrl) {
    updateWindow = new QDialog(parent);
    updateWindow->setObjectName(QStringLiteral("UpdateWindow"));
    updateWindow->setWindowTitle(tr("Software Update"));
    updateWindow->setAccessibleName(tr("Software update"));
    auto* layout = new QVBoxLayout(updateWindow);
    newversionlab = labelIn(updateWindow, "newversionlab", tr("New version"));
    currentversionlab = labelIn(updateWindow, "currentversionlab", tr("Version in use"));
    whatsnewContentView = new QPlainTextEdit(updateWindow);
    whatsnewContentView->setObjectName(QStringLiteral("whatsnewContentView"));
    whatsnewContentView->setReadOnly(true);
    whatsnewContentView->setToolTip(tr("What is new in this version"));
    whatsnewContentView->setAccessibleName(tr("Release notes"));
    bottomImageView = labelIn(updateWindow, "bottomImageView", tr("Tagsmith"));
    bottomImageView->setPixmap(QIcon(QStringLiteral(":/icons/tagsmith.svg")).pixmap(48, 48));
    notNowButton = buttonIn(updateWindow, tr(" Not Now "), tr("Close this window"));
    downloadButton =
        buttonIn(updateWindow, tr(" Download "), tr("Open the download page in the browser"));
    downloadButton->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(bottomImageView);
    buttons->addStretch(1);
    buttons->addWidget(notNowButton);
    buttons->addWidget(downloadButton);
    layout->addWidget(newversionlab);
    layout->addWidget(currentversionlab);
    layout->addWidget(whatsnewContentView, 1);
    layout->addLayout(buttons);

    noUpdateWindow = new QDialog(parent);
    noUpdateWindow->setObjectName(QStringLiteral("noUpdateWindow"));
    noUpdateWindow->setWindowTitle(tr("Software Update"));
    noUpdateWindow->setAccessibleName(tr("No update"));
    auto* noLayout = new QVBoxLayout(noUpdateWindow);
    QLabel* latest = labelIn(noUpdateWindow, "noUpdateText", tr("No update"));
    latest->setText(tr("You are using the latest version of Tagsmith."));
    okButton = buttonIn(noUpdateWindow, tr(" Ok "), tr("Close this window"));
    noLayout->addWidget(latest);
    noLayout->addWidget(okButton, 0, Qt::AlignRight);

    connect(notNowButton, &QPushButton::clicked, this, &PRUpdateController::ClickNotNowAction);
    connect(downloadButton, &QPushButton::clicked, this,
            &PRUpdateController::ClickGoDownloadAction);
    connect(okButton, &QPushButton::clicked, this, &PRUpdateController::ClickOkAction);
    connect(&m_check, &UpdateCheck::answered, this, &PRUpdateController::showAnswer);
    hidUpdateWindow();
}

PRUpdateController::~PRUpdateController() {
    delete updateWindow;
    delete noUpdateWindow;
}

void PRUpdateController::CheckforUpdateAction() {
    checkUpdate = true;
    checkServerVersion();
}

void PRUpdateController::checkServerVersion() {
    m_check.checkServerVersion(m_documentUrl, currentVersion);
}

void PRUpdateController::hidUpdateWindow() {
    currentVersion = QCoreApplication::applicationVersion();
    updateWindow->hide();
}

void PRUpdateController::ClickNotNowAction() {
    updateWindow->hide();
}

void PRUpdateController::ClickGoDownloadAction() {
    DesktopIntegration::instance().openUrl(m_downloadUrl);
}

void PRUpdateController::ClickOkAction() {
    noUpdateWindow->hide();
}

void PRUpdateController::showAnswer(const UpdateAnswer& answer) {
    // A failed download or a document that is no dictionary is only logged.
    if (answer.kind == UpdateAnswer::Newer) {
        lastestVersion = answer.lastestVersion;
        whatsnewString = answer.whatsnewString;
        newversionlab->setText(newVersionText(lastestVersion));
        currentversionlab->setText(currentVersionText(currentVersion));
        whatsnewContentView->setPlainText(whatsnewString);
        bringToFront(updateWindow);
    } else if (answer.kind == UpdateAnswer::NotNewer && checkUpdate) {
        bringToFront(noUpdateWindow);
    }
    Q_EMIT checkFinished();
}

void PRUpdateController::bringToFront(QDialog* window) {
    window->show();
    window->raise();
    window->activateWindow();
}
