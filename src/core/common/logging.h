// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QLoggingCategory>
#include <QObject>
#include <QStringList>

#include <mutex>

// Diagnostic lines: what the program decided and why, for a developer.
Q_DECLARE_LOGGING_CATEGORY(lcTagsmith)
// Lines for the user: what happened to their files, in their words
// ("clip.mov could not be read: ..."). Warnings of either category are
// user lines too.
Q_DECLARE_LOGGING_CATEGORY(lcTagsmithUser)

// Keeps the most recent log lines for the in-app activity view and tells
// listeners of each new line. Lines also go on to stderr and the journal
// through Qt's default handler.
class ActivityLog : public QObject {
    Q_OBJECT
public:
    struct Line {
        QString text;
        bool diagnostic = true;
    };

    static ActivityLog& instance();

    // Installs the message handler that feeds the log; call once at start-up.
    static void install();

    QList<Line> entries() const;
    // Every line's text, user and diagnostic alike.
    QStringList lines() const;
    void append(const QString& line, bool diagnostic = true);

Q_SIGNALS:
    void lineAdded(const QString& line, bool diagnostic);

private:
    ActivityLog() = default;
    mutable std::mutex m_mutex;
    QList<Line> m_lines;
};
