// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QCheckBox;
class QPlainTextEdit;

// The activity pane: what happened to the user's files, newest at the
// bottom. The "Details" switch adds the diagnostic lines. Lines written
// before the pane existed are shown too.
class ActivityView : public QWidget {
    Q_OBJECT
public:
    explicit ActivityView(QWidget* parent = nullptr);

    QCheckBox* detailsSwitch() const { return m_details; }
    QPlainTextEdit* textView() const { return m_text; }
    QString text() const;

private:
    void appendLine(const QString& line, bool diagnostic);
    void reload();

    QCheckBox* m_details = nullptr;
    QPlainTextEdit* m_text = nullptr;
};
