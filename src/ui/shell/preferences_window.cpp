// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/preferences_window.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

ColorWell::ColorWell(QWidget* parent) : QPushButton(parent) {
    setObjectName(QStringLiteral("colorwell"));
    setFixedSize(44, 22);
    setToolTip(tr("The colour of the date stamp"));
    setAccessibleName(tr("Stamp Colour"));
    setColor(Qt::white);
    connect(this, &QPushButton::clicked, this, [this] {
        const QColor chosen = QColorDialog::getColor(m_color, window(), tr("Stamp Colour"));
        if (!chosen.isValid()) return;
        setColor(chosen);
        Q_EMIT colorChosen(chosen);
    });
}

void ColorWell::setColor(const QColor& color) {
    m_color = color;
    setStyleSheet(QStringLiteral("QPushButton#colorwell { background: %1; border: 1px solid "
                                 "#6b6b6b; border-radius: 3px; }")
                      .arg(color.name()));
}

PreferencesWindow::PreferencesWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("preferencesWindow"));
    setWindowTitle(tr("Preferences"));
    setModal(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 18, 20, 16);
    layout->setSpacing(14);

    auto* storageTitle = new QLabel(tr("Storage Location"), this);
    storageTitle->setObjectName(QStringLiteral("sectionTitle"));
    layout->addWidget(storageTitle);
    auto* storageRow = new QHBoxLayout;
    storePathlab = new QLineEdit(this);
    storePathlab->setObjectName(QStringLiteral("storePathlab"));
    storePathlab->setReadOnly(true);
    storePathlab->setMinimumWidth(340);
    storePathlab->setToolTip(tr("The folder the edited copies are written to"));
    storePathlab->setAccessibleName(tr("Storage Location"));
    changeLocationButton = new QPushButton(tr("Change..."), this);
    changeLocationButton->setToolTip(tr("Choose another folder for the edited copies"));
    storageRow->addWidget(storePathlab, 1);
    storageRow->addWidget(changeLocationButton);
    layout->addLayout(storageRow);

    auto* stampTitle = new QLabel(tr("Date Stamp"), this);
    stampTitle->setObjectName(QStringLiteral("sectionTitle"));
    layout->addWidget(stampTitle);
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight);
    auto* fontRow = new QHBoxLayout;
    showFontlab = new QLabel(this);
    showFontlab->setObjectName(QStringLiteral("showFontlab"));
    fontButton = new QPushButton(tr("Font..."), this);
    fontButton->setToolTip(tr("Choose the font of the date stamp"));
    fontRow->addWidget(showFontlab, 1);
    fontRow->addWidget(fontButton);
    form->addRow(tr("Font:"), fontRow);
    colorwell = new ColorWell(this);
    form->addRow(tr("Colour:"), colorwell);
    postionBtn = new QComboBox(this);
    postionBtn->setObjectName(QStringLiteral("postionBtn"));
    postionBtn->setToolTip(tr("The corner of the picture the date stamp goes in"));
    form->addRow(tr("Position:"), postionBtn);
    dateFormatBtn = new QComboBox(this);
    dateFormatBtn->setObjectName(QStringLiteral("dateFormatBtn"));
    dateFormatBtn->setToolTip(tr("How the date stamp writes the date"));
    form->addRow(tr("Date format:"), dateFormatBtn);
    layout->addLayout(form);

    auto* behaviourTitle = new QLabel(tr("Behaviour"), this);
    behaviourTitle->setObjectName(QStringLiteral("sectionTitle"));
    layout->addWidget(behaviourTitle);
    classicBehaviourBox = new QCheckBox(tr("Classic behaviour"), this);
    classicBehaviourBox->setObjectName(QStringLiteral("classicBehaviourBox"));
    classicBehaviourBox->setToolTip(
        tr("When on, the list behaves as it always did:\n"
           "- After a column sort, commands (save, removal, the tools) take the selected row\n"
           "  numbers in the order the files were imported, so they may act on other files\n"
           "  than the highlighted ones.\n"
           "- The Size column sorts by the number in its text before the unit's last letter\n"
           "  (12.00 KB counts as 12, 512 bytes as 512 TB), not by the byte count."));
    layout->addWidget(classicBehaviourBox);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cancelButton = new QPushButton(tr("Cancel"), this);
    okButton = new QPushButton(tr(" OK "), this);
    okButton->setDefault(true);
    cancelButton->setToolTip(tr("Close without keeping the changes"));
    okButton->setToolTip(tr("Keep the changes"));
    buttons->addWidget(cancelButton);
    buttons->addWidget(okButton);
    layout->addLayout(buttons);
}
