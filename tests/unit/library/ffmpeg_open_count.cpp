// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/ffmpeg_open_count.h"

#include <atomic>

struct AVDictionary;
struct AVFormatContext;
struct AVInputFormat;

namespace {
std::atomic<int> opens{0};
}  // namespace

extern "C" {
int __real_avformat_open_input(AVFormatContext** context, const char* url,
                               const AVInputFormat* format, AVDictionary** options);

int __wrap_avformat_open_input(AVFormatContext** context, const char* url,
                               const AVInputFormat* format, AVDictionary** options) {
    ++opens;
    return __real_avformat_open_input(context, url, format, options);
}
}

int ffmpegOpenCount() {
    return opens;
}
