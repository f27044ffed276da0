#pragma once

#include <QLoggingCategory>
#include <QObject>
#include <QStringList>

#include <mutex>

Q_DECLARE_LOGGING_CATEGORY(lcTagsmith)

// Keeps the most recent log lines for the in-app activity view and tells
// listeners of each new line. Lines also go on to stderr and the journal
// through Qt's default handler.
class ActivityLog : public QObject {
    Q_OBJECT
public:
    static ActivityLog& instance();

    // Installs the message handler that feeds the log; call once at start-up.
    static void install();

    QStringList lines() const;
    void append(const QString& line);

Q_SIGNALS:
    void lineAdded(const QString& line);

private:
    ActivityLog() = default;
    mutable std::mutex m_mutex;
    QStringList m_lines;
};
