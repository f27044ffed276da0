// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/xmp_sidecars.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <cmath>

#include "core/common/dates.h"
#include "core/common/file_dates.h"
#include "core/common/logging.h"
#include "core/library/media_kinds.h"
#include "core/video/video_file_ops.h"
#include "core/video/video_writers.h"

namespace {

// Sidecars are a few kilobytes; anything far larger is not one.
constexpr qint64 kMaxSidecarBytes = 16 * 1024 * 1024;
constexpr int kMaxFolderDepth = 512;

QString between(const QString& text, const char* element) {
    const QString open = QStringLiteral("<%1>").arg(QLatin1String(element));
    const QString close = QStringLiteral("</%1>").arg(QLatin1String(element));
    const qsizetype start = text.indexOf(open);
    if (start < 0) return QString();
    const qsizetype from = start + open.size();
    // The first closing tag of the whole text; one that is missing, or that
    // comes before the opening tag, gives nothing.
    const qsizetype end = text.indexOf(close);
    if (end < from) return QString();
    return text.mid(from, end - from);
}

// A number with its decimal point, never in exponent form ("48.8566").
QString decimalText(double value) {
    QString text = QString::number(value, 'f', 7);
    while (text.endsWith(QLatin1Char('0'))) text.chop(1);
    if (text.endsWith(QLatin1Char('.'))) text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

// Reads a whole sidecar if it is well-formed XML; "" (logged) otherwise.
QString loadSidecar(const QString& path, QString* why) {
    QFile file(path);
    if (!isRegularFile(path) || !file.open(QIODevice::ReadOnly)) {
        *why = QStringLiteral("it cannot be read");
        return QString();
    }
    if (file.size() > kMaxSidecarBytes) {
        *why = QStringLiteral("it is too large for an XMP file");
        return QString();
    }
    const QByteArray bytes = file.read(kMaxSidecarBytes);
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) xml.readNext();
    if (xml.hasError()) {
        *why = QStringLiteral("it is not valid XML (line %1: %2)")
                   .arg(xml.lineNumber())
                   .arg(xml.errorString());
        qCWarning(lcTagsmith).noquote() << "thexmlDoc===" << path << ",error==" << *why;
        return QString();
    }
    return QString::fromUtf8(bytes);
}

class XmpBatch {
public:
    XmpBatch(const XmpBatchCallbacks& callbacks, const PassthroughExporter& exporter)
        : m_callbacks(callbacks), m_exporter(exporter) {}

    void run(const QStringList& paths) {
        for (const QString& path : paths) {
            if (stopped()) break;
            if (QFileInfo(path).isDir())
                ScanXMPPhotosWithinFolder(path, 0);
            else
                handle(path);
        }
    }

    QString last() const { return m_last; }

private:
    bool stopped() const { return m_callbacks.cancel && m_callbacks.cancel->load(); }

    void ScanXMPPhotosWithinFolder(QString folder, int depth) {
        while (folder.size() > 1 && folder.endsWith(QLatin1Char('/'))) folder.chop(1);
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        if (canonical.isEmpty() || m_visited.contains(canonical)) return;
        if (depth > kMaxFolderDepth) {
            qCWarning(lcTagsmith) << "folder nested too deeply, not scanned ==" << folder;
            return;
        }
        m_visited.insert(canonical);
        QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        while (entries.hasNext() && !stopped()) {
            entries.next();
            const QString path = folder + QLatin1Char('/') + entries.fileName();
            if (entries.fileInfo().isDir())
                ScanXMPPhotosWithinFolder(path, depth + 1);
            else
                handle(path);
        }
    }

