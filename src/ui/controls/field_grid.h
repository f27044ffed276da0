// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QGridLayout;
class QLineEdit;
class QString;

// The grid of a panel's editable fields: each name right-aligned beside its
// field, the fields' column taking the width.
QGridLayout* makeFieldGrid();

// Adds a row at `row` (then moved on): the name, and the field named
// `outlet` as its buddy, with the tooltip `tooltip` given the name as %1.
QLineEdit* addFieldRow(QGridLayout* grid, int& row, const QString& name, const char* outlet,
                       const QString& tooltip);
