// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <mutex>
#include <type_traits>

// A shared library opened on first use rather than at start-up. Libraries
// such as FFmpeg and libheif pull in dozens of codec libraries whose loading
// and start-up code cost every process several milliseconds, though most
// commands never need them. The program calls them through forwarding
// functions of the same names (ffmpeg_loader.cpp, heif_loader.cpp) that
// find the real function here.
class LazyLibrary {
public:
    // Where the library is: the system's, found by its soname, or one of the
    // program's own modules, in lib/tagsmith beside the programs' folder.
    enum Place { System, OurModule };
    // `soname` as the build found it ("libheif.so.1"), or the module's file
    // name; `loss` says in the log what cannot be done without it.
    constexpr LazyLibrary(const char* soname, const char* loss, Place place = System)
        : m_soname(soname), m_loss(loss), m_place(place) {}
    LazyLibrary(const LazyLibrary&) = delete;
    LazyLibrary& operator=(const LazyLibrary&) = delete;

    // The function `name`, or null (logged) when the library or the
    // function is missing.
    void* symbol(const char* name);

private:
    const char* m_soname;
    const char* m_loss;
    Place m_place;
    std::once_flag m_once;
    void* m_handle = nullptr;
};

// What a forwarded call of a missing library answers: `error` where the
// function answers an int (the library's own code for an unsupported call),
// `text` where it answers a C string, null or zero for anything else.
template <typename R>
R missingLibraryResult(int error, const char* text) {
    if constexpr (std::is_same_v<R, int>)
        return error;
    else if constexpr (std::is_same_v<R, const char*>)
        return text;
    else if constexpr (!std::is_void_v<R>)
        return R{};
}

// Defines `name` with the library's declaration of it in scope (the compiler
// refuses a signature that differs), forwarding to the real function, looked
// up once; `missing` is what a call answers when it cannot be found.
#define TS_FORWARD(library, ret, name, params, args, missing)                              \
    extern "C" ret name params {                                                           \
        static const auto real = reinterpret_cast<ret(*) params>((library).symbol(#name)); \
        if (!real) return missing;                                                         \
        return real args;                                                                  \
    }
