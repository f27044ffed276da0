// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "core/batch/batch_progress.h"
#include "core/library/ik_image_item.h"

// The rename dialog's choices.
struct RenameOptions {
    bool useCustomName = true;  // `useCustomName`: custom text, else the template
    QString customText;         // `customNamelab`
    bool startNumber = false;   // `checkStartNumber`: custom text + six-digit number
    QString templateText = QStringLiteral("{Existing File Name}");  // `filenameFormatstrlab`
    QString dateFormat;  // title of `renameDateFormatBtn`; "" or the first entry: as read
    // `replaceInvaidStrBtn`: the characters removable drives and network
    // shares refuse (\ / : * ? " < > | and control characters) become "_";
    // without it they stay (a "/" always goes: a name is not a path).
    bool replaceInvalid = false;
    bool sequence = false;  // `seqNumBtn`: template names get " " and the six-digit number
    QString suffix;         // `AddSuffixStrBtn`: text put after every new name
};

// The ten layouts of "{Camera Date}", as the pop-up titles them.
QStringList renameDateFormatTitles();
// The template tags of the tag pop-up.
QStringList renameTemplateTags();

// "{Camera Date}" of a date text ("yyyy:MM:dd HH:mm:ss" or any form the
// date detector reads) in the layout a title names ("YYYY_MM_DD HH.MM.ss"
// gives "2020_01_02 03.04.05"); unknown titles and unreadable dates give the
// text as it is.
QString cameraDateInLayout(const QString& dateText, const QString& title);

// `InsertPhotoTagsFileNameAction:`: the template with the tag put at the
// beginning ("{Title} %@") or the end ("%@ {Title}").
QString insertRenameTag(const QString& templateText, const QString& tag, bool atBeginning);

// The new base name (without extension) of the `number`-th item (from 1).
// "" when nothing usable is left (the file is then left alone).
QString newBaseName(const IKImageItem& item, const RenameOptions& options, int number);

// One planned or done move.
struct RenameStep {
    QString oldPath;
    QString newPath;  // "" when the file is left as it is
    QString problem;  // why it was not renamed, in the user's words; "" when it was
    bool ok() const { return problem.isEmpty() && !newPath.isEmpty(); }
};

// The preview: what each item's name would become, by the same rules as the
// rename (a target that exists gets " N"), without moving anything.
QList<RenameStep> previewRename(const IKImageItemList& items, const RenameOptions& options);

// `ReNameLocalphotowithFileThreader:`'s loop: each item moved within its own
// folder to its new name with its old extension; a name already taken gets
// a space and the running number, and when that is taken too the file keeps
// its name. Nothing is ever overwritten. The file dates are set again after
// the move, and the record's `fileName` and `filePath` follow the file.
// Stops before the next file when `progress` says so.
QList<RenameStep> renameItems(const IKImageItemList& items, const RenameOptions& options,
                              const BatchProgress& progress = {});

// "Undo Rename": moves every renamed file of a batch back to its old name
// (last first), where the new name still holds the file and the old one is
// free; the records found by path follow. Answers the steps undone, each
// with the reverse move and its problem if any.
QList<RenameStep> undoRename(const QList<RenameStep>& done, const IKImageItemList& items = {});

// The last batch, kept between runs of the command line in a small JSON
// file (the moves only).
bool saveRenameJournal(const QString& journalPath, const QList<RenameStep>& done);
QList<RenameStep> loadRenameJournal(const QString& journalPath);
