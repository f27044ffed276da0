// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

#include "core/common/copy_publish.h"
#include "core/common/dates.h"
#include "core/common/desktop_integration.h"
#include "core/common/output_files.h"
#include "core/video/video_export.h"
#include "support/media_fixtures.h"

namespace {

// An exporter that writes a small new file, as the movie rewriter would.
ExportOutcome fakeExport(const PassthroughExport& e) {
    return writeFile(e.outputPath, "new bytes") ? ExportStatus::Completed : ExportStatus::Failed;
}

struct Fixture {
    QTemporaryDir tmp;
    QString store = tmp.path() + "/store";
    QString source = tmp.path() + "/media/clip.mov";
    Fixture() {
        QDir().mkpath(store);
        QDir().mkpath(tmp.path() + "/media");
        writeFile(source, "source bytes");
        DesktopIntegration::setInstance(std::make_unique<RecordingDesktopIntegration>());
    }
    VideoWriteResult save(OutputBatch& batch, const QString& output) {
        VideoWriteJob job;
        job.request.sourcePath = source;
        job.request.outputPath = output;
        job.sourceDates = readFileDates(source);
        job.newDate = dateFromText("2020:02:02 02:02:02");
        return runVideoWriteJob(job, store, batch, fakeExport);
    }
    VideoWriteResult save(const QString& output) {
        OutputBatch batch;
        return save(batch, output);
    }
};

struct Case {
    const char* name;
    // Prepares the storage folder; answers the output path to ask for.
    std::function<QString(Fixture&)> setUp;
    const char* writtenAs;  // file name the output must get
    bool noteExpected;
};

const Case kCases[] = {
    {"an earlier output of ours is replaced",
     [](Fixture& f) {
         f.save(f.store + "/clip.mov");
         return f.store + "/clip.mov";
     },
     "clip.mov", false},
    {"a file we did not write is kept",
     [](Fixture& f) {
         writeFile(f.store + "/clip.mov", "the user's own");
         return f.store + "/clip.mov";
     },
     "clip (2).mov", true},
    {"an output of ours changed since is kept",
     [](Fixture& f) {
         f.save(f.store + "/clip.mov");
         writeFile(f.store + "/clip.mov", "edited elsewhere!");
         return f.store + "/clip.mov";
     },
     "clip (2).mov", true},
    {"the free name skips taken names too",
     [](Fixture& f) {
         writeFile(f.store + "/clip.mov", "the user's own");
         writeFile(f.store + "/clip (2).mov", "also the user's");
         return f.store + "/clip.mov";
     },
     "clip (3).mov", true},
    {"the source itself, when the storage folder is its folder",
     [](Fixture& f) { return f.source; }, "clip (2).mov", true},
};

class OutputFiles : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { setExtendedAttributesUsable(GetParam()); }
    void TearDown() override { setExtendedAttributesUsable(true); }
};

}  // namespace

TEST_P(OutputFiles, OnlyOurOwnUnchangedOutputsAreReplaced) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        Fixture f;
        const QString wanted = c.setUp(f);
        const QString folder = QFileInfo(wanted).absolutePath();
        QMap<QString, QByteArray> before;
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            before.insert(name, readFile(folder + "/" + name));
        const VideoWriteResult r = f.save(wanted);
        ASSERT_TRUE(r.ok());
        EXPECT_EQ(r.outputPath, folder + "/" + c.writtenAs);
        EXPECT_EQ(readFile(r.outputPath), "new bytes");
        EXPECT_EQ(r.note.isEmpty(), !c.noteExpected) << qPrintable(r.note);
        EXPECT_TRUE(isOutputOfOurs(r.outputPath));
        EXPECT_EQ(readFileDates(r.outputPath).modification, dateFromText("2020:02:02 02:02:02"));
        for (auto it = before.begin(); it != before.end(); ++it) {
            if (folder + "/" + it.key() != r.outputPath) {
                EXPECT_EQ(readFile(folder + "/" + it.key()), it.value()) << qPrintable(it.key());
            }
        }
        EXPECT_EQ(readFile(f.source), "source bytes");
        EXPECT_FALSE(isOutputOfOurs(f.source));
    }
}

