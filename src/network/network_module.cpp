// SPDX-License-Identifier: GPL-3.0-or-later
// The program's network module: Qt's network access behind the functions of
// core/app/network_module.h. The programs load it on their first download
// (core/app/network_fetch.cpp), so that Qt Network and what it pulls in
// (Kerberos, proxy discovery, TLS) are not loaded by every run.
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <type_traits>

#include "core/app/network_module.h"

namespace {

// One fetch, with its own access manager; it deletes itself once ended.
class Fetch : public QObject {
public:
    Fetch(const QUrl& url, int timeoutMs, qint64 maxBytes, TagsmithFetchDone done, void* context)
        : m_maxBytes(maxBytes), m_done(done), m_context(context) {
        auto* network = new QNetworkAccessManager(this);
        QNetworkRequest request(url);
        request.setTransferTimeout(timeoutMs);
        m_reply = network->get(request);
        // A redirect starts the body again.
        connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] { m_body.clear(); });
        connect(m_reply, &QNetworkReply::readyRead, this, [this] {
            m_body += m_reply->readAll();
            if (m_body.size() > m_maxBytes) {
                m_tooLarge = true;
                m_reply->abort();
            }
        });
        connect(m_reply, &QNetworkReply::finished, this, [this] { end(); });
    }

    void abandon() {
        m_done = nullptr;
        m_reply->abort();
        deleteLater();
    }

private:
    void end() {
        const TagsmithFetchDone done = m_done;
        m_done = nullptr;
        deleteLater();
        if (!done) return;
        if (m_tooLarge) {
            done(m_context, {},
                 QStringLiteral("the document is larger than %1 bytes").arg(m_maxBytes));
        } else if (m_reply->error() != QNetworkReply::NoError) {
            done(m_context, {},
                 m_reply->errorString() + QLatin1Char(' ') + m_reply->url().toString());
        } else {
            m_body += m_reply->readAll();
            done(m_context, m_body, {});
        }
    }

    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    const qint64 m_maxBytes;
    bool m_tooLarge = false;
    TagsmithFetchDone m_done;
    void* const m_context;
};

}  // namespace

extern "C" Q_DECL_EXPORT void* tagsmith_fetch_start(const QUrl& url, int timeoutMs, qint64 maxBytes,
                                                    TagsmithFetchDone done, void* context) {
    return new Fetch(url, timeoutMs, maxBytes, done, context);
}

extern "C" Q_DECL_EXPORT void tagsmith_fetch_abandon(void* fetch) {
    static_cast<Fetch*>(fetch)->abandon();
}

// The signatures match the interface's (the compiler checks them here).
static_assert(std::is_same_v<decltype(&tagsmith_fetch_start), TagsmithFetchStart>);
static_assert(std::is_same_v<decltype(&tagsmith_fetch_abandon), TagsmithFetchAbandon>);
