// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tools/video_tool_jobs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QUrl>

#include "core/common/copy_publish.h"
#include "core/common/desktop_integration.h"
#include "core/common/logging.h"
#include "core/common/ui_texts.h"
#include "core/library/media_kinds.h"
#include "core/tools/frame_sampler.h"
#include "core/tools/gif_writer.h"
#include "core/video/movie_metadata_reader.h"
#include "core/video/movie_rewriter.h"

namespace {

using Filler = std::function<ExportOutcome(const QString& temporaryPath)>;

struct Titled {
    const char* title;
    float value;
};

// The titles are the names the jobs and the command line take; the window
// shows them translated (context "VideoTools").
const Titled kSpeeds[] = {{"0.2X", 0.2f}, {"0.5X", 0.5f}, {"1X", 1.0f},  {"2X", 2.0f},
                          {"4X", 4.0f},   {"8X", 8.0f},   {"20X", 20.0f}};
const Titled kSlowSpeeds[] = {{"0.2X", 0.2f}, {"0.5X", 0.5f}};
const Titled kIntervals[] = {
    {QT_TRANSLATE_NOOP("VideoTools", "5 pics per second"), 0.2f},
    {QT_TRANSLATE_NOOP("VideoTools", "1 picture per second"), 1.0f},
    {QT_TRANSLATE_NOOP("VideoTools", "1 picture every 5 seconds"), 5.0f},
    {QT_TRANSLATE_NOOP("VideoTools", "1 picture every 10 seconds"), 10.0f},
    {QT_TRANSLATE_NOOP("VideoTools", "1 picture every 30 seconds"), 30.0f}};
const char* const kConvertTitles[] = {QT_TRANSLATE_NOOP("VideoTools", "Convert to MP4"),
                                      QT_TRANSLATE_NOOP("VideoTools", "Convert to MOV"),
                                      QT_TRANSLATE_NOOP("VideoTools", "Convert to M4V")};
const char* const kQualityTitles[] = {QT_TRANSLATE_NOOP("VideoTools", "High video quality"),
                                      QT_TRANSLATE_NOOP("VideoTools", "Medium video quality"),
                                      QT_TRANSLATE_NOOP("VideoTools", "Low video quality")};

template <size_t N>
float valueOf(const Titled (&table)[N], const QString& title, float fallback) {
    for (const Titled& t : table)
        if (title == QLatin1String(t.title)) return t.value;
    return fallback;
}

template <typename Table>
QStringList titlesOf(const Table& table) {
    QStringList titles;
    for (const auto& t : table) {
        if constexpr (std::is_same_v<std::decay_t<decltype(t)>, Titled>)
            titles << QLatin1String(t.title);
        else
            titles << QLatin1String(t);
    }
    return titles;
}

// What the log calls a failed output of each job, by VideoTool.
const char* const kFailedTexts[] = {"conversion failed",       "compression failed",
                                    "sound extraction failed", "sound removal failed",
                                    "GIF making failed",       "speed change failed",
                                    "slow motion failed",      "frame extraction failed"};
static_assert(std::size(kFailedTexts) == int(VideoTool::Frames) + 1);

bool isVideoFile(const QString& path) {
    return GetViedoType(QFileInfo(path).suffix().toUtf8().constData()) >= 0;
}

class BatchRun {
public:
    BatchRun(const VideoToolRequest& request, OutputBatch& batch,
             const VideoToolCallbacks& callbacks)
        : m_request(request), m_batch(batch), m_callbacks(callbacks) {}

    QList<VideoToolResult> run(const QStringList& sources) {
        QList<VideoToolResult> results;
        for (m_index = 0; m_index < sources.size(); ++m_index) {
            const QString& source = sources[m_index];
            if (m_request.tool == VideoTool::Slow && !hasVideoStream(source)) {
                // The slow motion has always ended its whole batch here.
                qCInfo(lcTagsmith) << "no video track; the slow-motion batch ends ==" << source;
                VideoToolResult ended;
                static_cast<VideoWriteResult&>(ended) = VideoWriteResult::skippedFile(
                    source, WriteResult::tr("the file has no video; the batch ends here"));
                results << ended;
                if (m_callbacks.finished) m_callbacks.finished(m_index, ended);
                break;
            }
            VideoToolResult result = one(source);
            result.sourcePath = source;
            results << result;
            if (m_callbacks.finished) m_callbacks.finished(m_index, result);
            if (result.status == ExportStatus::Cancelled ||
                (m_callbacks.cancel && m_callbacks.cancel->load()))
                break;
        }
        return results;
    }

private:
    QString storage() const { return m_request.storage.storagelocation; }
    QString inStorage(const QString& name) const { return storage() + QLatin1Char('/') + name; }

