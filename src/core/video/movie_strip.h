// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include "core/video/bmff_tree.h"

// The privacy strip's edits of a movie's box structure, beside the metadata
// list the rewriter encodes: what playback needs (track structure, sample
// tables, edit lists, handlers and their names) is never touched.
namespace MovieStrip {

// Leaves out of the movie box every box that only describes the movie: the
// movie's own boxes of unknown vendors (uuid), the tracks' metadata (udta,
// meta) and XMP boxes, and padding (free, skip, wide), which can still hold
// the bytes of older metadata. Answers how many boxes were left out.
int dropMetadataBoxes(Bmff::TreeBox& moov);

// Is a top-level box of the file one the strip leaves out: XMP and other
// vendor boxes (uuid), a file-level meta box, padding, and the QuickTime
// preview picture with its pointer? Media data and the movie box never are.
bool isDroppedTopLevelBox(QByteArrayView type);

// Leaves out of the tracks' user data every location box ("©xyz" and the
// 3GPP "loci"); the track's other user data stays byte for byte, and a user
// data box left empty goes. Answers how many boxes were left out.
int dropTrackLocations(Bmff::TreeBox& moov);

// Leaves out the timed metadata tracks: tracks with a metadata handler
// ("meta", "camm") or a timed metadata sample description (GoPro "gpmd",
// camera motion "camm", "mebx", "mett", "metx", "urim", "rtmd", "djmd"), and
// the chapter texts that other tracks name with a "chap" reference. Every
// track reference to a left-out track goes too. Answers how many tracks
// were left out.
int dropTimedMetadataTracks(Bmff::TreeBox& moov);

// A track's handler type (mdia/hdlr) and the format of its first sample
// description (mdia/minf/stbl/stsd); empty when the box is missing.
QByteArray handlerType(const Bmff::TreeBox& trak);
QByteArray sampleFormat(const Bmff::TreeBox& trak);

// The track's ID (tkhd), or 0 when it cannot be read.
quint32 trackId(const Bmff::TreeBox& trak);

}  // namespace MovieStrip
