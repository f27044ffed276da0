// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/id3lib_adapter.h"

#include <QFile>
#include <QHash>

#include <id3/field.h>
#include <id3/tag.h>
#include <id3/writer.h>

#include <vector>

#include "core/common/logging.h"

namespace {

// The v2.3 frames id3lib builds without fault. Frames of v2.4 only (which
// id3lib names but cannot render) are deliberately absent.
const QHash<QByteArray, ID3_FrameID>& buildableFrames() {
    static const QHash<QByteArray, ID3_FrameID> table = {
        {"TALB", ID3FID_ALBUM},
        {"TBPM", ID3FID_BPM},
        {"TCOM", ID3FID_COMPOSER},
        {"TCON", ID3FID_CONTENTTYPE},
        {"TCOP", ID3FID_COPYRIGHT},
        {"TDAT", ID3FID_DATE},
        {"TDLY", ID3FID_PLAYLISTDELAY},
        {"TENC", ID3FID_ENCODEDBY},
        {"TEXT", ID3FID_LYRICIST},
        {"TFLT", ID3FID_FILETYPE},
        {"TIME", ID3FID_TIME},
        {"TIT1", ID3FID_CONTENTGROUP},
        {"TIT2", ID3FID_TITLE},
        {"TIT3", ID3FID_SUBTITLE},
        {"TKEY", ID3FID_INITIALKEY},
        {"TLAN", ID3FID_LANGUAGE},
        {"TLEN", ID3FID_SONGLEN},
        {"TMED", ID3FID_MEDIATYPE},
        {"TOAL", ID3FID_ORIGALBUM},
        {"TOFN", ID3FID_ORIGFILENAME},
        {"TOLY", ID3FID_ORIGLYRICIST},
        {"TOPE", ID3FID_ORIGARTIST},
        {"TORY", ID3FID_ORIGYEAR},
        {"TOWN", ID3FID_FILEOWNER},
        {"TPE1", ID3FID_LEADARTIST},
        {"TPE2", ID3FID_BAND},
        {"TPE3", ID3FID_CONDUCTOR},
        {"TPE4", ID3FID_MIXARTIST},
        {"TPOS", ID3FID_PARTINSET},
        {"TPUB", ID3FID_PUBLISHER},
        {"TRCK", ID3FID_TRACKNUM},
        {"TRDA", ID3FID_RECORDINGDATES},
        {"TRSN", ID3FID_NETRADIOSTATION},
        {"TRSO", ID3FID_NETRADIOOWNER},
        {"TSIZ", ID3FID_SIZE},
        {"TSRC", ID3FID_ISRC},
        {"TSSE", ID3FID_ENCODERSETTINGS},
        {"TYER", ID3FID_YEAR},
        {"TXXX", ID3FID_USERTEXT},
        {"COMM", ID3FID_COMMENT},
        {"USLT", ID3FID_UNSYNCEDLYRICS},
        {"APIC", ID3FID_PICTURE},
        {"GEOB", ID3FID_GENERALOBJECT},
        {"PRIV", ID3FID_PRIVATE},
        {"UFID", ID3FID_UNIQUEFILEID},
        {"WCOM", ID3FID_WWWCOMMERCIALINFO},
        {"WCOP", ID3FID_WWWCOPYRIGHT},
        {"WOAF", ID3FID_WWWAUDIOFILE},
        {"WOAR", ID3FID_WWWARTIST},
        {"WOAS", ID3FID_WWWAUDIOSOURCE},
        {"WORS", ID3FID_WWWRADIOPAGE},
        {"WPAY", ID3FID_WWWPAYMENT},
        {"WPUB", ID3FID_WWWPUBLISHER},
        {"WXXX", ID3FID_WWWUSER},
    };
    return table;
}

// id3lib turns each code unit around when it writes UTF-16: hand it the
// units already turned, so the file gets little-endian units after its
// little-endian mark.
std::vector<unicode_t> swappedUnits(const QString& text) {
    std::vector<unicode_t> units;
    units.reserve(size_t(text.size()) + 1);
    for (QChar c : text) {
        const ushort u = c.unicode();
        if (u == 0) continue;
        units.push_back(unicode_t(((u & 0xff) << 8) | (u >> 8)));
    }
    units.push_back(0);
    return units;
}

void setUtf16(ID3_Frame& frame, ID3_FieldID id, const QString& text) {
    ID3_Field* field = frame.GetField(id);
    if (!field) return;
    field->SetEncoding(ID3TE_UTF16);
    const std::vector<unicode_t> units = swappedUnits(text);
    field->Set(units.data());
}

void setLatin1(ID3_Frame& frame, ID3_FieldID id, const QByteArray& text) {
    if (ID3_Field* field = frame.GetField(id)) field->Set(text.constData());
}

void setBinary(ID3_Frame& frame, ID3_FieldID id, const QByteArray& data) {
    if (ID3_Field* field = frame.GetField(id))
        field->Set(reinterpret_cast<const uchar*>(data.constData()), size_t(data.size()));
}

void setEncoding(ID3_Frame& frame, ID3_TextEnc encoding) {
    if (ID3_Field* field = frame.GetField(ID3FN_TEXTENC)) field->Set(uint32(encoding));
}

// Collects what id3lib renders.
class ByteWriter : public ID3_Writer {
public:
    void close() override {}
    void flush() override {}
    pos_type getCur() override { return pos_type(bytes.size()); }
    size_type writeChars(const char_type buf[], size_type len) override {
        bytes.append(reinterpret_cast<const char*>(buf), qsizetype(len));
        return len;
    }
    using ID3_Writer::writeChars;
    QByteArray bytes;
};

quint32 bigEndian32(const char* p) {
    return (quint32(uchar(p[0])) << 24) | (quint32(uchar(p[1])) << 16) |
           (quint32(uchar(p[2])) << 8) | quint32(uchar(p[3]));
}

void putBigEndian32(QByteArray& out, quint32 v) {
    out.append(char(v >> 24)).append(char(v >> 16)).append(char(v >> 8)).append(char(v));
}

// Offset just past a UTF-16 string starting at `at` (its terminator
// included), or -1 when none ends within `body`.
qsizetype utf16End(const QByteArray& body, qsizetype at) {
    for (qsizetype i = at; i + 1 < body.size(); i += 2) {
        if (body[i] == 0 && body[i + 1] == 0) return i + 2;
    }
    return -1;
}

qsizetype latin1End(const QByteArray& body, qsizetype at) {
    const qsizetype nul = body.indexOf('\0', at);
    return nul < 0 ? -1 : nul + 1;
}

// Gives an empty UTF-16 string at `at` its byte-order mark; answers the
// offset past the string.
qsizetype markEmptyUtf16(QByteArray& body, qsizetype at, bool terminated) {
    static const char kMark[] = "\xff\xfe";
    if (at < 0) return -1;
    if (!terminated) {
        if (at == body.size()) body.append(kMark, 2);
        return body.size();
    }
    if (at + 1 < body.size() && body[at] == 0 && body[at + 1] == 0) body.insert(at, kMark, 2);
    return utf16End(body, at);
}

void mendFrameBody(const QByteArray& id, QByteArray& body) {
    if (body.isEmpty() || body[0] != 1) return;  // not UTF-16
    if (id == "COMM" || id == "USLT") {
        if (body.size() < 4) return;
        const qsizetype text = markEmptyUtf16(body, 4, true);
        markEmptyUtf16(body, text, false);
    } else if (id == "TXXX") {
        const qsizetype value = markEmptyUtf16(body, 1, true);
        markEmptyUtf16(body, value, false);
    } else if (id == "WXXX") {
        markEmptyUtf16(body, 1, true);
    } else if (id == "APIC") {
        const qsizetype mimeEnd = latin1End(body, 1);
        if (mimeEnd < 0 || mimeEnd >= body.size()) return;
        markEmptyUtf16(body, mimeEnd + 1, true);
    }
}

}  // namespace