    JobControl control() const {
        JobControl c;
        c.cancel = m_callbacks.cancel;
        if (m_callbacks.progress)
            c.progress = [this, index = m_index](double f) { m_callbacks.progress(index, f); };
        return c;
    }

    // Writes one output through a temporary file beside the name claimed.
    VideoToolResult publish(const QString& source, const QString& wanted, OutputBatch& batch,
                            const Filler& fill) const {
        ExportOutcome outcome(ExportStatus::Completed);
        const CopyPlan plan{source, wanted, FileDates{}, false, kFailedTexts[int(m_request.tool)]};
        const PublishedCopy copy =
            publishCopy(plan, storage(), batch, [&](const QString& temporary) {
                outcome = fill(temporary);
                if (outcome.status == ExportStatus::Completed) return QString();
                return outcome.reason.isEmpty() ? QStringLiteral("cancelled") : outcome.reason;
            });
        VideoToolResult result;
        result.sourcePath = source;
        result.reason = copy.reason;
        result.note = copy.note;
        if (copy.ok()) {
            result.status = ExportStatus::Completed;
            result.outputPath = copy.outputPath;
        }
        if (outcome.status == ExportStatus::Cancelled) {
            result.status = ExportStatus::Cancelled;
            result.reason = WriteResult::tr("cancelled");
        }
        if (result.ok()) result.outputs << result.outputPath;
        return result;
    }

    VideoToolResult transcode(const QString& source, const QString& wanted,
                              TranscodeRequest request) const {
        request.sourcePath = source;
        const JobControl jobControl = control();
        return publish(source, wanted, m_batch, [&](const QString& temporary) {
            request.outputPath = temporary;
            return transcodeMedia(request, jobControl);
        });
    }

    // A movie already in a QuickTime or MPEG-4 file is converted by our
    // rewriter: its samples are copied in the kernel, the movie box goes in
    // front and every track and metadata item stays. Other files, and
    // movies the rewriter refuses (fragmented ones), are remuxed by FFmpeg.
    VideoToolResult convert(const QString& source, const QString& wanted, const QString& ext,
                            const TranscodeRequest& request) const {
        if (looksLikeMpeg4File(source)) {
            const JobControl jobControl = control();
            bool refused = false;
            VideoToolResult r = publish(source, wanted, m_batch, [&](const QString& temporary) {
                PassthroughExport e;
                e.sourcePath = source;
                e.outputPath = temporary;
                e.fileType = ext == QLatin1String("mov")   ? VideoFileType::QuickTimeMovie
                             : ext == QLatin1String("m4v") ? VideoFileType::AppleM4V
                                                           : VideoFileType::MPEG4;
                e.metadata = readMovieMetadata(source);
                e.movieBoxInFront = true;
                const RewriteResult done = rewriteMovieFile(e, [&](qint64 written, qint64 total) {
                    if (jobControl.progress && total > 0)
                        jobControl.progress(double(written) / double(total));
                    return !jobControl.cancelled();
                });
                if (done.ok) return ExportOutcome(ExportStatus::Completed);
                if (done.cancelled) return ExportOutcome(ExportStatus::Cancelled);
                refused = true;
                qCInfo(lcTagsmith).noquote()
                    << "remuxed instead of rewritten ==" << source << "==" << done.reason;
                return ExportOutcome(ExportStatus::Failed, done.userReason);
            });
            if (!refused) return r;
        }
        return transcode(source, wanted, request);
    }

    static VideoToolResult notAVideo(const QString& source) {
        qCInfo(lcTagsmith) << "not a video; passed over ==" << source;
        VideoToolResult r;
        static_cast<VideoWriteResult&>(r) =
            VideoWriteResult::skippedFile(source, WriteResult::tr("the file is not a video"));
        return r;
    }

    static void logExport(const VideoToolResult& r) {
        if (r.ok()) {
            qCInfo(lcTagsmith) << "22222";
        } else {
            qCWarning(lcTagsmith).noquote() << "Export failed:" << r.reason;
            qCWarning(lcTagsmith) << "11111";
        }
    }

    void reveal(const VideoToolResult& r) const {
        if (r.ok()) DesktopIntegration::instance().revealFile(r.outputPath, storage());
    }

