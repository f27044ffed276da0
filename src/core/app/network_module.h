// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

// The interface of the program's network module, libtagsmith-network.so
// (src/network/): plain functions found by name once the module is loaded.
// Qt types cross it by reference; the module and the program share Qt Core.

// Called once at the end of a fetch that was not abandoned: the body, or
// the reason the fetch failed (`error` not empty).
using TagsmithFetchDone = void (*)(void* context, const QByteArray& body, const QString& error);

// "tagsmith_fetch_start": fetches `url` on the calling thread's event loop;
// a body larger than `maxBytes` is not read (that is an error). Answers the
// fetch, to be abandoned or ended by `done`.
using TagsmithFetchStart = void* (*)(const QUrl& url, int timeoutMs, qint64 maxBytes,
                                     TagsmithFetchDone done, void* context);
// "tagsmith_fetch_abandon": stops a running fetch; `done` is not called.
using TagsmithFetchAbandon = void (*)(void* fetch);

inline constexpr const char* kNetworkModule = "libtagsmith-network.so";
