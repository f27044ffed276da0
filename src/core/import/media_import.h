// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <atomic>

#include "core/library/ik_image_item.h"

// Receives what an import produces. The importer runs on a worker thread in
// the program and on the calling thread in the command-line tool; a sink
// that touches the interface hands each call to the main thread itself.
class ImportSink {
public:
    virtual ~ImportSink() = default;
    // A new record, ready to be appended to the media list.
    virtual void itemImported(const IKImageItemPtr& item) = 0;
    // The same record, earlier, on the thread that read it: with several
    // reading threads (setReadingThreads) the sink can do its own work on
    // each record there, in parallel. Called before itemImported().
    virtual void itemRead(const IKImageItemPtr& item) {}
    // One path of the import (a file of any kind, a skipped file, or a whole
    // folder) has been handled: the list view refreshes.
    virtual void pathFinished() {}
    // A folder was imported; `parent` is the folder that holds it.
    virtual void folderImported(const QString& parent) {}
    // A path that does not exist.
    virtual void pathMissing(const QString& path) {}
};

// The per-file import and the recursive folder scan.
class MediaImporter {
public:
    // With `photos`, image files are imported too (the photo view and the
    // command line's `info`); the media table leaves them out.
    explicit MediaImporter(ImportSink& sink, bool photos = false)
        : m_sink(sink), m_photos(photos) {}

    // The import thread's body: each path is a file or a folder.
    void importMediaItemsThreader(const QStringList& paths);

    // Scans a folder depth-first, in the order the file system lists it,
    // hidden entries included. Symbolic links to folders are followed, but
    // a folder already visited in this import is not scanned again, so a
    // link cycle ends.
    void ScanMediasItemWithinFolder(const QString& folder);

    // Builds the record of one file. Null for a file of neither video nor
    // audio kind (nor, with `photos`, an image), or one that is not a
    // regular file. Audio files go to their reader by extension (wav, flac,
    // au: the WAV reader; aiff, aif: the AIFF reader; every other audio
    // extension: the MP3 reader); images to the photo import. `technical`
    // adds the technical texts of the full import (videos only).
    static IKImageItemPtr importFile(const QString& path, bool technical, bool photos = false);

    // The record as the writers need it: file attributes and every metadata
    // item, without opening the file as media (no probed facts, kind text or
    // technical texts). Null where importFile() answers null. Audio records
    // have their tags; only one without tags is opened as media, for the
    // album and year its headers give.
    static IKImageItemPtr importFileForWriting(const QString& path);

    // Asks a running import to stop after the current file.
    void cancel() { m_cancelled = true; }

    // Reads files on `threads` threads at once (the command line, which
    // prints the records only at the end). The records still reach the sink
    // in the import's order, but those of a folder only once it is read and
    // those of files given directly only before the next folder and at the
    // end. The program's import thread reads one file at a time, so its list
    // grows file by file.
    void setReadingThreads(int threads) { m_threads = qMax(1, threads); }

private:
    void scanFolder(const QString& folder, int depth);
    // Reads the files waiting for the reading threads; hands their records
    // to the sink in order.
    void readPending();

    ImportSink& m_sink;
    bool m_photos = false;
    int m_threads = 1;
    struct Pending {
        QString path;
        bool technical;
    };
    QList<Pending> m_pending;
    QSet<QString> m_visitedFolders;
    std::atomic<bool> m_cancelled{false};
};
