// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/photo/photo_exiv2.h"

#include "core/common/windowed_file.h"

#include <string>

// A read-only Exiv2 source over a photo file that keeps one descriptor for
// its whole life and answers reads from a small window filled with pread().
// Exiv2's own file source opens the file again (through stdio) for the type
// check, the image and each reading, and reads it in 4 KiB pieces: for a
// photo import that was a quarter of the work. Writing is refused; mmap()
// maps the file as Exiv2's own source does.
class PhotoFileIo : public Exiv2::BasicIo {
public:
    explicit PhotoFileIo(const std::string& path);
    ~PhotoFileIo() override;
    PhotoFileIo(const PhotoFileIo&) = delete;
    PhotoFileIo& operator=(const PhotoFileIo&) = delete;

    int open() override;
    int close() override;
    long write(const Exiv2::byte*, long) override { return 0; }
    long write(Exiv2::BasicIo&) override { return 0; }
    int putb(Exiv2::byte) override { return EOF; }
    Exiv2::DataBuf read(long rcount) override;
    long read(Exiv2::byte* buf, long rcount) override;
    int getb() override;
    void transfer(Exiv2::BasicIo& src) override;
    int seek(long offset, Position pos) override;
    Exiv2::byte* mmap(bool isWriteable = false) override;
    int munmap() override;
    long tell() const override { return m_pos; }
    size_t size() const override { return size_t(m_size); }
    bool isopen() const override { return m_open; }
    int error() const override { return m_fd < 0 ? 1 : 0; }
    bool eof() const override { return m_eof; }
    std::string path() const override { return m_path; }

private:
    std::string m_path;
    int m_fd = -1;
    bool m_open = false;  // between open() and close(); the descriptor stays
    long m_size = 0;
    long m_pos = 0;
    bool m_eof = false;
    ReadWindow m_window;
    void* m_map = nullptr;
};
