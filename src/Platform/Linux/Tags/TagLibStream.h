// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/FileBytes.h"

#include <taglib/tiostream.h>

namespace cadorel {

/// The bytes of a file, or a window of them, as TagLib reads them. Read only. After 128 MiB in all it
/// pretends to be at the end: a search for a frame or a page in a file of garbage must not go through
/// gigabytes, and no tag is near that size.
class TagLibStream : public TagLib::IOStream
{
public:
    explicit TagLibStream(const std::shared_ptr<FileBytes> &file);
    /// Only @p length bytes from @p start, which become offset 0.
    TagLibStream(std::shared_ptr<FileBytes> file, qint64 start, qint64 length);

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector &) override {}
    void insert(const TagLib::ByteVector &, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return m_position; }
    long length() override { return m_length; }
    void truncate(long) override {}

private:
    std::shared_ptr<FileBytes> m_file;
    qint64 m_start;
    qint64 m_length;
    qint64 m_position = 0;
    qint64 m_left;
};

} // namespace cadorel