TEST_P(OutputFiles, ASecondOutputOfTheSameNameInOneBatchGetsAFreeName) {
    Fixture f;
    OutputBatch batch;
    EXPECT_EQ(f.save(batch, f.store + "/clip.mov").outputPath, f.store + "/clip.mov");
    const VideoWriteResult second = f.save(batch, f.store + "/clip.mov");
    EXPECT_EQ(second.outputPath, f.store + "/clip (2).mov");
    EXPECT_FALSE(second.note.isEmpty());
    EXPECT_TRUE(second.message().contains("clip (2).mov"));
    // A new batch replaces the earlier output of ours again.
    EXPECT_EQ(f.save(f.store + "/clip.mov").outputPath, f.store + "/clip.mov");
}

// Files written on several threads get their names in the files' order,
// whichever thread claims first; a file that ends without claiming (one
// skipped) holds up no other.
TEST(OutputBatchTurns, NamesFollowTheFilesOrderOnAnyThread) {
    Fixture f;
    OutputBatch batch;
    constexpr int kFiles = 12;
    std::vector<QString> names(kFiles);
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int i = next++; i < kFiles; i = next++) {
            const OutputBatch::Turn turn(batch, i);
            if (i % 5 == 3) continue;  // skipped: never claims
            // Later files reach their claim first.
            std::this_thread::sleep_for(std::chrono::milliseconds((kFiles - i) % 4));
            names[size_t(i)] =
                QFileInfo(batch.claim(f.store + "/clip.mov", f.source).path).fileName();
        }
    };
    std::thread helper(work), other(work);
    work();
    helper.join();
    other.join();
    int n = 1;
    for (int i = 0; i < kFiles; ++i) {
        if (i % 5 == 3) continue;
        EXPECT_EQ(names[size_t(i)], n == 1 ? QString("clip.mov") : QString("clip (%1).mov").arg(n))
            << i;
        ++n;
    }
}

INSTANTIATE_TEST_SUITE_P(MarkKinds, OutputFiles, ::testing::Values(true, false),
                         [](const auto& info) {
                             return info.param ? "ExtendedAttribute" : "ListFile";
                         });

TEST(OutputFilesList, RecordsOutputsByNameWhereNoAttributeFits) {
    setExtendedAttributesUsable(false);
    Fixture f;
    const QString out = f.save(f.store + "/clip.mov").outputPath;
    const QString list = f.store + "/" + kOutputListName;
    EXPECT_TRUE(readFile(list).contains("clip.mov"));
    // A file of another name is not ours, nor is one that replaced ours.
    writeFile(f.store + "/other.mov", "x");
    EXPECT_FALSE(isOutputOfOurs(f.store + "/other.mov"));
    QFile::remove(out);
    writeFile(out, "new bytes");  // same size, a later modification time
    setFileDates(out, QDateTime(), dateFromText("2021:01:01 00:00:00"));
    EXPECT_FALSE(isOutputOfOurs(out));
    setExtendedAttributesUsable(true);
}

// The publisher's two kinds of temporary file: a named hidden one, and an
// unnamed one linked once complete. Either way an earlier output of ours is
// replaced, the user's file is kept, a failed fill leaves nothing, and no
// hidden file stays behind.
TEST(CopyPublish, NamedAndUnnamedTemporaryFiles) {
    for (const bool unnamed : {false, true}) {
        SCOPED_TRACE(unnamed ? "unnamed" : "named");
        Fixture f;
        auto publish = [&](const QByteArray& bytes, const QString& reason = {}) {
            OutputBatch batch;
            CopyPlan plan{f.source, f.store + "/photo.jpg", readFileDates(f.source), false};
            plan.unnamedTemporary = unnamed;
            return publishCopy(plan, f.store, batch, [&](const QString& temporary) {
                QFile out(temporary);
                if (!out.open(QIODevice::Append) || out.write(bytes) != bytes.size())
                    return QString("not written");
                return reason;
            });
        };
        EXPECT_EQ(publish("first").outputPath, f.store + "/photo.jpg");
        EXPECT_EQ(publish("second").outputPath, f.store + "/photo.jpg");
        EXPECT_EQ(readFile(f.store + "/photo.jpg"), "second");
        EXPECT_TRUE(isOutputOfOurs(f.store + "/photo.jpg"));
        EXPECT_FALSE(publish("third", "refused").ok());
        EXPECT_EQ(readFile(f.store + "/photo.jpg"), "second");
        writeFile(f.store + "/photo.jpg", "the user's own");
        EXPECT_EQ(publish("fourth").outputPath, f.store + "/photo (2).jpg");
        EXPECT_EQ(readFile(f.store + "/photo.jpg"), "the user's own");
        EXPECT_EQ(QDir(f.store).entryList(QDir::Files | QDir::Hidden).size(), 2);
    }
}
