// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "core/library/ik_image_item.h"

class QIODevice;
struct FileDates;
struct ProbeFacts;

// The parts of a record that every media kind fills the same way.

// File attributes: the size text and the file dates.
void fillFileAttributes(IKImageItem& item);
// The same from the size and dates already read with the file's open.
void fillFileAttributes(IKImageItem& item, const FileDates& dates);
// The probed facts (duration, audio rates and channels, pixel size) and the
// kind text of the file's type; `content`, when given, is the file open for
// reading (its position moves), for a type its name does not tell.
void fillProbeFacts(IKImageItem& item, const ProbeFacts& facts, QIODevice* content = nullptr);

// Why a record's file could not be read (it cannot be opened, is empty, or
// gave no length, picture or sound), in words for the user; empty when it
// was read. `audio` words the last reason for an audio file; `opened`: the
// reader has had the file open for reading, so it is not checked again.
QString readProblemOf(const IKImageItem& item, bool audio = false, bool opened = false);
// Logs a record's read problem, if it has one, where the user sees it.
void logReadProblem(const IKImageItem& item);
