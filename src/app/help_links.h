#pragma once

// Addresses of the maker's help pages, opened in the default browser.
inline constexpr const char* kProductGuideUrl = "https://tagsmith.example/guide";
inline constexpr const char* kSupportUrl = "https://tagsmith.example/support";
inline constexpr const char* kDownloadUrl = "https://tagsmith.example/download";
