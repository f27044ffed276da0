// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "core/video/metadata_item.h"

// Metadata items for tests, built from their identifiers ("keyspace/key").
inline MetadataItem item(const QString& identifier, const QVariant& value,
                         const QString& dataType = {}, const QString& language = {}) {
    MetadataItem i;
    const qsizetype slash = identifier.indexOf('/');
    i.keySpace = identifier.left(slash);
    i.key = identifier.mid(slash + 1).toUtf8();
    i.identifier = identifier;
    i.value = value;
    i.dataType = dataType;
    i.language = language;
    return i;
}

inline QStringList identifiers(const QList<MetadataItem>& items) {
    QStringList out;
    for (const MetadataItem& i : items) out.append(i.identifier);
    return out;
}

// The first item with the identifier, or null.
inline const MetadataItem* findItem(const QList<MetadataItem>& items, const QString& identifier) {
    for (const MetadataItem& i : items) {
        if (i.identifier == identifier) return &i;
    }
    return nullptr;
}

inline qsizetype countOf(const QList<MetadataItem>& items, const QString& identifier) {
    return identifiers(items).count(identifier);
}

// The text of the first item with the identifier, or "<none>".
inline QString valueOf(const QList<MetadataItem>& items, const QString& identifier) {
    const MetadataItem* i = findItem(items, identifier);
    return i ? i->value.toString() : QStringLiteral("<none>");
}
