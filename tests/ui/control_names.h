// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Every control needs a name for assistive technology (its own, its text or
// its buddy label's) and a tooltip. Qt's inner parts (scroll bars, headers,
// a combo box's list, a dock's buttons, file dialogs) are left out.
#include <QAccessible>
#include <QtWidgets>

template <typename... Types>
bool isAnyOf(const QWidget* w) {
    return (... || (qobject_cast<const Types*>(w) != nullptr));
}

// "class objectName (what is missing)" for every control under `root`
// (itself included), shown or not; `walked` counts the controls looked at.
inline QStringList unnamedControls(QWidget* root, int* walked = nullptr) {
    QList<QWidget*> all = root->findChildren<QWidget*>();
    all.prepend(root);
    QStringList found;
    for (QWidget* w : std::as_const(all)) {
        if (!isAnyOf<QAbstractButton, QLineEdit, QComboBox, QAbstractItemView, QAbstractSlider,
                     QAbstractSpinBox, QPlainTextEdit, QTextEdit>(w) ||
            isAnyOf<QScrollBar, QHeaderView>(w) || w->objectName().startsWith("qt_"))
            continue;
        bool inner = false;
        for (const QWidget* p = w->parentWidget(); p && p != root; p = p->parentWidget())
            inner =
                inner || p->objectName().startsWith("qt_") ||
                isAnyOf<QComboBox, QAbstractSpinBox, QAbstractItemView, QFileDialog, QLineEdit>(p);
        if (inner) continue;
        if (walked) ++*walked;
        QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
        QStringList missing;
        if ((a ? a->text(QAccessible::Name) : w->accessibleName()).trimmed().isEmpty())
            missing << "accessible name";
        if (w->toolTip().trimmed().isEmpty()) missing << "tooltip";
        if (!missing.isEmpty())
            found << QStringLiteral("%1 %2 (%3)")
                         .arg(w->metaObject()->className(), w->objectName(), missing.join(", "));
    }
    return found;
}
