// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// exiftool as the test oracle: the one way the tests ask it about a file.

// exiftool's "-j -G1 -a" view of a file, as one object keyed "Group:Tag"
// (e.g. "ItemList:Title"). `options` are added, e.g. {"-n"} for numbers.
QJsonObject exiftoolTags(const QString& path, const QStringList& options = {});

// The bytes of one binary tag ("-b"), e.g. "ItemList:CoverArt".
QByteArray exiftoolBinary(const QString& path, const QString& tag);

// exiftool's structure check: "OK", else the count and the warnings.
QString exiftoolValidation(const QString& path);

// A copy of `source` changed by exiftool with `args` ("-Keys:Model=EOS"),
// made once in the fixture folder as `name`; "" when that failed.
QString exiftoolFixture(const QString& name, const QString& source, const QStringList& args);
