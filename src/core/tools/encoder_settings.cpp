// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/encoder_settings.h"

EncoderSettings encoderSettings(VideoQuality quality) {
    switch (quality) {
        case VideoQuality::Medium:
            return {23, "medium", 128000};
        case VideoQuality::Low:
            return {28, "fast", 64000};
        case VideoQuality::Highest:
            break;
    }
    return {18, "medium", 192000};
}

const char* muxerForExtension(const QString& extension) {
    const QString ext = extension.toLower();
    if (ext == QLatin1String("mp4") || ext == QLatin1String("mpeg")) return "mp4";
    if (ext == QLatin1String("m4v") || ext == QLatin1String("m4a")) return "ipod";
    if (ext == QLatin1String("mov")) return "mov";
    return nullptr;
}
