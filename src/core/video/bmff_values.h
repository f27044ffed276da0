// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QVariant>

// Decoding of the value encodings found in movie metadata: the typed
// `data` atom of item lists, QuickTime international text, and the full
// boxes of the ISO/3GPP user data.
namespace Bmff {

// Data types given to decoded items (the names the media framework uses, so
// that items made by the writers and items read from files compare equal).
// Well-known type indicators of the `data` atom, for reading and writing.
enum DataAtomType : quint32 {
    kImplicit = 0,
    kUtf8 = 1,
    kUtf16 = 2,
    kUtf8Sort = 4,
    kUtf16Sort = 5,
    kGif = 12,
    kJpeg = 13,
    kPng = 14,
    kSignedBE = 21,
    kUnsignedBE = 22,
    kFloat32BE = 23,
    kFloat64BE = 24,
    kBmp = 27,
    kInt8 = 65,
    kInt16BE = 66,
    kInt32BE = 67,
    kInt64BE = 74,
    kUInt8 = 75,
    kUInt16BE = 76,
    kUInt32BE = 77,
    kUInt64BE = 78,
};

namespace DataType {
inline const QString kRaw = QStringLiteral("com.apple.metadata.datatype.raw-data");
inline const QString kUtf8 = QStringLiteral("com.apple.metadata.datatype.UTF-8");
inline const QString kUtf16 = QStringLiteral("com.apple.metadata.datatype.UTF-16");
inline const QString kJpeg = QStringLiteral("public.jpeg");
inline const QString kPng = QStringLiteral("public.png");
inline const QString kBmp = QStringLiteral("com.microsoft.bmp");
inline const QString kGif = QStringLiteral("com.compuserve.gif");
inline const QString kFloat32 = QStringLiteral("com.apple.metadata.datatype.float32");
inline const QString kFloat64 = QStringLiteral("com.apple.metadata.datatype.float64");
inline const QString kIso6709 = QStringLiteral("com.apple.quicktime.location.ISO6709");
// Integers: "com.apple.metadata.datatype.int8" ... "uint64".
QString integer(bool isSigned, int bytes);
}  // namespace DataType

struct DecodedValue {
    QVariant value;  // QString for text, qint64 or double for numbers, QByteArray otherwise
    QString dataType;
    QString language;  // ISO 639-2 or ""
    // The bytes the value was decoded from, where the decoder cuts a run of
    // values (one entry of a user-data text box); else empty.
    QByteArrayView stored;
};

// The payload of a `data` atom: a 4-byte type indicator (well-known types
// only; anything else stays raw data), a 4-byte locale, then the value.
// Answers false when the payload is too short to hold the two fields.
bool decodeDataAtom(QByteArrayView payload, DecodedValue& out);

// The payload of a QuickTime user-data text box: a run of entries of 16-bit
// length, 16-bit language and text. One value per entry.
QList<DecodedValue> decodeInternationalText(QByteArrayView payload);

// A text that ends at a terminating zero (two for UTF-16) or at the end of
// the data; UTF-16 when it starts with a byte-order mark, else UTF-8.
// `consumed` answers how many bytes were used, terminator included.
QString decodeTerminatedText(QByteArrayView data, qint64* consumed = nullptr);

// The payload of an ISO/3GPP user-data box of the given type. Answers false
// when the box does not hold what its type promises.
bool decodeIsoUserData(QByteArrayView type, QByteArrayView payload, DecodedValue& out);

// Is this a box type of the ISO/3GPP user data?
bool isIsoUserDataType(QByteArrayView type);

// The location of a 3GPP `loci` box as ISO 6709 text ("+48.8566+002.3522+035.000/").
QString iso6709Text(double latitude, double longitude, double altitude);

}  // namespace Bmff
