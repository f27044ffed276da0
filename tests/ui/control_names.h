#pragma once

// Walks a window for controls a keyboard or screen-reader user could not
// tell apart: each must have a name for assistive technology (its own
// accessible name, its text, or the label it is the buddy of) and a tooltip.
// Qt's own parts of composite widgets (scroll bars, headers, a combo box's
// list, a dock's title buttons) are theirs to name and are left out.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextEdit>

inline bool isControl(const QWidget* w) {
    return qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QLineEdit*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractItemView*>(w) ||
           qobject_cast<const QAbstractSlider*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
           qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QTextEdit*>(w);
}

inline bool partOfQtWidget(const QWidget* w, const QWidget* root) {
    if (qobject_cast<const QScrollBar*>(w) || qobject_cast<const QHeaderView*>(w)) return true;
    if (w->objectName().startsWith(QLatin1String("qt_"))) return true;
    for (const QWidget* p = w->parentWidget(); p && p != root; p = p->parentWidget()) {
        if (qobject_cast<const QComboBox*>(p) || qobject_cast<const QAbstractSpinBox*>(p) ||
            qobject_cast<const QAbstractItemView*>(p) || qobject_cast<const QFileDialog*>(p) ||
            qobject_cast<const QLineEdit*>(p) || p->objectName().startsWith(QLatin1String("qt_")))
            return true;
    }
    return false;
}

// "class objectName (what is missing)" for every control under `root`
// (itself included), shown or not, without a name or a tooltip; `walked`
// counts the controls looked at.
inline QStringList unnamedControls(QWidget* root, int* walked = nullptr) {
    QList<QWidget*> all = root->findChildren<QWidget*>();
    all.prepend(root);
    QStringList found;
    for (QWidget* w : std::as_const(all)) {
        if (!isControl(w) || partOfQtWidget(w, root)) continue;
        if (walked) ++*walked;
        QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
        const QString name = a ? a->text(QAccessible::Name).trimmed() : w->accessibleName();
        QStringList missing;
        if (name.isEmpty()) missing << QStringLiteral("accessible name");
        if (w->toolTip().trimmed().isEmpty()) missing << QStringLiteral("tooltip");
        if (!missing.isEmpty())
            found << QStringLiteral("%1 %2 (%3)")
                         .arg(QLatin1String(w->metaObject()->className()), w->objectName(),
                              missing.join(QStringLiteral(", ")));
    }
    return found;
}
