// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/audio/mp3_frames.h"

#include <QHash>
#include <QRegularExpression>

#include "core/audio/id3_frames.h"
#include "core/audio/id3lib_adapter.h"

namespace {

// v2.2 ids and the v2.3 frames they became.
const QHash<QByteArray, QByteArray>& v22Names() {
    static const QHash<QByteArray, QByteArray> table = {
        {"TT1", "TIT1"}, {"TT2", "TIT2"}, {"TT3", "TIT3"}, {"TP1", "TPE1"}, {"TP2", "TPE2"},
        {"TP3", "TPE3"}, {"TP4", "TPE4"}, {"TAL", "TALB"}, {"TRK", "TRCK"}, {"TPA", "TPOS"},
        {"TYE", "TYER"}, {"TDA", "TDAT"}, {"TIM", "TIME"}, {"TRD", "TRDA"}, {"TCO", "TCON"},
        {"TCM", "TCOM"}, {"TCR", "TCOP"}, {"TPB", "TPUB"}, {"TXT", "TEXT"}, {"TEN", "TENC"},
        {"TSS", "TSSE"}, {"TBP", "TBPM"}, {"TKE", "TKEY"}, {"TLA", "TLAN"}, {"TLE", "TLEN"},
        {"TMT", "TMED"}, {"TOA", "TOPE"}, {"TOT", "TOAL"}, {"TOL", "TOLY"}, {"TOR", "TORY"},
        {"TOF", "TOFN"}, {"TRC", "TSRC"}, {"TSI", "TSIZ"}, {"TFT", "TFLT"}, {"TXX", "TXXX"},
        {"COM", "COMM"}, {"ULT", "USLT"}, {"PIC", "APIC"}, {"GEO", "GEOB"}, {"UFI", "UFID"},
        {"WXX", "WXXX"}, {"WAF", "WOAF"}, {"WAR", "WOAR"}, {"WAS", "WOAS"}, {"WCM", "WCOM"},
        {"WCP", "WCOP"}, {"WPB", "WPUB"},
    };
    return table;
}

QString latin1Until(const QByteArray& body, qsizetype from, qsizetype* next) {
    qsizetype end = body.indexOf('\0', from);
    if (end < 0) end = body.size();
    *next = qMin(end + 1, body.size());
    return QString::fromLatin1(body.mid(from, end - from));
}

// A v2.4 recording time ("2019-05-03T10:20:30") as v2.3 year, date (DDMM)
// and time (HHMM) frames.
QList<Mp3Frame> recordingTimeFrames(const QString& time) {
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4})(?:-(\\d{2})(?:-(\\d{2})(?:[T ](\\d{2})(?::(\\d{2}))?)?)?)?"));
    const QRegularExpressionMatch m = form.match(time);
    if (!m.hasMatch()) return {};
    QList<Mp3Frame> frames{Mp3Frame::textFrame("TYER", m.captured(1))};
    if (!m.captured(3).isEmpty())
        frames << Mp3Frame::textFrame("TDAT", m.captured(3) + m.captured(2));
    if (!m.captured(5).isEmpty())
        frames << Mp3Frame::textFrame("TIME", m.captured(4) + m.captured(5));
    return frames;
}

