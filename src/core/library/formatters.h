// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>

// Byte count to its display text ("%d bytes", "%.2f KB", ... in units of
// 1000), computed in single precision. Writes into the caller's buffer (at
// least 100 bytes) and returns it.
char* size_to_unit(qint64 n, char* out_buffer);
QString sizeText(qint64 n);  // the same, as a QString

// Inverse of the size text as used by the list's sort: the last character
// is the unit ("B", "K", "M", "G", anything else counts as tera), the number
// before it is read as a leading decimal number. "1.53 MB" reads 1.
quint64 sizeFormString(const QString& text);

// Whole seconds as "%ds", "%dm:%ds" or "%dh:%dm:%ds", without padding.
QString getMediaDuration(qint32 seconds);
