#include "core/common/logging.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

namespace {
constexpr qsizetype kMaxLines = 2000;
QtMessageHandler g_previousHandler = nullptr;

void activityHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (context.category && qstrcmp(context.category, "tagsmith") == 0) {
        ActivityLog::instance().append(message);
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

QStringList ActivityLog::lines() const {
    std::lock_guard lock(m_mutex);
    return m_lines;
}

void ActivityLog::append(const QString& line) {
    {
        std::lock_guard lock(m_mutex);
        m_lines.append(line);
        if (m_lines.size() > kMaxLines) m_lines.remove(0, m_lines.size() - kMaxLines);
    }
    Q_EMIT lineAdded(line);
}
