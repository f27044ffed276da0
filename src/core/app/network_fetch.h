// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

// One download of a small document, asynchronous on the calling thread's
// event loop. Qt Network, and Kerberos, proxy discovery and TLS behind it,
// cost every process that links them about 3 ms to load, a tenth of a
// command-line import; they live in the program's network module, loaded on
// the first download.
class NetworkFetch : public QObject {
    Q_OBJECT
public:
    explicit NetworkFetch(QObject* parent = nullptr) : QObject(parent) {}
    ~NetworkFetch() override;

    // Starts fetching `url`; a fetch still running is abandoned and never
    // reported. A body larger than `maxBytes` is not read.
    void start(const QUrl& url, int timeoutMs, qint64 maxBytes);

Q_SIGNALS:
    // The end of a fetch: the body, or the reason it failed (`error` not
    // empty; the module missing is one).
    void finished(const QByteArray& body, const QString& error);

private:
    void abandon();

    void* m_running = nullptr;
    bool m_ended = false;  // the last fetch has reported its end
};
