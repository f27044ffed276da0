// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>

#include <condition_variable>
#include <mutex>

// Which files in the storage folder the program wrote itself. Only those may
// be replaced by a later output of the same name; any other file there (the
// user's own, another program's, a source being edited) is left alone and
// the new output gets a free name beside it ("clip (2).mov").
//
// An output is marked with the extended attribute "user.tagsmith.output",
// holding its size and modification time. Where the folder's file system
// cannot hold one (exFAT, many network mounts), the hidden list file
// ".tagsmith-outputs" in the output's folder records the same by name. A
// file counts as ours only while its size and modification time still match
// the mark, so a file changed since is not replaced.

// Marks a complete output, after its dates are set. False (logged) when
// neither the attribute nor the list could be written.
bool markOutputAsOurs(const QString& path);

// Whether `path` is a regular file that the program wrote and that has not
// changed since.
bool isOutputOfOurs(const QString& path);

// Drops the mark of a file that is no longer an output of ours (a new file
// moved over its source).
void forgetOutput(const QString& path);

// For tests: act as if no file system could hold extended attributes, so
// the list file is used.
void setExtendedAttributesUsable(bool usable);

// The names of the list file and the attribute.
extern const char* const kOutputListName;
extern const char* const kOutputAttribute;

// The outputs of one batch (one save of several rows, one command line):
// a later output of the batch never replaces an earlier one. Safe to share
// between the worker threads of a batch.
class OutputBatch {
public:
    struct Claim {
        QString path;  // where to write; empty when no free name was found
        QString note;  // why `path` is not the name asked for, in the user's words; "" when it is
    };

    // Chooses where an output wanted at `wanted` goes: `wanted` itself when
    // nothing is there or the file there is ours, it is not the source and
    // this batch has not written it yet; otherwise the first free name of
    // the form "name (2).ext", "name (3).ext", ... The answer is reserved.
    Claim claim(const QString& wanted, const QString& sourcePath);

    // Whether this batch already reserved `path`.
    bool claimed(const QString& path) const;

    // The batch's file number `index` (from 0, each once) is being written on
    // this thread. While the turn lasts, the thread's first claim waits until
    // every file before it has claimed its name or ended, so that which file
    // gets "name.ext" and which "name (2).ext" does not depend on which
    // thread is faster. A batch written by one thread needs no turns.
    class Turn {
    public:
        Turn(OutputBatch& batch, qsizetype index);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        OutputBatch& m_batch;
        qsizetype m_index;
    };

private:
    // Marks the turn of file `index` as over; m_mutex is held.
    void passTurn(qsizetype index);

    mutable std::mutex m_mutex;
    QSet<QString> m_claimed;
    std::condition_variable m_turns;
    qsizetype m_nextTurn = 0;  // the first file whose turn is not over
    QSet<qsizetype> m_passed;  // files after it whose turn is over
};
