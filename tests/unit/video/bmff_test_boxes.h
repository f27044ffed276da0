// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

// Builders for hand-made ISO base-media boxes, so tests can state exactly
// the bytes a reader meets (sizes, languages, type indicators, damage).
namespace TestBoxes {

inline QByteArray u16(quint16 v) {
    QByteArray b;
    b.append(char(v >> 8)).append(char(v));
    return b;
}

inline QByteArray u32(quint32 v) {
    return u16(quint16(v >> 16)) + u16(quint16(v));
}

inline QByteArray u64(quint64 v) {
    return u32(quint32(v >> 32)) + u32(quint32(v));
}

inline QByteArray box(const QByteArray& type, const QByteArray& payload) {
    return u32(quint32(8 + payload.size())) + type + payload;
}

// A box with a 64-bit size field.
inline QByteArray largeBox(const QByteArray& type, const QByteArray& payload) {
    return u32(1) + type + u64(16 + payload.size()) + payload;
}

inline QByteArray fullBox(const QByteArray& type, const QByteArray& body) {
    return box(type, u32(0) + body);
}

inline quint16 packedLanguage(const char* code) {
    return quint16(((code[0] - 0x60) << 10) | ((code[1] - 0x60) << 5) | (code[2] - 0x60));
}

inline QByteArray dataAtom(quint32 typeIndicator, const QByteArray& value, quint16 language = 0) {
    return box("data", u32(typeIndicator) + u16(0) + u16(language) + value);
}

inline QByteArray handler(const QByteArray& type) {
    return fullBox("hdlr", u32(0) + type + QByteArray(12, '\0') + QByteArray(1, '\0'));
}

// moov/udta/meta(hdlr mdir)/ilst with the given items.
inline QByteArray itunesMeta(const QByteArray& items) {
    return fullBox("meta", handler("mdir") + box("ilst", items));
}

// A QuickTime metadata box (plain container) with keys and item list.
inline QByteArray quickTimeMeta(const QList<QByteArray>& keys, const QByteArray& items) {
    QByteArray entries = u32(quint32(keys.size()));
    for (const QByteArray& key : keys) entries += u32(quint32(8 + key.size())) + "mdta" + key;
    return box("meta", handler("mdta") + fullBox("keys", entries) + box("ilst", items));
}

// A file: file type box, a media data box, then the movie box.
inline QByteArray movieFile(const QByteArray& moovPayload) {
    return box("ftyp", QByteArray("isom") + u32(0) + "isommp42") +
           box("mdat", QByteArray(64, '\x55')) + box("moov", moovPayload);
}

}  // namespace TestBoxes
