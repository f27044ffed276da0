// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/app/update_check.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

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

UpdateCheck::UpdateCheck(QObject* parent)
    : QObject(parent), m_network(new QNetworkAccessManager(this)) {}

void UpdateCheck::checkServerVersion(const QUrl& url, const QString& version) {
    if (connect) connect->abort();
    currentVersion = version;
    receivedData.clear();
    QNetworkRequest request(url);
    request.setTransferTimeout(kTransferTimeoutMs);
    QNetworkReply* reply = m_network->get(request);
    connect = reply;
    QObject::connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] {
        if (reply == connect) receivedData.clear();
    });
    QObject::connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply != connect) return;
        receivedData += reply->readAll();
        if (receivedData.size() > kMaxDocumentBytes) {
            qCInfo(lcTagsmith) << "version document too large, not read";
            reply->abort();
        }
    });
    QObject::connect(reply, &QNetworkReply::finished, this,
                     [this, reply] { connectionDidFinishLoading(reply); });
}

void UpdateCheck::connectionDidFinishLoading(QNetworkReply* reply) {
    reply->deleteLater();
    if (reply != connect) return;  // ended by a newer check
    connect.clear();
    UpdateAnswer answer;
    if (reply->error() != QNetworkReply::NoError) {
        qCInfo(lcTagsmith).noquote() << QStringLiteral("Connection failed! Error - %1 %2")
                                            .arg(reply->errorString(), reply->url().toString());
    } else {
        receivedData += reply->readAll();
        answer = readVersionDocument(receivedData, currentVersion);
    }
    receivedData.clear();
    Q_EMIT answered(answer);
}
