// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Where a metadata item was read from and the bytes it was stored in, so
// that an item nobody changed is written back exactly as it came. Set by the
// movie reader; empty (`form` None) for items the program makes.
struct MetadataOrigin {
    enum class Form {
        None,
        Box,        // a whole box: a child of the user data, or a list entry read as raw data
        DataAtom,   // one `data` atom of a list entry, with the boxes that follow it (a `name`)
        TextEntry,  // one entry (length, language, text) of a QuickTime user-data text box
    };
    Form form = Form::None;
    // The stored bytes are prefix + (the read value's bytes when
    // `valueInBetween`) + suffix, so large pictures are not held twice.
    QByteArray prefix;
    QByteArray suffix;
    bool valueInBetween = false;
    // List entries: the entry's boxes before its first data atom (a
    // freeform item's `mean` and `name`).
    QByteArray entryHead;
    // The item as it was read; the bytes stand for the item only while it
    // still carries all of these.
    QString identifier;
    QVariant value;
    QString dataType;
    QString language;

    QByteArray bytes() const;
};

// One metadata entry of a media file, as the readers list them in container
// order. `identifier` is "keyspace/key" with every byte outside printable
// ASCII, and '%', ' ' and '/', written as %XX.
struct MetadataItem {
    QString keySpace;    // "itsk", "mdta", "udta", "uiso", "comn", "org.id3", "caaf"
    QByteArray key;      // raw key bytes as stored in the file
    QString identifier;  // "itsk/%A9nam"
    QVariant value;      // QString, number, QByteArray (picture or raw data)
    QString dataType;    // e.g. "UTF-8", "JPEG", "PNG", "BE Signed Integer", "raw"
    QString language;    // ISO 639-2 or empty
    MetadataOrigin origin;

    // True when the item was read from a file and still holds what was read:
    // then its stored bytes are what a writer puts back.
    bool isUnchanged() const;
};

// Builds the identifier of a key in a key space with the escaping rule above.
QString metadataIdentifier(const QString& keySpace, const QByteArray& key);
