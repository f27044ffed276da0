#include "audio_samples.h"

#include "media_fixtures.h"

QStringList audioFrameHashes(const QString& path, bool decoded) {
    QStringList args{"-v", "error", "-i", path, "-map", "0:a:0"};
    if (!decoded)
        args << "-c"
             << "copy";
    args << "-f"
         << "framemd5"
         << "-";
    if (!runTool(QStringLiteral("ffmpeg"), args)) return {};
    QStringList hashes;
    for (const QString& line : lastToolOutput().split(QLatin1Char('\n'))) {
        const QStringList fields = line.split(QLatin1Char(','));
        if (!line.startsWith(QLatin1Char('#')) && fields.size() >= 6)
            hashes.append(fields[5].trimmed());
    }
    return hashes;
}
