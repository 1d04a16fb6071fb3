// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Cloud/FlacPicture.h"

#include <QtEndian>

namespace cadorel {

namespace {

/// A block with a picture in it is longer than this: its numbers alone take as much.
constexpr qsizetype leastBlock = 32;
constexpr qsizetype numberSize = sizeof(quint32);
/// Width, height, bits of a pixel, number of colours.
constexpr qsizetype measuresSize = 4 * numberSize;

/// Takes the block apart from its front.
class Reader
{
public:
    explicit Reader(QByteArrayView rest)
        : m_rest(rest)
    {
    }

    std::optional<QByteArrayView> take(qsizetype count)
    {
        if (count > m_rest.size())
            return std::nullopt;
        const QByteArrayView taken = m_rest.first(count);
        m_rest = m_rest.sliced(count);
        return taken;
    }
    /// Bytes that are preceded by their number.
    std::optional<QByteArrayView> takeCounted()
    {
        const std::optional<QByteArrayView> number = take(numberSize);
        return number ? take(qsizetype{qFromBigEndian<quint32>(number->data())}) : std::nullopt;
    }

private:
    QByteArrayView m_rest;
};

} // namespace

std::optional<QByteArray> flacPicture(QByteArrayView block)
{
    if (block.size() <= leastBlock)
        return std::nullopt;
    Reader reader(block);
    const bool hasPicture = reader.take(numberSize) // kind of picture
                            && reader.takeCounted() // media type
                            && reader.takeCounted() // description
                            && reader.take(measuresSize);
    const std::optional<QByteArrayView> picture = hasPicture ? reader.takeCounted() : std::nullopt;
    return picture ? std::optional(picture->toByteArray()) : std::nullopt;
}

} // namespace cadorel
