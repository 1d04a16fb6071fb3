// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/TagLibStream.h"

#include <algorithm>

namespace cadorel {

namespace {

constexpr qint64 readLimit = qint64(128) * 1024 * 1024;

} // namespace

TagLibStream::TagLibStream(const std::shared_ptr<FileBytes> &file)
    : TagLibStream(file, 0, file->size())
{
}

TagLibStream::TagLibStream(std::shared_ptr<FileBytes> file, qint64 start, qint64 length)
    : m_file(std::move(file))
    , m_start(std::clamp<qint64>(start, 0, m_file->size()))
    , m_length(std::clamp<qint64>(length, 0, m_file->size() - m_start))
    , m_left(readLimit)
{
}

TagLib::ByteVector TagLibStream::readBlock(unsigned long length)
{
    if (m_position < 0 || m_position >= m_length)
        return {};
    const qint64 wanted = qint64(std::min<quint64>(length, quint64(std::min(m_length - m_position, m_left))));
    if (wanted <= 0)
        return {};
    TagLib::ByteVector block(static_cast<unsigned>(wanted), 0);
    const qint64 got = m_file->read(m_start + m_position, block.data(), wanted);
    m_position += got;
    m_left -= got;
    if (got < wanted)
        block.resize(static_cast<unsigned>(got));
    return block;
}

void TagLibStream::seek(long offset, Position from)
{
    switch (from) {
    case Beginning:
        m_position = offset;
        break;
    case Current:
        m_position += offset;
        break;
    case End:
        m_position = m_length + offset;
        break;
    }
    // A damaged size field leads before the beginning; the stream stays where reading gives nothing.
    if (m_position < 0)
        m_position = m_length;
}

} // namespace cadorel
