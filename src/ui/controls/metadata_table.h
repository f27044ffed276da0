// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

#include "core/video/metadata_rows.h"

class QTableWidget;
class QWidget;

// The read-only "All Tags" list of the side panels: key space, key and value
// of every metadata item of a file, a cover with its thumbnail. The list is
// as tall as its rows, so the panel around it scrolls and the list does not.
QTableWidget* makeMetadataTable(QWidget* parent);

// Replaces the rows; the list hides itself when there are none.
void fillMetadataTable(QTableWidget* table, const QList<MetadataRow>& rows);
