// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QDialog>
#include <QPushButton>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

// A button that shows and picks a colour.
class ColorWell : public QPushButton {
    Q_OBJECT
public:
    explicit ColorWell(QWidget* parent = nullptr);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

Q_SIGNALS:
    void colorChosen(const QColor& color);

private:
    QColor m_color = Qt::white;
};

// The preferences window: storage folder, the date stamp's font, colour,
// position and date format, and the "Classic behaviour" switch. It only holds the controls; what
// OK, Cancel and the choosers do is the controller's business.
class PreferencesWindow : public QDialog {
    Q_OBJECT
public:
    explicit PreferencesWindow(QWidget* parent = nullptr);

    QLineEdit* storePathlab = nullptr;
    QPushButton* changeLocationButton = nullptr;
    QLabel* showFontlab = nullptr;
    QPushButton* fontButton = nullptr;
    ColorWell* colorwell = nullptr;
    QComboBox* postionBtn = nullptr;
    QComboBox* dateFormatBtn = nullptr;
    QCheckBox* classicBehaviourBox = nullptr;
    QPushButton* okButton = nullptr;
    QPushButton* cancelButton = nullptr;
};
