#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

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
};

// Builds the identifier of a key in a key space with the escaping rule above.
QString metadataIdentifier(const QString& keySpace, const QByteArray& key);
