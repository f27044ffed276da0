#pragma once

#include <QString>
#include <QStringList>

// The MD5 sum of each packet of a file's first audio stream, from ffmpeg's
// framemd5: of the stored bytes, or with `decoded` of the decoded samples
// (for a copy whose packets lost a container header, such as ADTS). Empty
// when ffmpeg cannot read the file.
QStringList audioFrameHashes(const QString& path, bool decoded = false);