    void handle(const QString& path) {
        const QString ext = fileExtension(path);
        if (ext != QLatin1String("xmp") && ext != QLatin1String("XMP")) return;
        m_last = path;
        if (m_callbacks.started) m_callbacks.started(path);
        QString why;
        const QString xmp = loadSidecar(path, &why);
        if (xmp.isEmpty()) {
            if (why.isEmpty()) why = QStringLiteral("it is empty");
            return finish(failedWith(path, why));
        }
        const XmpSidecarValues v = readXmpSidecarValues(xmp);
        // A linked video is replaced where the link leads; the link stays.
        const QString video = QFileInfo(xmpVideoFor(path)).canonicalFilePath();
        if (video.isEmpty()) {
            qCInfo(lcTagsmith) << "no video beside the sidecar ==" << path;
            return finish(VideoWriteResult::skippedFile(
                path, QStringLiteral("no video of the same name is beside it")));
        }
        const QString latitude = xmpCoordinateDegrees(v.latitude, v.latitudeRef, 90.0);
        const QString longitude = xmpCoordinateDegrees(v.longitude, v.longitudeRef, 180.0);
        const QString altitude = xmpAltitudeMetres(v.altitude, v.altitudeRef);
        if ((latitude.isEmpty() && !v.latitude.isEmpty()) ||
            (longitude.isEmpty() && !v.longitude.isEmpty()))
            qCWarning(lcTagsmith).noquote() << "no position written, the sidecar's is unreadable"
                                            << v.latitude << v.longitude << "==" << path;
        qCInfo(lcTagsmith).noquote() << "xmp ==" << path << "title ==" << v.title
                                     << "keywords ==" << v.keywords << "date ==" << v.dateCreated;
        const VideoWriteJob job = SaveChangedVideoExifWith(
            video, v.title, altitude, latitude, longitude, xmpSidecarDate(v.dateCreated, video),
            readExistingMetadata(video));
        finish(runVideoWriteJob(job, QFileInfo(video).absolutePath(), m_batch, m_exporter));
    }

    static VideoWriteResult failedWith(const QString& path, const QString& reason) {
        VideoWriteResult result;
        result.sourcePath = path;
        result.reason = reason;
        return result;
    }

    void finish(const VideoWriteResult& result) {
        if (m_callbacks.finished) m_callbacks.finished(result);
    }

    const XmpBatchCallbacks& m_callbacks;
    const PassthroughExporter& m_exporter;
    OutputBatch m_batch;
    QSet<QString> m_visited;
    QString m_last;
};

}  // namespace

QString getTitlewithXMPStr(const QString& xmp) {
    return between(xmp, "dc:title");
}
QString getDescriptionwithXMPStr(const QString& xmp) {
    return between(xmp, "dc:description");
}
QString getPhotoDatewithXMPStr(const QString& xmp) {
    return between(xmp, "photoshop:DateCreated");
}
QString getGPSLatitudewithXMPStr(const QString& xmp) {
    return between(xmp, "exif:GPSLatitude");
}
QString getGPSLongitudewithXMPStr(const QString& xmp) {
    return between(xmp, "exif:GPSLongitude");
}
QString getGPSLatitudeRefwithXMPStr(const QString& xmp) {
    return between(xmp, "exif:GPSLatitudeRef");
}
QString getGPSLongitudeRefwithXMPStr(const QString& xmp) {
    return between(xmp, "exif:GPSLongitudeRef");
}
QString getGPSAltitudewithJsonStr(const QString& xmp) {
    return between(xmp, "exif:GPSAltitude");
}

QString getKeywordswithXMPStr(const QString& xmp) {
    QString keywords = between(xmp, "dc:subject");
    keywords.remove(QLatin1Char(' ')).remove(QLatin1Char('\n'));
    keywords.remove(QStringLiteral("<rdf:Seq>")).remove(QStringLiteral("</rdf:Seq>"));
    keywords.replace(QStringLiteral("</rdf:li><rdf:li>"), QStringLiteral(","));
    return keywords.remove(QStringLiteral("</rdf:li>")).remove(QStringLiteral("<rdf:li>"));
}

XmpSidecarValues readXmpSidecarValues(const QString& xmp) {
    XmpSidecarValues v;
    v.title = getTitlewithXMPStr(xmp);
    v.description = getDescriptionwithXMPStr(xmp);
    v.dateCreated = getPhotoDatewithXMPStr(xmp);
    v.keywords = getKeywordswithXMPStr(xmp);
    v.latitude = getGPSLatitudewithXMPStr(xmp);
    v.longitude = getGPSLongitudewithXMPStr(xmp);
    v.latitudeRef = getGPSLatitudeRefwithXMPStr(xmp);
    v.longitudeRef = getGPSLongitudeRefwithXMPStr(xmp);
    v.altitude = getGPSAltitudewithJsonStr(xmp);
    v.altitudeRef = between(xmp, "exif:GPSAltitudeRef");
    return v;
}

