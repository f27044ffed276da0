// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/taglib_info.h"

#include <flacfile.h>
#include <flacpicture.h>
#include <id3v2framefactory.h>
#include <infotag.h>
#include <tbytevectorstream.h>
#include <wavfile.h>
#include <xiphcomment.h>

#include <memory>

#include "core/audio/taglib_stream.h"
#include "core/common/logging.h"
#include "core/common/windowed_file.h"

namespace {

QString text(const TagLib::String& s) {
    return QString::fromStdString(s.to8Bit(true));
}

QByteArray bytes(const TagLib::ByteVector& v) {
    return QByteArray(v.data(), qsizetype(v.size()));
}

}  // namespace

TagLibInfo riffInfoOf(TagLib::RIFF::WAV::File& file) {
    TagLibInfo info;
    if (!file.isValid()) return info;
    info.opened = true;
    if (!file.hasInfoTag()) return info;
    for (const auto& [id, value] : file.InfoTag()->fieldListMap())
        info.fields.append({bytes(id), text(value)});
    return info;
}

TagLibInfo flacInfoOf(TagLib::FLAC::File& file) {
    TagLibInfo info;
    if (!file.isValid()) return info;
    info.opened = true;
    if (TagLib::Ogg::XiphComment* comment = file.xiphComment(false)) {
        for (const auto& [name, values] : comment->fieldListMap())
            info.fields.append({QByteArray::fromStdString(name.to8Bit(true)),
                                text(values.toString(TagLib::String("; ")))});
    }
    const TagLib::FLAC::Picture* chosen = nullptr;
    for (const TagLib::FLAC::Picture* picture : file.pictureList()) {
        if (!chosen || picture->type() == TagLib::FLAC::Picture::FrontCover) chosen = picture;
        if (picture->type() == TagLib::FLAC::Picture::FrontCover) break;
    }
    if (chosen) {
        info.artwork = bytes(chosen->data());
        info.artworkMimeType = text(chosen->mimeType());
    }
    return info;
}

namespace {

TagLibInfo riffInfo(TagLib::IOStream* stream) {
    TagLib::RIFF::WAV::File file(stream, false);
    return riffInfoOf(file);
}

TagLibInfo flacInfo(TagLib::IOStream* stream) {
    TagLib::FLAC::File file(stream, TagLib::ID3v2::FrameFactory::instance(), false);
    return flacInfoOf(file);
}

template <typename Read>
TagLibInfo guarded(const char* what, TagLib::IOStream* stream, Read read) {
    try {
        if (stream && stream->isOpen()) return read(stream);
    } catch (const std::exception& e) {
        qCWarning(lcTagsmith) << what << "failed ==" << e.what();
    } catch (...) {
        qCWarning(lcTagsmith) << what << "failed";
    }
    return {};
}

TagLib::ByteVector vector(const QByteArray& data) {
    return TagLib::ByteVector(data.constData(), static_cast<unsigned int>(data.size()));
}

}  // namespace

TagLibInfo readRiffInfo(WindowedFile& file) {
    TagLibReadStream stream(file);
    return guarded("RIFF INFO reading", &stream, riffInfo);
}

TagLibInfo readFlacInfo(WindowedFile& file) {
    TagLibReadStream stream(file);
    return guarded("FLAC comment reading", &stream, flacInfo);
}

TagLibInfo readRiffInfoFromData(const QByteArray& data) {
    TagLib::ByteVector v = vector(data);
    TagLib::ByteVectorStream stream(v);
    return guarded("RIFF INFO reading", &stream, riffInfo);
}

TagLibInfo readFlacInfoFromData(const QByteArray& data) {
    TagLib::ByteVector v = vector(data);
    TagLib::ByteVectorStream stream(v);
    return guarded("FLAC comment reading", &stream, flacInfo);
}