    VideoToolResult one(const QString& source) {
        const QFileInfo info(source);
        const QString base = info.completeBaseName();
        switch (m_request.tool) {
            case VideoTool::Convert: {
                if (!isVideoFile(source)) return notAVideo(source);
                // After a folder import the mirrored folder is made, though the
                // converted file goes to the storage folder itself.
                if (m_request.storage.bImportLocalFolder)
                    mirroredOutputPath(storage(), source, true, m_request.storage.bImportLocalPath);
                const QString ext = convertExtension(m_request.variant);
                TranscodeRequest t;
                t.muxer = muxerForExtension(ext);
                t.fastStart = true;
                const VideoToolResult r =
                    convert(source, inStorage(base + QLatin1Char('.') + ext), ext, t);
                logExport(r);
                if (m_converted++ == 0) reveal(r);
                return r;
            }
            case VideoTool::Compress: {
                if (!isVideoFile(source)) return notAVideo(source);
                const QString wanted =
                    mirroredOutputPath(storage(), source, m_request.storage.bImportLocalFolder,
                                       m_request.storage.bImportLocalPath);
                TranscodeRequest t;
                t.muxer = muxerForExtension(info.suffix());
                VideoToolResult r;
                if (!t.muxer) {
                    r.reason = WriteResult::tr(
                                   "a .%1 file cannot be compressed (only MP4, MOV "
                                   "and M4V files can)")
                                   .arg(info.suffix());
                } else {
                    t.video = t.audio = StreamMode::Encode;
                    t.quality = compressionQuality(m_request.variant);
                    t.fastStart = true;
                    r = transcode(source, wanted, t);
                }
                logExport(r);
                reveal(r);
                return r;
            }
            case VideoTool::ExtractAudio: {
                if (!isVideoFile(source)) return notAVideo(source);
                // A file of the source's own name goes first, when we wrote it.
                const QString sameName = inStorage(info.fileName());
                if (isOutputOfOurs(sameName) && !isSameFile(sameName, source) &&
                    !m_batch.claimed(sameName)) {
                    qCInfo(lcTagsmith) << "removing an earlier output ==" << sameName;
                    QFile::remove(sameName);
                }
                TranscodeRequest t;
                t.muxer = "ipod";
                t.video = StreamMode::Drop;
                t.audio = StreamMode::Encode;
                t.audioBitRate = kM4aAudioBitRate;
                t.requireAudio = true;
                t.fastStart = true;
                const VideoToolResult r =
                    transcode(source, inStorage(base + QStringLiteral(".m4a")), t);
                logExport(r);
                if (m_extracted++ == 0)
                    DesktopIntegration::instance().openUrl(QUrl::fromLocalFile(storage()));
                return r;
            }
            case VideoTool::RemoveAudio: {
                TranscodeRequest t;
                t.muxer = "mov";
                t.video = StreamMode::Encode;
                t.audio = StreamMode::Drop;
                t.requireVideo = true;
                ++m_exports;
                const VideoToolResult r = transcode(source, inStorage(info.fileName()), t);
                if (r.ok()) {
                    qCInfo(lcTagsmith) << "Background sound removed successfully.";
                    if (m_exports == 1) reveal(r);
                } else if (r.status == ExportStatus::Failed) {
                    qCWarning(lcTagsmith).noquote()
                        << "Error removing background sound:" << r.reason;
                }
                return r;
            }
            case VideoTool::Gif:
                return gif(source, inStorage(base + QStringLiteral(".gif")));
            case VideoTool::Speed: {
                // Not retimed: above 1X only the first 1/f of the movie is kept.
                const double f = speedFactor(m_request.variant);
                TranscodeRequest t;
                t.video = t.audio = StreamMode::Encode;
                t.keepShare = f > 1.0 ? 1.0 / f : 1.0;
                t.requireVideo = true;
                ++m_exports;
                const VideoToolResult r = transcode(source, inStorage(info.fileName()), t);
                if (r.ok()) qCInfo(lcTagsmith) << "Change Video Speed Success";
                if (m_exports == 1) reveal(r);
                return r;
            }
            case VideoTool::Slow: {
                TranscodeRequest t;
                t.video = StreamMode::Copy;
                t.audio = StreamMode::Encode;
                t.timeScale = 1.0 / double(slowMotionFactor(m_request.variant));
                ++m_exports;
                const VideoToolResult r = transcode(source, inStorage(info.fileName()), t);
                qCInfo(lcTagsmith) << "Change Video Speed Success";  // whatever the outcome
                if (m_exports == 1) reveal(r);
                return r;
            }
            case VideoTool::Frames:
                return frames(source, base);
        }
        return {};
    }

    VideoToolResult gif(const QString& source, const QString& wanted) {
        const JobControl jobControl = control();
        VideoToolResult r = publish(source, wanted, m_batch, [&](const QString& temporary) {
            GifWriter writer(temporary);
            if (!writer.isOpen()) {
                qCWarning(lcTagsmith) << "Failed to create GIF destination";
                return ExportOutcome(ExportStatus::Failed, writer.error());
            }
            const SamplingResult sampled = sampleFrames(
                source, 1.0,
                [&](double, const QImage& picture) {
                    return picture.isNull() ||
                           writer.addFrame(picture);  // a missed still is passed over
                },
                jobControl);
            if (sampled.cancelled) return ExportOutcome(ExportStatus::Cancelled);
            if (sampled.stopped || !writer.finish()) {
                qCWarning(lcTagsmith) << "Failed to finalize GIF destination";
                return ExportOutcome(ExportStatus::Failed, writer.error());
            }
            return ExportOutcome(ExportStatus::Completed);
        });
        if (r.ok() && m_gifs++ == 0) reveal(r);
        return r;
    }

