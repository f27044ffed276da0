// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the window tests share: the real controller launched over a settings
// file of its own, rows selected as a user would, and questions answered by
// the button a test names (each question noted in `asked`).
#include <QAbstractButton>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "app/app_delegate.h"
#include "ui/library/media_table_model.h"
#include "ui/library/pr_drag_table_view.h"
#include "ui/shell/main_window.h"

struct UiSession {
    QTemporaryDir dir;
    QSettings settings{dir.filePath("tagsmith.ini"), QSettings::IniFormat};
    std::unique_ptr<AppDelegate> app;
    QStringList asked;

    // Launches (again, the older controller gone first); with `storage`, the
    // outputs go to that folder of `dir`.
    AppDelegate& launch(const QString& storage = {}, bool quiet = false) {
        app.reset();
        if (!storage.isEmpty()) settings.setValue("storagePath", dir.filePath(storage));
        app = std::make_unique<AppDelegate>(settings);
        app->setQuietAlerts(quiet);
        app->awakeFromNib();
        app->applicationDidFinishLaunching();
        return *app;
    }
    bool importAndWait(const QStringList& paths) {
        return app->tableViewAcceptDrop(paths) &&
               QTest::qWaitFor([this] { return !app->importRunning(); }, 60000);
    }
    void selectRow(int row) {
        app->dragtableView->clearSelection();
        app->dragtableView->selectionModel()->select(
            app->mediaController->index(row, 0),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    void answerWith(const QString& press) {
        asked.clear();
        app->setQuestionAnswerer([this, press](QMessageBox& question) -> QAbstractButton* {
            asked << question.text();
            for (QAbstractButton* b : question.buttons())
                if (b->text() == press) return b;
            return nullptr;
        });
    }
};
