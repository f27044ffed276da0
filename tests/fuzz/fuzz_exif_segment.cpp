// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for the JPEG Exif segment reader, the diagnostic walk
// over hex text: any bytes, written to a file on a memory file system, are
// scanned without a crash, a sanitizer report or a hang, and the scan stays
// bounded by the file (a line count no larger than the bytes allow). The hex
// converters get slices of the same bytes.

#include <QByteArray>
#include <QFile>
#include <QLoggingCategory>

#include <unistd.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "core/photo/exif_segment_reader.h"

Q_LOGGING_CATEGORY(lcTagsmith, "tagsmith")

namespace {

QString inputPath;

void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "fuzz_exif_segment: %s\n", what);
    __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The reader's log lines for every input would only slow the run down.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    inputPath = QStringLiteral("/dev/shm/tagsmith-fuzz-exif-%1.jpg").arg(getpid());
    std::atexit([] { QFile::remove(inputPath); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    {
        QFile file(inputPath);
        check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                  file.write(bytes) == bytes.size(),
              "cannot write the input to /dev/shm");
    }
    ExifSegmentReader reader;
    reader.ReadExifDataFromPiture(inputPath);
    // One line a marker found (at most one a byte, and the first two bytes
    // twice) and one an entry read, which a scan caps at 65536.
    check(reader.lines.size() <= bytes.size() + 2 + 65536, "more log lines than a scan allows");

    const qint64 offset = size > 2 ? data[0] * 7 + data[1] : 0;
    const int count = size > 2 ? data[2] % 24 : 4;
    const QString hex = getHexString(bytes, offset, count);
    check(hex.size() == 2 * count, "hex text of the wrong length");
    (void)DemaNumberFormHexChar(hex, int(size % 12));
    (void)GetStringFormChar(bytes.left(64));
    (void)stringFromHex(QString::fromLatin1(bytes.left(64)));
    (void)stringToHex(QString::fromUtf8(bytes.left(64)));
    return 0;
}
