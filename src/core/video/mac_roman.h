// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

// The classic Macintosh Roman character set, which QuickTime user-data
// texts with a Macintosh language code are stored in. Qt 6 has no codec for
// it; the upper half is one fixed table.
namespace MacRoman {

QString decode(QByteArrayView bytes);

// The text's Mac Roman bytes, or nullopt when a character has none.
std::optional<QByteArray> encode(const QString& text);

}  // namespace MacRoman
