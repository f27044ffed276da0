// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/common/logging.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")
Q_LOGGING_CATEGORY(lcTagsmithUser, "tagsmith.user")

namespace {
constexpr qsizetype kMaxLines = 2000;
QtMessageHandler g_previousHandler = nullptr;

void activityHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (context.category) {
        const bool user = qstrcmp(context.category, "tagsmith.user") == 0;
        if (user || qstrcmp(context.category, "tagsmith") == 0) {
            const bool warning = type == QtWarningMsg || type == QtCriticalMsg;
            ActivityLog::instance().append(message, !user && !warning);
        }
    }
    if (g_previousHandler) g_previousHandler(type, context, message);
}
}  // namespace

ActivityLog& ActivityLog::instance() {
    static ActivityLog* log = new ActivityLog;  // lives until exit; used from any thread
    return *log;
}

void ActivityLog::install() {
    static std::once_flag once;
    std::call_once(once, [] { g_previousHandler = qInstallMessageHandler(activityHandler); });
}

QList<ActivityLog::Line> ActivityLog::entries() const {
    std::lock_guard lock(m_mutex);
    return m_lines;
}

QStringList ActivityLog::lines() const {
    QStringList texts;
    for (const Line& line : entries()) texts << line.text;
    return texts;
}

void ActivityLog::append(const QString& line, bool diagnostic) {
    {
        std::lock_guard lock(m_mutex);
        m_lines.append({line, diagnostic});
        if (m_lines.size() > kMaxLines) m_lines.remove(0, m_lines.size() - kMaxLines);
    }
    Q_EMIT lineAdded(line, diagnostic);
}
