// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/track_info.h"

#include <QHash>

#include <cmath>

namespace {

const QString kUnknown = QStringLiteral("Unknown");

// Upper half of the Mac Roman character set, in which codec codes are shown.
constexpr char16_t kMacRomanHigh[] =
    u"ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü†°¢£§•¶ß®©™´¨≠ÆØ∞±≤≥¥µ∂∑∏π∫ªºΩæø"
    u"¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ\uF8FFÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ";
static_assert(sizeof(kMacRomanHigh) / sizeof(char16_t) == 129);

QString codeText(const QByteArray& code) {
    QString text;
    for (const char ch : code) {
        const auto byte = static_cast<unsigned char>(ch);
        text.append(byte < 0x80 ? QChar(byte) : QChar(kMacRomanHigh[byte - 0x80]));
    }
    return text;
}

bool hasDescription(const TrackDescription& track) {
    return track.present && !track.codecCode.isEmpty();
}

QString extensionText(const std::optional<QString>& value) {
    return value ? *value : kUnknown;
}

// The colour extension as it goes into the colour description; values that
// do not fit the 128-byte buffer of UTF-8 are left out.
std::optional<QByteArray> extensionUtf8(const std::optional<QString>& value) {
    if (!value) return std::nullopt;
    QByteArray utf8 = value->toUtf8();
    if (utf8.size() >= 128) return std::nullopt;
    return utf8;
}

}  // namespace

QString mediaSubTypeString(const TrackDescription& track) {
    return hasDescription(track) ? codeText(track.codecCode) : kUnknown;
}

int bitDepth(const TrackDescription& track) {
    if (!hasDescription(track) || !track.bitsPerSample) return 0;
    switch (*track.bitsPerSample) {
        case 1:
        case 2:
        case 4:
        case 8:
        case 16:
        case 24:
        case 32:
            return *track.bitsPerSample;
        default:
            return 0;
    }
}

int rotation(const TrackDescription& track) {
    // Exact comparison on purpose: only the four pure quarter turns count;
    // scaled or sheared transforms answer 0.
    const TrackDescription none;
    const TrackDescription& t = track.present ? track : none;
    if (t.a == 0 && t.b == 1 && t.c == -1 && t.d == 0) return 90;
    if (t.a == 0 && t.b == -1 && t.c == 1 && t.d == 0) return 270;
    if (t.a == -1 && t.b == 0 && t.c == 0 && t.d == -1) return 180;
    return 0;
}

QString matrixCoefficients(const TrackDescription& track) {
    return hasDescription(track) ? extensionText(track.yCbCrMatrix) : kUnknown;
}

QString colorPrimaries(const TrackDescription& track) {
    return hasDescription(track) ? extensionText(track.colorPrimaries) : kUnknown;
}

QString transferCharacteristics(const TrackDescription& track) {
    return hasDescription(track) ? extensionText(track.transferFunction) : kUnknown;
}

QString chromaSubsampling(const TrackDescription& track) {
    if (!hasDescription(track)) return kUnknown;
    QByteArray text;
    if (const auto v = extensionUtf8(track.colorPrimaries))
        text += QByteArray("Color Primaries: ") + *v + '\n';
    if (const auto v = extensionUtf8(track.transferFunction))
        text += QByteArray("Transfer Function: ") + *v + '\n';
    if (const auto v = extensionUtf8(track.yCbCrMatrix))
        text += QByteArray("YCbCr Matrix: ") + *v + '\n';
    return text.isEmpty() ? kUnknown : QString::fromUtf8(text);
}

QString dataRateInMbps(const TrackDescription& track) {
    const float rate = track.present ? track.estimatedDataRate : 0.0f;
    return QString::asprintf("%.2f Mbit/s", static_cast<double>(rate / 1000000.0f));
}

QString aspectRatioStr(const TrackDescription& track) {
    if (!track.present || track.naturalWidth == 0 || track.naturalHeight == 0) return kUnknown;
    const auto w = static_cast<std::int64_t>(track.naturalWidth);
    const auto h = static_cast<std::int64_t>(track.naturalHeight);
    const std::int64_t g = gcd(w, h);
    if (g == 0) return kUnknown;  // a size below one pixel
    return QString::asprintf("%lld:%lld", static_cast<long long>(w / g),
                             static_cast<long long>(h / g));
}

std::int64_t gcd(std::int64_t x, std::int64_t y) {
    while (y != 0) {
        const std::int64_t r = x % y;
        x = y;
        y = r;
    }
    return x;
}

std::pair<double, double> currentScales(const TrackDescription& track) {
    if (!track.present) return {0.0, 0.0};
    return {std::sqrt(track.a * track.a + track.c * track.c),
            std::sqrt(track.b * track.b + track.d * track.d)};
}

QString audioEncodeFormat(const TrackDescription& track) {
    if (!hasDescription(track)) return kUnknown;
    // cac3 names E-AC-3 here while the compression table knows it as ec-3;
    // both tables are kept as they are.
    static const QHash<QByteArray, QString> names = {
        {".mp3", QStringLiteral("MP3")},
        {"aac ", QStringLiteral("AAC")},
        {"aace", QStringLiteral("AAC ELD")},
        {"ac-3", QStringLiteral("AC-3")},
        {"alac", QStringLiteral("Apple Lossless")},
        {"cac3", QStringLiteral("E-AC-3")},
        {"lpcm", QStringLiteral("Linear PCM")},
    };
    return names.value(track.codecCode, codeText(track.codecCode));
}

QString videoencodeFormat(const TrackDescription& track) {
    if (!hasDescription(track)) return kUnknown;
    static const QHash<QByteArray, QString> names = {
        {"ap4h", QStringLiteral("Apple ProRes 4444")},
        {"apcn", QStringLiteral("Apple ProRes 422")},
        {"avc1", QStringLiteral("H.264")},
        {"hvc1", QStringLiteral("HEVC")},
        {"jpeg", QStringLiteral("JPEG")},
        {"mp4v", QStringLiteral("MPEG-4")},
    };
    return names.value(track.codecCode, codeText(track.codecCode));
}

QString GetAudioSamplingRate(const TrackDescription& track) {
    if (!hasDescription(track) || track.sampleRate <= 0) return kUnknown;
    return QString::asprintf("%.2f kHz", track.sampleRate / 1000.0);
}

QString GetAuidoFramRate(const TrackDescription& track) {
    // A description without a packet size (0 frames per packet) has no
    // packet rate either.
    if (!hasDescription(track) || track.sampleRate <= 0 || track.framesPerPacket <= 0)
        return kUnknown;
    return QString::asprintf("%.2f FPS", track.sampleRate / track.framesPerPacket);
}

QString GetAuidoCompressMode(const TrackDescription& track) {
    if (!hasDescription(track)) return kUnknown;
    // Apple Lossless counts as lossy here; that is how the list has always
    // reported it.
    static const QList<QByteArray> lossy = {".mp3", "aac ", "ac-3", "alac", "ec-3", "opus"};
    if (lossy.contains(track.codecCode)) return QStringLiteral("Lossy");
    if (track.codecCode == "lpcm") return QStringLiteral("Lossless");
    return kUnknown;
}