QByteArray mendRenderedId3Tag(const QByteArray& rendered) {
    if (rendered.size() < 10 || !rendered.startsWith("ID3") || rendered[3] != 3) return {};
    const qint64 declared = (qint64(rendered[6] & 0x7f) << 21) |
                            (qint64(rendered[7] & 0x7f) << 14) | (qint64(rendered[8] & 0x7f) << 7) |
                            qint64(rendered[9] & 0x7f);
    const qint64 end = qMin<qint64>(rendered.size(), 10 + declared);
    QByteArray frames;
    qint64 at = 10;
    while (at + 10 <= end && rendered[at] != 0) {
        const QByteArray id = rendered.mid(at, 4);
        const qint64 size = bigEndian32(rendered.constData() + at + 4);
        if (size > end - at - 10) return {};
        QByteArray body = rendered.mid(at + 10, size);
        mendFrameBody(id, body);
        frames += id;
        putBigEndian32(frames, quint32(body.size()));
        frames += rendered.mid(at + 8, 2);
        frames += body;
        at += 10 + size;
    }
    const qint64 n = frames.size();
    QByteArray tag("ID3\x03\x00\x00", 6);
    tag.append(char((n >> 21) & 0x7f)).append(char((n >> 14) & 0x7f));
    tag.append(char((n >> 7) & 0x7f)).append(char(n & 0x7f));
    return tag + frames;
}

Id3TagWriter::Id3TagWriter() : m_tag(std::make_unique<ID3_Tag>()) {
    m_tag->SetPadding(false);
    m_tag->SetUnsync(false);
    m_tag->SetSpec(ID3V2_3_0);
}

Id3TagWriter::~Id3TagWriter() = default;

bool Id3TagWriter::canBuild(const QByteArray& id) {
    return buildableFrames().contains(id);
}

