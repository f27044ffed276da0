// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// How many times the program has opened a file with FFmpeg
// (avformat_open_input) in this test process. The unit tests link with
// --wrap=avformat_open_input, so every open of the core passes through a
// counter first.
int ffmpegOpenCount();
