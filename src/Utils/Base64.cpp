// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Base64.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cadorel {

namespace {

constexpr int bitsPerCharacter = 6;
constexpr qsizetype groupCharacters = 4;
constexpr qsizetype groupBytes = 3;
/// Of the number that four characters make.
constexpr int groupBits = 24;

/// The six bits of each character of the alphabet; those of any other reach beyond a group's, wherever in the
/// group it stands.
constexpr std::array<quint32, 256> sextets = [] {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<quint32, 256> values{};
    values.fill(~quint32{0});
    for (quint32 value = 0; value < alphabet.size(); ++value)
        values[static_cast<uchar>(alphabet[value])] = value;
    return values;
}();

} // namespace

std::optional<QByteArray> bytesFromBase64(QByteArrayView text)
{
    // The last group, which may be padded or short, is left to the library.
    const qsizetype groups = std::max<qsizetype>(text.size() - 1, 0) / groupCharacters;
    const QByteArrayView last = text.sliced(groups * groupCharacters);
    const auto lastBytes = QByteArray::fromBase64Encoding(QByteArray::fromRawData(last.data(), last.size()),
                                                          QByteArray::AbortOnBase64DecodingErrors);
    if (!lastBytes)
        return std::nullopt;
    QByteArray bytes(groups * groupBytes + (*lastBytes).size(), Qt::Uninitialized);
    const auto *in = reinterpret_cast<const uchar *>(text.data());
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    quint32 seen = 0;
    for (qsizetype group = 0; group < groups; ++group) {
        quint32 bits = 0;
        for (qsizetype i = 0; i < groupCharacters; ++i)
            bits |= sextets[in[i]] << (groupBits - bitsPerCharacter * (i + 1));
        seen |= bits;
        out[0] = static_cast<uchar>(bits >> 16U);
        out[1] = static_cast<uchar>(bits >> 8U);
        out[2] = static_cast<uchar>(bits);
        in += groupCharacters;
        out += groupBytes;
    }
    if (seen >> groupBits != 0)
        return std::nullopt;
    std::ranges::copy(*lastBytes, reinterpret_cast<char *>(out));
    return bytes;
}

} // namespace cadorel
