// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "core/library/ik_image_item.h"

struct ProbeFacts;

// The parts of a record that every media kind fills the same way.

// File attributes: the size text and the file dates.
void fillFileAttributes(IKImageItem& item);
// The probed facts (duration, audio rates and channels, pixel size) and the
// kind text of the file's type.
void fillProbeFacts(IKImageItem& item, const ProbeFacts& facts);

// Why a record's file could not be read (it cannot be opened, is empty, or
// gave no length, picture or sound), in words for the user; empty when it
// was read. `audio` words the last reason for an audio file.
QString readProblemOf(const IKImageItem& item, bool audio = false);
// Logs a record's read problem, if it has one, where the user sees it.
void logReadProblem(const IKImageItem& item);
