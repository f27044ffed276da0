// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/video/bmff_tree.h"

#include <QIODevice>

#include <limits>

#include "core/video/bmff_box.h"

namespace Bmff {

namespace {

constexpr qint64 kHeader = 8;
constexpr qint64 kLargeHeader = 16;

void setReason(QString* reason, const QString& text) {
    if (reason) *reason = text;
}

QString typeText(QByteArrayView type) {
    QString text;
    for (char c : type) {
        const auto u = static_cast<unsigned char>(c);
        text += (u >= 0x20 && u < 0x7f) ? QChar(u) : QChar(u'?');
    }
    return text;
}

bool allZero(QByteArrayView bytes) {
    for (char c : bytes) {
        if (c != 0) return false;
    }
    return true;
}

}  // namespace

void appendU8(QByteArray& out, quint8 value) {
    out.append(char(value));
}

void appendU16(QByteArray& out, quint16 value) {
    out.append(char(value >> 8));
    out.append(char(value));
}

void appendU32(QByteArray& out, quint32 value) {
    appendU16(out, quint16(value >> 16));
    appendU16(out, quint16(value));
}

void appendU64(QByteArray& out, quint64 value) {
    appendU32(out, quint32(value >> 32));
    appendU32(out, quint32(value));
}

QByteArray makeBox(QByteArrayView type, QByteArrayView payload) {
    QByteArray box;
    const quint64 size = quint64(payload.size()) + kHeader;
    if (size > std::numeric_limits<quint32>::max()) {
        appendU32(box, 1);
        box.append(type.data(), 4);
        appendU64(box, size + 8);
    } else {
        appendU32(box, quint32(size));
        box.append(type.data(), 4);
    }
    box.append(payload.data(), payload.size());
    return box;
}

QByteArray makeFullBox(QByteArrayView type, quint8 version, quint32 flags, QByteArrayView payload) {
    QByteArray body;
    body.reserve(payload.size() + 4);
    appendU32(body, (quint32(version) << 24) | (flags & 0xffffff));
    body.append(payload.data(), payload.size());
    return makeBox(type, body);
}

bool scanFileBoxes(QIODevice& device, qint64 fileSize, QList<FileBox>& boxes, QString* reason) {
    boxes.clear();
    qint64 pos = 0;
    while (pos < fileSize) {
        if (boxes.size() >= kMaxFileBoxes) {
            setReason(reason, QStringLiteral("more than %1 top-level boxes").arg(kMaxFileBoxes));
            return false;
        }
        const qint64 remaining = fileSize - pos;
        if (remaining < kHeader) {
            setReason(reason,
                      QStringLiteral("%1 stray bytes at the end of the file").arg(remaining));
            return false;
        }
        QByteArray header(int(qMin<qint64>(remaining, kLargeHeader)), Qt::Uninitialized);
        if (!device.seek(pos) || device.read(header.data(), header.size()) != header.size()) {
            setReason(reason, QStringLiteral("cannot read the box header at %1").arg(pos));
            return false;
        }
        FileBox box;
        box.type = header.mid(4, 4);
        box.offset = pos;
        quint64 size = readU32(header, 0);
        if (size == 1) {
            if (header.size() < kLargeHeader) {
                setReason(reason, QStringLiteral("box header cut short at %1").arg(pos));
                return false;
            }
            size = readU64(header, 8);
            box.headerSize = int(kLargeHeader);
        } else if (size == 0) {
            size = quint64(remaining);
            box.toEndOfFile = true;
        }
        if (size < quint64(box.headerSize) || size > quint64(remaining)) {
            setReason(reason, QStringLiteral("box '%1' at %2 declares %3 bytes; %4 remain")
                                  .arg(typeText(box.type))
                                  .arg(pos)
                                  .arg(size)
                                  .arg(remaining));
            return false;
        }
        box.size = qint64(size);
        boxes.append(box);
        pos += box.size;
    }
    return true;
}

void TreeBox::appendChild(std::unique_ptr<TreeBox> child) {
    m_container = true;
    m_children.push_back(std::move(child));
}

int TreeBox::removeChildren(QByteArrayView type) {
    const auto before = m_children.size();
    std::erase_if(m_children, [&](const auto& c) { return c->type() == type; });
    return int(before - m_children.size());
}

int TreeBox::removeChildrenIf(const std::function<bool(const TreeBox&)>& remove) {
    const auto before = m_children.size();
    std::erase_if(m_children, [&](const auto& c) { return remove(*c); });
    return int(before - m_children.size());
}

TreeBox* TreeBox::child(QByteArrayView type) const {
    for (const auto& c : m_children) {
        if (c->type() == type) return c.get();
    }
    return nullptr;
}

QList<TreeBox*> TreeBox::childrenOf(QByteArrayView type) const {
    QList<TreeBox*> out;
    for (const auto& c : m_children) {
        if (c->type() == type) out.append(c.get());
    }
    return out;
}

qint64 TreeBox::headerSize() const {
    return m_largeHeader ? kLargeHeader : kHeader;
}

qint64 TreeBox::bodySize() const {
    if (!m_container) return m_payload.size();
    qint64 body = m_padding.size();
    for (const auto& c : m_children) body += c->size();
    return body;
}

qint64 TreeBox::writtenHeaderSize() const {
    // A box that has outgrown 32 bits needs the 64-bit form whatever it had.
    if (m_largeHeader || bodySize() + kHeader > std::numeric_limits<quint32>::max())
        return kLargeHeader;
    return kHeader;
}

qint64 TreeBox::size() const {
    const qint64 body = bodySize();
    if (!m_largeHeader && body + kHeader > std::numeric_limits<quint32>::max())
        return body + kLargeHeader;
    return body + headerSize();
}

QByteArray TreeBox::serialize() const {
    QByteArray out;
    out.reserve(size());
    appendTo(out);
    return out;
}

void TreeBox::appendTo(QByteArray& out) const {
    const qint64 total = size();
    if (total > std::numeric_limits<quint32>::max() || m_largeHeader) {
        appendU32(out, 1);
        out.append(m_type.constData(), 4);
        appendU64(out, quint64(total));
    } else {
        appendU32(out, quint32(total));
        out.append(m_type.constData(), 4);
    }
    if (!m_container) {
        out.append(m_payload);
        return;
    }
    for (const auto& c : m_children) c->appendTo(out);
    out.append(m_padding);
}

bool TreeBox::parseChildren(QByteArrayView payload, const QList<QByteArray>& containers, int depth,
                            QString* reason, qint64 payloadOffset) {
    if (depth > kMaxTreeDepth) {
        setReason(reason, QStringLiteral("boxes nested deeper than %1").arg(kMaxTreeDepth));
        return false;
    }
    m_container = true;
    m_payload.clear();
    m_children.clear();
    qint64 pos = 0;
    while (pos < payload.size()) {
        const qint64 remaining = payload.size() - pos;
        if (remaining < kHeader) {
            // Old movie files may close a container with a zero word.
            if (allZero(payload.sliced(pos))) {
                m_padding = payload.sliced(pos).toByteArray();
                return true;
            }
            setReason(reason,
                      QStringLiteral("stray bytes at the end of '%1'").arg(typeText(m_type)));
            return false;
        }
        quint64 size = readU32(payload, pos);
        const QByteArrayView type = payload.sliced(pos + 4, 4);
        qint64 header = kHeader;
        if (size == 1) {
            if (remaining < kLargeHeader) {
                setReason(reason,
                          QStringLiteral("box header cut short in '%1'").arg(typeText(m_type)));
                return false;
            }
            size = readU64(payload, pos + 8);
            header = kLargeHeader;
        } else if (size == 0) {
            size = quint64(remaining);
        }
        if (size < quint64(header) || size > quint64(remaining)) {
            setReason(reason, QStringLiteral("box '%1' in '%2' declares %3 bytes; %4 remain")
                                  .arg(typeText(type), typeText(m_type))
                                  .arg(size)
                                  .arg(remaining));
            return false;
        }
        auto child = std::make_unique<TreeBox>(type.toByteArray());
        child->setLargeHeader(header == kLargeHeader);
        child->setSource(payloadOffset + pos, qint64(size));
        const QByteArrayView body = payload.sliced(pos + header, qint64(size) - header);
        if (containers.contains(child->type())) {
            if (!child->parseChildren(body, containers, depth + 1, reason,
                                      payloadOffset + pos + header)) {
                return false;
            }
        } else {
            child->setPayload(body.toByteArray());
        }
        m_children.push_back(std::move(child));
        pos += qint64(size);
    }
    return true;
}

const QList<QByteArray>& movieContainers() {
    static const QList<QByteArray> types{"trak", "mdia", "minf", "stbl", "dinf", "edts"};
    return types;
}

std::unique_ptr<TreeBox> parseMovieBox(QByteArrayView payload, QString* reason, qint64 headerSize) {
    auto moov = std::make_unique<TreeBox>(QByteArrayLiteral("moov"));
    moov->setSource(0, payload.size() + headerSize);
    moov->setLargeHeader(headerSize == kLargeHeader);
    if (!moov->parseChildren(payload, movieContainers(), 1, reason, headerSize)) return nullptr;
    return moov;
}

}  // namespace Bmff
