// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>

// Contexts of the core's texts that reach the window: reasons and status
// lines, panel labels, tool titles. They are translated when the app has
// installed a translation; the command-line tool installs none, so it prints
// the English source texts that scripts read.
struct PhotoWriter {
    Q_DECLARE_TR_FUNCTIONS(PhotoWriter)
};
struct PhotoProperties {
    Q_DECLARE_TR_FUNCTIONS(PhotoProperties)
};
// Results of the writers, the batch tools and the video tools.
struct WriteResult {
    Q_DECLARE_TR_FUNCTIONS(WriteResult)
};
// The information lines of the side panels.
struct InfoBlock {
    Q_DECLARE_TR_FUNCTIONS(InfoBlock)
};
