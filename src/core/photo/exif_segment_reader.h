// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "core/photo/photo_properties.h"

// A diagnostic walk of a JPEG's Exif segment as text of hexadecimal digits.
// It writes what it finds to the log only and touches two fields of its
// owner; nothing else depends on it. Unlike the walk it is modelled on, it
// is bounded (an unlisted tag ends a directory at the segment's end) and
// closes its file.
class ExifSegmentReader {
public:
    // Scans the file and logs what it finds.
    void ReadExifDataFromPiture(const QString& path);

    // An end-of-image marker was met before the end of a file: it carries a
    // thumbnail. Set by a scan, never cleared by one.
    bool bhasThumImage = false;
    // Emptied when a three-component scan header is met while
    // `bhasThumImage` is set.
    QByteArray theImageData;

    // The log lines of the last scan, in order (tests and the diagnostics view).
    QStringList lines;
};

// `count` bytes at `offset` as lower-case hex digits ("00" past the end).
QString getHexString(const QByteArray& file, qint64 offset, int count);
// The first `longth` digits of hex text, most significant first; 0 when the
// text is shorter.
qint32 DemaNumberFormHexChar(const QString& hex, int longth);
// Bytes up to the first zero, as UTF-8; "" when they are not valid UTF-8.
QString GetStringFormChar(const QByteArray& bytes);
// The two hex-text converters.
QString stringFromHex(const QString& hex);
QString stringToHex(const QString& text);

// One row of the property outline: a group has children and an empty value.
struct PropertyTreeRow {
    QString key;
    QVariant val;
    QList<PropertyTreeRow> children;
};

// The outline of a dictionary: keys in code-point order, groups as rows
// with children, built recursively.
QList<PropertyTreeRow> propTree(const PropertyDictionary& properties);