namespace {

// Builds one frame with `fill` and adds it; exceptions become failures.
template <typename Fill>
bool addFrame(ID3_Tag& tag, const QByteArray& id, int& count, QString& error, Fill fill) {
    const auto found = buildableFrames().constFind(id);
    if (found == buildableFrames().constEnd()) {
        error = QStringLiteral("id3lib cannot write %1 frames").arg(QLatin1String(id));
        return false;
    }
    try {
        ID3_Frame frame(found.value());
        fill(frame);
        tag.AddFrame(frame);
        ++count;
        return true;
    } catch (const std::exception& e) {
        error = QStringLiteral("id3lib failed on a %1 frame: %2")
                    .arg(QLatin1String(id), QString::fromLocal8Bit(e.what()));
    } catch (...) {
        error = QStringLiteral("id3lib failed on a %1 frame").arg(QLatin1String(id));
    }
    return false;
}

}  // namespace

bool Id3TagWriter::addText(const QByteArray& id, const QString& text) {
    return addFrame(*m_tag, id, m_frames, m_error, [&](ID3_Frame& f) {
        // An empty UTF-16 text would carry no byte-order mark.
        if (text.isEmpty()) {
            setEncoding(f, ID3TE_ISO8859_1);
            setLatin1(f, ID3FN_TEXT, QByteArray());
            return;
        }
        setEncoding(f, ID3TE_UTF16);
        setUtf16(f, ID3FN_TEXT, text);
    });
}

bool Id3TagWriter::addComment(const QByteArray& id, const QByteArray& language,
                              const QString& description, const QString& text) {
    return addFrame(*m_tag, id, m_frames, m_error, [&](ID3_Frame& f) {
        setEncoding(f, ID3TE_UTF16);
        if (!language.isEmpty()) setLatin1(f, ID3FN_LANGUAGE, language.left(3));
        setUtf16(f, ID3FN_DESCRIPTION, description);
        setUtf16(f, ID3FN_TEXT, text);
    });
}

bool Id3TagWriter::addUserText(const QByteArray& id, const QString& description,
                               const QString& value) {
    return addFrame(*m_tag, id, m_frames, m_error, [&](ID3_Frame& f) {
        setEncoding(f, ID3TE_UTF16);
        setUtf16(f, ID3FN_DESCRIPTION, description);
        if (id == "WXXX")
            setLatin1(f, ID3FN_URL, value.toLatin1());
        else
            setUtf16(f, ID3FN_TEXT, value);
    });
}

bool Id3TagWriter::addUrl(const QByteArray& id, const QString& url) {
    return addFrame(*m_tag, id, m_frames, m_error,
                    [&](ID3_Frame& f) { setLatin1(f, ID3FN_URL, url.toLatin1()); });
}

bool Id3TagWriter::addPicture(const QString& mimeType, quint8 pictureType,
                              const QString& description, const QByteArray& data) {
    return addFrame(*m_tag, "APIC", m_frames, m_error, [&](ID3_Frame& f) {
        setEncoding(f, ID3TE_UTF16);
        setLatin1(f, ID3FN_MIMETYPE, mimeType.toLatin1());
        if (ID3_Field* type = f.GetField(ID3FN_PICTURETYPE)) type->Set(uint32(pictureType));
        setUtf16(f, ID3FN_DESCRIPTION, description);
        setBinary(f, ID3FN_DATA, data);
    });
}

bool Id3TagWriter::addPictureFile(const QString& path, const QString& mimeType,
                                  quint8 pictureType) {
    return addFrame(*m_tag, "APIC", m_frames, m_error, [&](ID3_Frame& f) {
        setEncoding(f, ID3TE_UTF16);
        setLatin1(f, ID3FN_MIMETYPE, mimeType.toLatin1());
        if (ID3_Field* type = f.GetField(ID3FN_PICTURETYPE)) type->Set(uint32(pictureType));
        setUtf16(f, ID3FN_DESCRIPTION, QString());
        if (ID3_Field* data = f.GetField(ID3FN_DATA))
            data->FromFile(QFile::encodeName(path).constData());
    });
}

bool Id3TagWriter::addOwnerData(const QByteArray& id, const QByteArray& owner,
                                const QByteArray& data) {
    return addFrame(*m_tag, id, m_frames, m_error, [&](ID3_Frame& f) {
        setLatin1(f, ID3FN_OWNER, owner);
        setBinary(f, ID3FN_DATA, data);
    });
}

bool Id3TagWriter::addObject(const QString& mimeType, const QString& fileName,
                             const QString& description, const QByteArray& data) {
    return addFrame(*m_tag, "GEOB", m_frames, m_error, [&](ID3_Frame& f) {
        setEncoding(f, ID3TE_UTF16);
        setLatin1(f, ID3FN_MIMETYPE, mimeType.toLatin1());
        setUtf16(f, ID3FN_FILENAME, fileName);
        setUtf16(f, ID3FN_DESCRIPTION, description);
        setBinary(f, ID3FN_DATA, data);
    });
}

QByteArray Id3TagWriter::render(QString* error) const {
    if (m_frames == 0) return {};
    ByteWriter writer;
    try {
        m_tag->Render(writer, ID3TT_ID3V2);
    } catch (...) {
        if (error) *error = QStringLiteral("id3lib could not write the tag");
        return {};
    }
    const QByteArray tag = mendRenderedId3Tag(writer.bytes);
    if (tag.isEmpty() && error) *error = QStringLiteral("id3lib wrote a tag that cannot be used");
    return tag;
}
