// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

// Property lists through libplist (XML written; XML or binary read). Values
// map as: QVariantMap ↔ dict, QVariantList/QStringList ↔ array, QString ↔
// string, bool ↔ true/false, integers ↔ integer, double ↔ real,
// QByteArray ↔ data, QDateTime ↔ date. Other values are written as their
// text. libplist stays inside this adapter.

// The XML of a property list; empty when libplist refuses it.
QByteArray plistXml(const QVariant& root);

// What reading a property list gives.
struct PlistRead {
    QVariant root;
    QStringList keyOrder;  // the top-level dictionary's keys in the file's order
    QString problem;       // why the file was not read, in the user's words; "" when it was
    bool ok() const { return problem.isEmpty(); }
};

// Reads a file of at most 64 MiB; anything that is not a property list
// answers a problem.
PlistRead readPlistFile(const QString& path);
PlistRead readPlistData(const QByteArray& data);
