// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

// Addresses of the maker's help pages, opened in the default browser. The
// user guide's web address is chosen when building (TAGSMITH_GUIDE_URL); when
// it is empty, User Guide opens the guide installed with the program.
inline constexpr const char* kProductGuideUrl = TAGSMITH_GUIDE_URL;
inline constexpr const char* kSupportUrl = "https://tagsmith.example/support";

// Where the installed guide lives below a data folder ("share").
inline constexpr const char* kLocalGuidePage = "tagsmith/guide/index.html";

// The page User Guide opens: the web address when one is given, else the
// installed guide's first page, looked for in the data folder beside the
// program's own folder (an install under any prefix, and the build tree) and
// then in the XDG data folders. Empty when there is neither.
QUrl productGuideUrl(const QString& webAddress);
inline constexpr const char* kDownloadUrl = "https://tagsmith.example/download";
