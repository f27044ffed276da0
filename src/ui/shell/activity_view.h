#pragma once

#include <QPlainTextEdit>

// The activity view: the program's log lines as they are written, newest at
// the bottom. Lines written before the view existed are shown too.
class ActivityView : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit ActivityView(QWidget* parent = nullptr);

private:
    void appendLine(const QString& line);
};
