// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Media kinds by file extension. Each lookup takes an extension without the
// dot as a NUL-terminated UTF-8 string and answers its index in the kind's
// table, or -1 (also for a null argument). Comparison ignores ASCII case.
int GetImageType(const char* ext);      // camera raw list
int GetDragImageType(const char* ext);  // image list
int GetViedoType(const char* ext);      // video list
int GetAudioType(const char* ext);      // audio list

// The same lookups on a path's extension (the text after the last dot of the
// file name; a name without a dot has no kind).
QString fileExtension(const QString& path);
bool isAudioPath(const QString& path);
bool isVideoPath(const QString& path);
bool isImagePath(const QString& path);

// The reader an audio file goes to at import, chosen by its extension.
enum class AudioReader { Wav, Aiff, Mp3 };
AudioReader audioReaderForExtension(const QString& ext);
