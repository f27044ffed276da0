// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include "core/video/movie_rewriter.h"
#include "movie_rewriter_support.h"

using namespace RewriterTest;

namespace {

// Starts the rewrite in a child process; answers its process id.
pid_t startRewrite(const PassthroughExport& request) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        const RewriteResult result = rewriteMovieFile(request);
        ::_exit(result.ok ? 0 : 1);
    }
    return pid;
}

int waitFor(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace

// A writer killed at any moment leaves either nothing or a complete,
// playable file under the output name, and never touches the source.
TEST(MovieRewriterKill, OutputIsNothingOrComplete) {
    if (!haveTool("ffmpeg") || !haveTool("ffprobe")) GTEST_SKIP();
    const QString source = ffmpegFixture(
        "rewriter-kill-noise.mov",
        words("-f lavfi -i testsrc=size=640x480:rate=25:duration=4 -f lavfi -i "
              "sine=frequency=440:sample_rate=48000:duration=4 -vf noise=alls=80:allf=t -c:v "
              "libx264 -preset ultrafast -qp 4 -pix_fmt yuv420p -c:a aac -shortest"));
    ASSERT_FALSE(source.isEmpty()) << lastToolOutput().toStdString();
    const QByteArray sourceSum = sha256Of(source);
    const QString expected = streamChecksums(source);
    QTemporaryDir dir;
    const QString output = dir.filePath("out.m4v");
    const PassthroughExport job =
        request(source, output, {item("itsk/%A9nam", "Killed"), item("uiso/date", "2022")});

    // How long an undisturbed rewrite takes, to spread the kills over it.
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(waitFor(startRewrite(job)), 0);
    const qint64 fullNs = qMax<qint64>(timer.nsecsElapsed(), 1000000);
    QFile::remove(output);

    QRandomGenerator random(99);
    int complete = 0;
    int nothing = 0;
    for (int round = 0; round < 12; ++round) {
        QFile::remove(output);
        const pid_t pid = startRewrite(job);
        ASSERT_GT(pid, 0);
        const qint64 delayUs = random.bounded(qint64(fullNs / 1000 * 3 / 2) + 1);
        ::usleep(useconds_t(delayUs));
        ::kill(pid, SIGKILL);
        waitFor(pid);

        if (!QFile::exists(output)) {
            ++nothing;
        } else {
            ++complete;
            EXPECT_TRUE(runTool("ffprobe", {"-v", "error", output})) << round;
            EXPECT_EQ(streamChecksums(output).toStdString(), expected.toStdString()) << round;
        }
        // Nothing half-written under any other name either.
        const QStringList stray =
            QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
        EXPECT_LE(stray.size(), 1) << stray.join(' ').toStdString();
        EXPECT_EQ(sha256Of(source), sourceSum) << round;
    }
    std::printf("killed rewrites: %d left nothing, %d left a complete file (full run %lld ms)\n",
                nothing, complete, fullNs / 1000000);
}
