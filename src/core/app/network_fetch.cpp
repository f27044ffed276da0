// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/app/network_fetch.h"

#include <QMetaObject>

#include "core/app/network_module.h"
#include "core/library/lazy_library.h"

namespace {

LazyLibrary networkModule(kNetworkModule, "nothing can be downloaded", LazyLibrary::OurModule);

}  // namespace

NetworkFetch::~NetworkFetch() {
    abandon();
}

void NetworkFetch::abandon() {
    if (!m_running) return;
    if (const auto stop =
            reinterpret_cast<TagsmithFetchAbandon>(networkModule.symbol("tagsmith_fetch_abandon")))
        stop(m_running);
    m_running = nullptr;
}

void NetworkFetch::start(const QUrl& url, int timeoutMs, qint64 maxBytes) {
    abandon();
    const auto begin =
        reinterpret_cast<TagsmithFetchStart>(networkModule.symbol("tagsmith_fetch_start"));
    if (!begin) {
        // Reported from the event loop, as a fetch's end always is.
        QMetaObject::invokeMethod(
            this,
            [this] {
                Q_EMIT finished({}, QStringLiteral("the network module %1 cannot be loaded")
                                        .arg(QLatin1String(kNetworkModule)));
            },
            Qt::QueuedConnection);
        return;
    }
    const TagsmithFetchDone done = [](void* context, const QByteArray& body, const QString& error) {
        auto* self = static_cast<NetworkFetch*>(context);
        self->m_running = nullptr;
        self->m_ended = true;
        Q_EMIT self->finished(body, error);
    };
    m_ended = false;
    void* const fetch = begin(url, timeoutMs, maxBytes, done, this);
    // A fetch that ended within begin() is gone already.
    m_running = m_ended ? nullptr : fetch;
}