bool decode(const Id3Frame& stored, const QByteArray& id, Mp3Frame* out) {
    const QByteArray& body = stored.body;
    const bool v22 = stored.version == 2;
    out->id = id;
    if (id == "COMM" || id == "USLT") {
        Id3CommentFrame c;
        if (!id3Comment(body, &c)) return false;
        out->kind = Mp3Frame::Kind::Comment;
        out->language = c.language;
        out->description = c.description;
        out->text = c.text;
    } else if (id == "TXXX" || id == "WXXX") {
        Id3UserTextFrame u;
        if (!id3UserText(body, id == "WXXX", &u)) return false;
        out->kind = Mp3Frame::Kind::UserText;
        out->description = u.description;
        out->text = u.values.join(QLatin1Char('/'));
    } else if (id == "APIC") {
        Id3PictureFrame p;
        if (!id3Picture(body, v22, &p)) return false;
        out->kind = Mp3Frame::Kind::Picture;
        out->mimeType = p.mimeType;
        out->pictureType = p.pictureType;
        out->description = p.description;
        out->data = p.data;
    } else if (id == "PRIV" || id == "UFID") {
        qsizetype next = 0;
        out->kind = Mp3Frame::Kind::OwnerData;
        out->owner = latin1Until(body, 0, &next).toLatin1();
        out->data = body.mid(next);
    } else if (id == "GEOB") {
        if (body.isEmpty()) return false;
        const auto enc = quint8(body[0]);
        qsizetype pos = 1;
        out->kind = Mp3Frame::Kind::Object;
        out->mimeType = latin1Until(body, pos, &pos);
        const bool wide = enc == 1 || enc == 2;
        const auto take = [&]() {
            qsizetype end = pos;
            while (end < body.size() &&
                   !(wide ? end + 1 < body.size() && body[end] == 0 && body[end + 1] == 0
                          : body[end] == 0))
                end += wide ? 2 : 1;
            const QString s = id3DecodeText(body.mid(pos, end - pos), enc);
            pos = qMin<qsizetype>(body.size(), end + (wide ? 2 : 1));
            return s;
        };
        out->fileName = take();
        out->description = take();
        out->data = body.mid(pos);
    } else if (id.startsWith('W')) {
        qsizetype next = 0;
        out->kind = Mp3Frame::Kind::Url;
        out->text = latin1Until(body, 0, &next);
    } else if (id.startsWith('T')) {
        out->kind = Mp3Frame::Kind::Text;
        out->text = id3TextValues(body).join(QLatin1Char('/'));
    } else {
        return false;
    }
    return true;
}

}  // namespace

Mp3Frame Mp3Frame::textFrame(const QByteArray& id, const QString& text) {
    Mp3Frame f;
    f.id = id;
    f.text = text;
    return f;
}

QList<Mp3Frame> mp3FramesFrom(const QList<Id3Frame>& stored, QStringList* dropped) {
    QList<Mp3Frame> frames;
    bool hasYear = false;
    for (const Id3Frame& s : stored) hasYear |= s.id == "TYER" || s.id == "TYE";
    for (const Id3Frame& s : stored) {
        QByteArray id = s.version == 2 ? v22Names().value(s.id) : s.id;
        if (s.version == 4 && (s.id == "TDRC" || s.id == "TDOR")) {
            const QStringList values = id3TextValues(s.body);
            const QString time = values.isEmpty() ? QString() : values.first();
            if (s.id == "TDOR") {
                if (time.size() >= 4) frames << Mp3Frame::textFrame("TORY", time.left(4));
            } else if (!hasYear) {
                frames += recordingTimeFrames(time);
                hasYear = true;
            }
            continue;
        }
        Mp3Frame frame;
        if (id.isEmpty() || s.encrypted || s.compressedBody || !Id3TagWriter::canBuild(id) ||
            !decode(s, id, &frame)) {
            if (dropped) *dropped << QString::fromLatin1(s.id);
            continue;
        }
        frames << frame;
    }
    return frames;
}

bool addMp3Frame(Id3TagWriter& writer, const Mp3Frame& f) {
    switch (f.kind) {
        case Mp3Frame::Kind::Text:
            return writer.addText(f.id, f.text);
        case Mp3Frame::Kind::Comment:
            return writer.addComment(f.id, f.language, f.description, f.text);
        case Mp3Frame::Kind::UserText:
            return writer.addUserText(f.id, f.description, f.text);
        case Mp3Frame::Kind::Url:
            return writer.addUrl(f.id, f.text);
        case Mp3Frame::Kind::Picture:
            return writer.addPicture(f.mimeType, f.pictureType, f.description, f.data);
        case Mp3Frame::Kind::OwnerData:
            return writer.addOwnerData(f.id, f.owner, f.data);
        case Mp3Frame::Kind::Object:
            return writer.addObject(f.mimeType, f.fileName, f.description, f.data);
    }
    return false;
}
