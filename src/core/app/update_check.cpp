// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/app/update_check.h"

#include <QCoreApplication>

#include <limits>

#include "core/batch/plist_io.h"
#include "core/common/logging.h"

namespace {

// A version document is a few hundred bytes; anything far larger is not one.
constexpr qint64 kMaxDocumentBytes = 1 << 20;
constexpr int kTransferTimeoutMs = 30000;

qint32 joinedDigits(QString text) {
    text.remove(QLatin1Char('.'));
    qint64 value = 0;
    for (const QChar c : text) {
        if (!c.isDigit() || c.unicode() > 127) break;
        value =
            std::min<qint64>(value * 10 + (c.unicode() - '0'), std::numeric_limits<qint32>::max());
    }
    return qint32(value);
}

}  // namespace

QUrl updateDocumentUrl(const QSettings& settings) {
    return QUrl(
        settings.value(QLatin1String(kUpdateUrlKey), QLatin1String(kDefaultUpdateUrl)).toString());
}

bool CompareOneString(const QString& one, const QString& two) {
    return joinedDigits(one) > joinedDigits(two);
}

UpdateAnswer readVersionDocument(const QByteArray& data, const QString& currentVersion) {
    UpdateAnswer answer;
    const PlistRead read = readPlistData(data);
    if (!read.ok() || read.root.typeId() != QMetaType::QVariantMap) {
        qCInfo(lcTagsmith).noquote() << "version document is no dictionary ==" << read.problem;
        answer.kind = UpdateAnswer::NotDictionary;
        return answer;
    }
    const QVariantMap document = read.root.toMap();
    answer.lastestVersion = document.value(QStringLiteral("lastestVersion")).toString();
    answer.whatsnewString = document.value(QStringLiteral("WhatsNew")).toString();
    answer.whatsnewString.replace(QLatin1Char('*'), QLatin1Char('\n'));
    answer.kind = CompareOneString(answer.lastestVersion, currentVersion) ? UpdateAnswer::Newer
                                                                          : UpdateAnswer::NotNewer;
    qCInfo(lcTagsmith).noquote() << "lastestVersion ==" << answer.lastestVersion
                                 << "== currentVersion ==" << currentVersion;
    return answer;
}

QString newVersionText(const QString& lastestVersion) {
    return QCoreApplication::translate("PRUpdateController",
                                       "Brimlark Photo Stampel %1 is available.")
        .arg(lastestVersion);
}

QString currentVersionText(const QString& currentVersion) {
    return QCoreApplication::translate(
               "PRUpdateController", "You are using %1 version. Would you like to download it now?")
        .arg(currentVersion);
}

UpdateCheck::UpdateCheck(QObject* parent) : QObject(parent) {
    QObject::connect(&m_fetch, &NetworkFetch::finished, this,
                     &UpdateCheck::connectionDidFinishLoading);
}

void UpdateCheck::checkServerVersion(const QUrl& url, const QString& version) {
    currentVersion = version;
    // A check still running is abandoned.
    m_fetch.start(url, kTransferTimeoutMs, kMaxDocumentBytes);
}

void UpdateCheck::connectionDidFinishLoading(const QByteArray& receivedData, const QString& error) {
    UpdateAnswer answer;
    if (!error.isEmpty())
        qCInfo(lcTagsmith).noquote() << QStringLiteral("Connection failed! Error - %1").arg(error);
    else
        answer = readVersionDocument(receivedData, currentVersion);
    Q_EMIT answered(answer);
}
