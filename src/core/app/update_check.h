// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QUrl>

#include "core/app/network_fetch.h"

// The check for a newer version: the version document (a property-list
// dictionary with "lastestVersion" and "WhatsNew") fetched from the maker's
// server, parsed in memory and compared with the program's own version.

// The document's address: the settings key "updateURL", else the default.
inline constexpr const char* kUpdateUrlKey = "updateURL";
inline constexpr const char* kDefaultUpdateUrl =
    "https://tagsmith.example/product/tagsmithVersion.plist";
QUrl updateDocumentUrl(const QSettings& settings);

// `CompareOneString:withTwoString:`: every "." removed, the leading digits
// of each read as a 32-bit integer (none: 0); true when the first is
// strictly greater. So 1.2.10 (1210) is newer than 1.3 (13), on purpose.
bool CompareOneString(const QString& one, const QString& two);

// What the document says, against the version in use.
struct UpdateAnswer {
    enum Kind {
        Failed,         // no document: the connection failed (logged)
        NotDictionary,  // the bytes are no property-list dictionary (logged)
        NotNewer,
        Newer,
    } kind = Failed;
    QString lastestVersion;  // "" when the key is missing
    QString whatsnewString;  // the release notes, every "*" made a line break
};
UpdateAnswer readVersionDocument(const QByteArray& data, const QString& currentVersion);

// The update window's texts (`newversionlab`, `currentversionlab`).
QString newVersionText(const QString& lastestVersion);
QString currentVersionText(const QString& currentVersion);

// The download (`checkServerVersion`), asynchronous on the calling thread's
// event loop; one at a time (a new check ends the running one).
class UpdateCheck : public QObject {
    Q_OBJECT
public:
    explicit UpdateCheck(QObject* parent = nullptr);
    void checkServerVersion(const QUrl& url, const QString& currentVersion);

Q_SIGNALS:
    void answered(const UpdateAnswer& answer);

private:
    void connectionDidFinishLoading(const QByteArray& receivedData, const QString& error);

    NetworkFetch m_fetch;
    QString currentVersion;
};