QString xmpCoordinateDegrees(const QString& value, const QString& ref, double limit) {
    // "DDD,MM,SSk" or "DDD,MM.mmk" with k one of N, S, E, W; or a decimal
    // number, signed or with its reference beside it.
    static const QRegularExpression xmpForm(QStringLiteral(
        "^(\\d{1,3}),(\\d{1,2}(?:\\.\\d+)?)(?:,(\\d{1,2}(?:\\.\\d+)?))?([NSEWnsew])$"));
    static const QRegularExpression decimal(QStringLiteral("^[-+]?\\d{1,3}(?:\\.\\d+)?$"));
    const QString text = value.trimmed();
    double degrees = 0;
    QChar hemisphere;
    if (const QRegularExpressionMatch m = xmpForm.match(text); m.hasMatch()) {
        const double minutes = m.captured(2).toDouble();
        const double seconds = m.captured(3).toDouble();
        if (minutes >= 60 || seconds >= 60) return QString();
        degrees = m.captured(1).toDouble() + minutes / 60 + seconds / 3600;
        hemisphere = m.captured(4).at(0).toUpper();
    } else if (decimal.match(text).hasMatch()) {
        degrees = text.toDouble();
        const QString r = ref.trimmed().toUpper();
        if (r.size() == 1) hemisphere = r.at(0);
    } else {
        return QString();
    }
    if (hemisphere == QLatin1Char('S') || hemisphere == QLatin1Char('W'))
        degrees = -std::fabs(degrees);
    if (std::fabs(degrees) > limit) return QString();
    return decimalText(degrees);
}

QString xmpAltitudeMetres(const QString& value, const QString& ref) {
    static const QRegularExpression form(QStringLiteral("^([-+]?\\d+(?:\\.\\d+)?)(?:/(\\d+))?$"));
    const QRegularExpressionMatch m = form.match(value.trimmed());
    if (!m.hasMatch()) return QString();
    double metres = m.captured(1).toDouble();
    if (m.hasCaptured(2)) {
        const double denominator = m.captured(2).toDouble();
        if (denominator == 0) return QString();
        metres /= denominator;
    }
    if (!std::isfinite(metres) || std::fabs(metres) > 1e6) return QString();
    if (ref.trimmed() == QLatin1String("1")) metres = -std::fabs(metres);
    return decimalText(metres);
}

QString xmpVideoFor(const QString& sidecarPath) {
    const QFileInfo info(sidecarPath);
    const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
    for (const char* ext : {"mov", "MOV", "mp4", "MP4", "Mov", "Mp4"}) {
        const QString candidate = base + QLatin1Char('.') + QLatin1String(ext);
        if (isVideoPath(candidate) && isRegularFile(candidate)) return candidate;
    }
    return QString();
}

QDateTime xmpSidecarDate(const QString& dateCreated, const QString& videoPath) {
    if (!dateCreated.isEmpty()) {
        QString text = dateCreated;
        for (const char c : {'T', '+', '-', ':'}) text.replace(QLatin1Char(c), QLatin1Char(' '));
        text.remove(QLatin1Char('Z'));
        const QStringList parts = text.split(QLatin1Char(' '));
        if (parts.size() < 6) return QDateTime();
        const QDateTime date =
            dateFromText(QStringLiteral("%1:%2:%3 %4:%5:%6")
                             .arg(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]));
        if (date.isValid()) return date;
    }
    return readFileDates(videoPath).creation;
}

QString ScnXmpPhotosItemThreader(const QStringList& paths, const XmpBatchCallbacks& callbacks,
                                 const PassthroughExporter& exporter) {
    XmpBatch batch(callbacks, exporter);
    batch.run(paths);
    return batch.last();
}
