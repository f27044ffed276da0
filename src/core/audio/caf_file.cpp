// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/caf_file.h"

#include <QtEndian>

namespace {

constexpr int kMaxChunks = 4096;
// An info chunk is a handful of texts; anything larger is damage.
constexpr qint64 kMaxInfoSize = qint64(16) << 20;
constexpr qint64 kCopyBlock = qint64(1) << 20;

quint32 be32(const QByteArray& b, qsizetype at) {
    return qFromBigEndian<quint32>(b.constData() + at);
}

bool copyRange(QIODevice& source, qint64 offset, qint64 length, QIODevice& out, QString* error) {
    if (!source.seek(offset)) {
        *error = QStringLiteral("cannot seek in the source");
        return false;
    }
    while (length > 0) {
        const QByteArray block = source.read(std::min(length, kCopyBlock));
        if (block.isEmpty()) {
            *error = QStringLiteral("the source ended early");
            return false;
        }
        if (out.write(block) != block.size()) {
            *error = QStringLiteral("cannot write: ") + out.errorString();
            return false;
        }
        length -= block.size();
    }
    return true;
}

QByteArray chunkHeader(const QByteArray& type, qint64 size) {
    QByteArray header = type;
    header.resize(12);
    qToBigEndian<qint64>(size, header.data() + 4);
    return header;
}

}  // namespace

const CafChunk* CafLayout::find(const char* type) const {
    for (const CafChunk& chunk : chunks)
        if (chunk.type == type) return &chunk;
    return nullptr;
}

bool looksLikeCaf(const QByteArray& head) {
    return head.size() >= 8 && head.startsWith("caff") && head[4] == 0 && head[5] == 1;
}

CafLayout readCafLayout(QIODevice& file) {
    CafLayout layout;
    const qint64 fileSize = file.size();
    if (!file.seek(0) || !looksLikeCaf(file.read(8))) return layout;
    layout.isCaf = true;
    qint64 pos = 8;
    while (pos < fileSize) {
        if (layout.chunks.size() >= kMaxChunks) {
            layout.problem = QStringLiteral("too many chunks");
            break;
        }
        if (fileSize - pos < 12 || !file.seek(pos)) {
            layout.problem = QStringLiteral("a chunk header is cut off at byte %1").arg(pos);
            break;
        }
        const QByteArray header = file.read(12);
        CafChunk chunk;
        chunk.type = header.left(4);
        chunk.offset = pos;
        const qint64 size = qFromBigEndian<qint64>(header.constData() + 4);
        const qint64 room = fileSize - pos - 12;
        if (size == -1 && chunk.type == "data") {
            chunk.sizeUnknown = true;
            chunk.size = room;
        } else if (size < 0 || size > room) {
            layout.problem = QStringLiteral("chunk '%1' runs past the end of the file")
                                 .arg(QString::fromLatin1(chunk.type));
            break;
        } else {
            chunk.size = size;
        }
        layout.chunks.append(chunk);
        pos = chunk.end();
    }
    return layout;
}

CafInfo readCafInfo(QIODevice& file, const CafLayout& layout, QString* problem) {
    CafInfo info;
    const CafChunk* chunk = layout.find("info");
    if (!chunk) return info;
    auto fail = [&](const QString& why) {
        if (problem) *problem = why;
        return info;
    };
    if (chunk->size < 4 || chunk->size > kMaxInfoSize)
        return fail(QStringLiteral("the info chunk's size is damaged"));
    if (!file.seek(chunk->contentOffset())) return fail(QStringLiteral("cannot seek"));
    const QByteArray content = file.read(chunk->size);
    if (content.size() != chunk->size) return fail(QStringLiteral("the info chunk is cut off"));
    const quint32 count = be32(content, 0);
    qsizetype pos = 4;
    auto take = [&](QString* text) {
        const qsizetype end = content.indexOf('\0', pos);
        if (end < 0) return false;
        *text = QString::fromUtf8(content.constData() + pos, end - pos);
        pos = end + 1;
        return true;
    };
    for (quint32 i = 0; i < count; ++i) {
        QString key, value;
        if (!take(&key) || !take(&value))
            return fail(QStringLiteral("the info chunk holds fewer entries than it says"));
        info.append({key, value});
    }
    return info;
}

CafInfo readCafInfo(QIODevice& file, QString* problem) {
    const CafLayout layout = readCafLayout(file);
    if (problem) *problem = layout.isCaf ? layout.problem : QStringLiteral("not a CAF file");
    return readCafInfo(file, layout, problem);
}

QByteArray encodeCafInfo(const CafInfo& info) {
    QByteArray content(4, '\0');
    qToBigEndian<quint32>(quint32(info.size()), content.data());
    for (const auto& [key, value] : info) {
        content += key.toUtf8();
        content += '\0';
        content += value.toUtf8();
        content += '\0';
    }
    return content;
}

bool writeCafCopyWithInfo(QIODevice& source, QIODevice& out, const CafInfo& info, QString* error) {
    QString why;
    error = error ? error : &why;
    const CafLayout layout = readCafLayout(source);
    if (!layout.isCaf) {
        *error = QStringLiteral("not a CAF file");
        return false;
    }
    if (!layout.problem.isEmpty()) {
        *error = QStringLiteral("damaged CAF file: ") + layout.problem;
        return false;
    }
    const QByteArray content = encodeCafInfo(info);
    const QByteArray infoChunk = chunkHeader("info", content.size()) + content;
    const bool hasInfo = layout.find("info") != nullptr;
    bool infoWritten = false;
    if (!copyRange(source, 0, 8, out, error)) return false;
    for (const CafChunk& chunk : layout.chunks) {
        if (chunk.type == "info") {
            if (!infoWritten && out.write(infoChunk) != infoChunk.size()) {
                *error = QStringLiteral("cannot write: ") + out.errorString();
                return false;
            }
            infoWritten = true;
            continue;
        }
        if (!copyRange(source, chunk.offset, 12 + chunk.size, out, error)) return false;
        if (!hasInfo && !infoWritten && chunk.type == "desc") {
            if (out.write(infoChunk) != infoChunk.size()) {
                *error = QStringLiteral("cannot write: ") + out.errorString();
                return false;
            }
            infoWritten = true;
        }
    }
    if (!infoWritten) {
        *error = QStringLiteral("the CAF file has no audio description chunk");
        return false;
    }
    return true;
}
