// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/field_grid.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

QGridLayout* makeFieldGrid() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLineEdit* addFieldRow(QGridLayout* grid, int& row, const QString& name, const char* outlet,
                       const QString& tooltip) {
    auto* label = new QLabel(name);
    label->setObjectName(QStringLiteral("fieldName"));
    auto* edit = new QLineEdit;
    edit->setObjectName(QLatin1String(outlet));
    label->setBuddy(edit);
    edit->setToolTip(tooltip.arg(label->text()));
    grid->addWidget(label, row, 0, Qt::AlignRight);
    grid->addWidget(edit, row++, 1);
    return edit;
}
