#include "ui/shell/activity_view.h"

#include "core/common/logging.h"

namespace {
constexpr int kMaxBlocks = 2000;
}

ActivityView::ActivityView(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("activityView"));
    setReadOnly(true);
    setMaximumBlockCount(kMaxBlocks);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    for (const QString& line : ActivityLog::instance().lines()) appendLine(line);
    // Lines may come from import threads; the queued hop lands them here.
    connect(&ActivityLog::instance(), &ActivityLog::lineAdded, this, &ActivityView::appendLine,
            Qt::QueuedConnection);
}

void ActivityView::appendLine(const QString& line) {
    appendPlainText(line);
}
