// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <tiostream.h>

class WindowedFile;

// A read-only TagLib stream over an open WindowedFile: its reads are served
// from the file's window. TagLib's own file stream opens the file again and
// seeks and reads in small pieces (tag headers, the end of the file, frame
// headers), each a system call or two. It can never write.
class TagLibReadStream : public TagLib::IOStream {
public:
    explicit TagLibReadStream(WindowedFile& file);
    TagLibReadStream(const TagLibReadStream&) = delete;
    TagLibReadStream& operator=(const TagLibReadStream&) = delete;

    // From now on the stream shows the file from byte `offset` on, as if the
    // bytes before it were not there (the leading tags, for a reader that
    // only wants the sound).
    void startAt(long offset);

    TagLib::FileName name() const override { return m_path.constData(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override;
    void seek(long offset, Position p = Beginning) override;
    long tell() const override { return m_pos; }
    long length() override { return m_length; }
    void truncate(long) override {}

private:
    WindowedFile& m_file;
    QByteArray m_path;
    long m_base = 0;    // the file's byte that is the stream's first
    long m_length = 0;  // from m_base
    long m_pos = 0;
};
