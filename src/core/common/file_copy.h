// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QtGlobal>

// Reads up to `size` bytes of `fd` at `offset` into `into`; the count read,
// short at the end of the file or on an error.
qint64 readAt(int fd, char* into, qint64 size, qint64 offset);

// Writes all of `data` to `fd`; false on an error.
bool writeAll(int fd, const char* data, qint64 size);

// Appends `size` bytes of the file `in` from `offset` to the file `out` at
// its position: in the kernel where it can (copy_file_range), else through
// `buffer`. False when a read or write fails or the source ends early.
bool copyRange(int in, qint64 offset, qint64 size, int out, QByteArray& buffer);
