// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/media_kinds.h"

#include <strings.h>
#include <QFileInfo>

namespace {

// Each table ends with an empty entry, as the lookups walk to it.
const char* const kRawList[] = {"DNG", "CR2", "MOS", "3FR", "RW2", "RAW", "MRW", "RAF", "ORF", ""};

// AVIF, newer than the rest, comes last so every other entry keeps its index.
const char* const kImageList[] = {
    "HEIC", "HEIF", "3DM",     "3DMF", "3DS", "3FR",  "ABM", "AFX",  "AI",           "ANI",  "ART",
    "ARW",  "BLD",  "BLEND",   "BMP",  "BOO", "BR5",  "CDR", "CDR",  "CDT",          "CGM",  "CIFF",
    "CLP",  "CMX",  "CONT",    "CPT",  "CR2", "CRW",  "CUR", "CVX",  "DCM",          "DCR",  "DCR",
    "DIB",  "DNG",  "DRW",     "DS4",  "DSC", "DT2",  "DWF", "DWG",  "EMF",          "EMZ",  "ERF",
    "FH8",  "FLC",  "FOV",     "FPF",  "FPX", "FUJI", "FXG", "GIF",  "HDP",          "HPI",  "ICNS",
    "ICO",  "IDML", "IFF",     "IMG",  "INX", "IPX",  "ISD", "ITC2", "IV",           "JP2",  "JPEG",
    "JPG",  "JPX",  "K25",     "KDC",  "LBM", "MA",   "MAX", "MB",   "MDI",          "MDL",  "MDX",
    "MINO", "MNG",  "MOS",     "MRW",  "MSP", "NCR",  "NEF", "OBJ",  "ORF",          "PAL",  "PAT",
    "PBM",  "PCS",  "PCT",     "PCX",  "PEF", "PGM",  "PIC", "PICT", "PICTCLIPPING", "PNG",  "PPM",
    "PSD",  "PSP",  "PSPIMGE", "PTX",  "PXN", "QXD",  "RAF", "RAS",  "RAW",          "RELS", "RGB",
    "RLE",  "RTD",  "RW2",     "SCT",  "SHP", "SKF",  "SKP", "SR2",  "SRF",          "STP",  "SVG",
    "SVGZ", "TEX",  "TGA",     "THM",  "TIF", "TIFF", "VWX", "WB1",  "WBC",          "WBD",  "WBMP",
    "WBZ",  "WEBP", "WMF",     "WP",   "WPG", "X3F",  "XBM", "XCF",  "XPM",          "XPS",  "AVIF",
    ""};

const char* const kVideoList[] = {
    "HEVC", "3G2",   "3GP",   "ANM",      "ASF",    "ASX",    "AVI", "AVS", "CLK", "CPI",
    "DIVX", "DMSM",  "DREAM", "DVDMEDIA", "DVM",    "DVR-MS", "DXR", "F4V", "FBR", "FLA",
    "FLV",  "HDMOV", "M2P",   "M2TS",     "M4P",    "M4V",    "MKV", "MOD", "MOI", "MOV",
    "MP4",  "MPE",   "MPEG",  "MPG",      "MXF",    "OGM",    "PSH", "QT",  "QTM", "RCPROJECT",
    "RM",   "RMVB",  "SCM",   "SMIL",     "SMJPEG", "SRT",    "STX", "SWF", "TIX", "TS",
    "VOB",  "VRO",   "WMV",   "WTV",      "XVID",   "YUV",    ""};

const char* const kAudioList[] = {
    "OPUS", "AMR", "RAM", "RFL",  "RMI",  "RNS", "RPS",  "SIB", "SND",  "VPM", "WAV",
    "WMA",  "AA3", "AAC", "AC3",  "AFC",  "AIF", "AIFF", "AM",  "AT3",  "AU",  "AUD",
    "CAF",  "CDA", "CPF", "DMSA", "DMSE", "DSS", "EMP",  "EMX", "FLAC", "KPI", "M3D",
    "M4A",  "M4B", "M4R", "MID",  "MIDI", "MP3", "OGG",  "OMF", "PTF",  ""};

int lookup(const char* const* table, const char* ext) {
    if (ext == nullptr) return -1;
    for (int i = 0; table[i][0] != '\0'; ++i) {
        if (strcasecmp(table[i], ext) == 0) return i;
    }
    return -1;
}

int lookupPath(const char* const* table, const QString& path) {
    const QString ext = fileExtension(path);
    if (ext.isEmpty()) return -1;
    return lookup(table, ext.toUtf8().constData());
}

}  // namespace

int GetImageType(const char* ext) {
    return lookup(kRawList, ext);
}
int GetDragImageType(const char* ext) {
    return lookup(kImageList, ext);
}
int GetViedoType(const char* ext) {
    return lookup(kVideoList, ext);
}
int GetAudioType(const char* ext) {
    return lookup(kAudioList, ext);
}

QString fileExtension(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

bool isAudioPath(const QString& path) {
    return lookupPath(kAudioList, path) >= 0;
}
bool isVideoPath(const QString& path) {
    return lookupPath(kVideoList, path) >= 0;
}
bool isImagePath(const QString& path) {
    return lookupPath(kImageList, path) >= 0;
}

AudioReader audioReaderForExtension(const QString& ext) {
    const auto is = [&](const char* s) {
        return ext.compare(QLatin1String(s), Qt::CaseInsensitive) == 0;
    };
    if (is("wav") || is("flac") || is("au")) return AudioReader::Wav;
    if (is("aiff") || is("aif")) return AudioReader::Aiff;
    return AudioReader::Mp3;
}