    VideoToolResult frames(const QString& source, const QString& base) {
        VideoToolResult result;
        result.sourcePath = source;
        QHash<QString, QString> written;  // name wanted -> file written, for this movie
        bool cancelled = false;
        const SamplingResult sampled = sampleFrames(
            source, double(frameInterval(m_request.variant)),
            [&](double t, const QImage& picture) {
                if (picture.isNull()) {
                    qCWarning(lcTagsmith)
                        << "Error while extracting image: no picture at" << t << "s ==" << source;
                    return true;
                }
                // TIFF data under a .jpg name; the pictures of one second share
                // its name, the later replacing the earlier.
                const QString name = inStorage(QStringLiteral("%1_%2.jpg").arg(base).arg(int(t)));
                OutputBatch again;  // our own picture of this name is replaced
                const bool seen = written.contains(name);
                const VideoToolResult one =
                    publish(source, seen ? written.value(name) : name, seen ? again : m_batch,
                            [&](const QString& temporary) {
                                if (m_callbacks.cancel && m_callbacks.cancel->load())
                                    return ExportOutcome(ExportStatus::Cancelled);
                                return picture.save(temporary, "TIFF")
                                           ? ExportOutcome(ExportStatus::Completed)
                                           : ExportOutcome(ExportStatus::Failed,
                                                           WriteResult::tr("the picture could not "
                                                                           "be written"));
                            });
                if (one.status == ExportStatus::Cancelled) cancelled = true;
                if (!one.ok()) {
                    result.reason = one.reason;
                    return !cancelled;
                }
                if (!seen) result.outputs << one.outputPath;
                written.insert(name, one.outputPath);
                if (m_pictures++ == 0) reveal(one);
                return true;
            },
            control());
        if (sampled.cancelled || cancelled) {
            result.status = ExportStatus::Cancelled;
            result.reason = WriteResult::tr("cancelled");
        } else if (sampled.duration <= 0) {
            result.skipped = true;
            result.reason = WriteResult::tr("the file has no duration");
        } else if (result.outputs.isEmpty()) {
            if (result.reason.isEmpty())
                result.reason = WriteResult::tr("no picture could be taken from the file");
        } else {
            result.status = ExportStatus::Completed;
            result.outputPath = result.outputs.first();
            result.reason.clear();
        }
        return result;
    }

    const VideoToolRequest& m_request;
    OutputBatch& m_batch;
    const VideoToolCallbacks& m_callbacks;
    int m_index = 0;
    int m_converted = 0;
    int m_extracted = 0;
    int m_exports = 0;
    int m_gifs = 0;
    int m_pictures = 0;
};

}  // namespace

QList<VideoToolResult> runVideoToolBatch(const VideoToolRequest& request,
                                         const QStringList& sources, OutputBatch& batch,
                                         const VideoToolCallbacks& callbacks) {
    QDir().mkpath(request.storage.storagelocation);
    return BatchRun(request, batch, callbacks).run(sources);
}

QString convertExtension(const QString& title) {
    if (title == QLatin1String("Convert to MOV")) return QStringLiteral("mov");
    if (title == QLatin1String("Convert to M4V")) return QStringLiteral("m4v");
    return QStringLiteral("mp4");
}

VideoQuality compressionQuality(const QString& title) {
    if (title == QLatin1String("Medium video quality")) return VideoQuality::Medium;
    if (title == QLatin1String("Low video quality")) return VideoQuality::Low;
    return VideoQuality::Highest;
}

float speedFactor(const QString& title) {
    return valueOf(kSpeeds, title, 1.0f);
}

float slowMotionFactor(const QString& title) {
    return valueOf(kSlowSpeeds, title, 1.0f);
}

float frameInterval(const QString& title) {
    return valueOf(kIntervals, title, 1.0f);
}

QStringList videoToolVariants(VideoTool tool) {
    switch (tool) {
        case VideoTool::Convert:
            return titlesOf(kConvertTitles);
        case VideoTool::Compress:
            return titlesOf(kQualityTitles);
        case VideoTool::Speed:
            return titlesOf(kSpeeds);
        case VideoTool::Slow:
            return titlesOf(kSlowSpeeds);
        case VideoTool::Frames:
            return titlesOf(kIntervals);
        default:
            return {};
    }
}
