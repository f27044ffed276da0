// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include "core/video/metadata_item.h"

class QIODevice;

// Lists the metadata items of an ISO base-media or QuickTime file (MOV, MP4,
// M4V, M4A, 3GP) in container order. Only the movie box is read into
// memory; media data is skipped by seeking. Key spaces:
//   "itsk"  iTunes items of moov/udta/meta/ilst. Freeform ("----") items get
//           the key "----:" + mean + ":" + name. Track and disc numbers
//           (trkn, disk) keep their stored 8 bytes as raw data.
//   "mdta"  QuickTime metadata of moov/meta and trak/meta (handler "mdta"),
//           keyed by the names of the `keys` box.
//   "udta"  QuickTime user data of moov/udta: one text item per entry of a
//           (c)xxx text box, other boxes (except padding) as raw data.
//   "uiso"  the 3GPP/ISO user-data boxes of moov/udta (titl, dscp, cprt, perf,
//           auth, gnre, albm, yrrc, kywd, loci, rtng, clsf, coll, date). A
//           keyword list reads as its keywords joined by ","; a location
//           reads as ISO 6709 text ("+48.8566+002.3522+035.000/").
// A damaged or truncated file gives the items read before the damage.
QList<MetadataItem> readMovieMetadata(const QString& path);

// The same from an open, seekable device (a file or a buffer).
QList<MetadataItem> readMovieMetadata(QIODevice& device);

// The same from the bytes of a whole file held in memory.
QList<MetadataItem> readMovieMetadataFromData(const QByteArray& fileData);

// The items of a movie box's payload (the bytes after its header).
QList<MetadataItem> readMovieBoxMetadata(QByteArrayView moovPayload);
