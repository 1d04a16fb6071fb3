// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Tags/RawTags.h"

#include "Fixtures/MadeAudio.h"

#include <QStringEncoder>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int shortIdBytes = 3;

QByteArray synchsafe(qsizetype value)
{
    QByteArray bytes;
    for (int shift = 21; shift >= 0; shift -= 7)
        bytes.append(char(value >> shift & 0x7f));
    return bytes;
}

QByteArray bigEndian(qsizetype value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(quint32(value), bytes.data());
    return bytes;
}

QByteArray littleEndian(qsizetype value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(quint32(value), bytes.data());
    return bytes;
}

} // namespace

QByteArray id3Frame(const QByteArray &id, const QByteArray &content)
{
    if (id.size() == shortIdBytes)
        return id + bigEndian(content.size()).sliced(1) + content;
    return id + synchsafe(content.size()) + QByteArray(2, '\0') + content;
}

QByteArray id3Tag(const QByteArray &frames)
{
    // A frame of version 2.2 has its size where the fourth letter would be.
    const bool shortIds = frames.size() > shortIdBytes && uchar(frames[shortIdBytes]) < '0';
    return "ID3" + QByteArray(1, shortIds ? 2 : 4) + QByteArray(2, '\0') + synchsafe(frames.size()) + frames;
}

QByteArray id3v1Tag(const QByteArray &title, const QByteArray &artist, const QByteArray &album, int track)
{
    constexpr int textBytes = 30;
    const auto field = [](const QByteArray &text) { return text.leftJustified(textBytes, '\0', true); };
    return "TAG" + field(title) + field(artist) + field(album) + QByteArray(4, '\0') + QByteArray(29, '\0') +
           char(track) + '\xff';
}

QByteArray gbk(const QString &text)
{
    QStringEncoder encoder("GB18030");
    return encoder.encode(text);
}

QByteArray flacWith(const QList<QByteArray> &comments)
{
    QByteArray block = littleEndian(0) + littleEndian(comments.size());
    for (const QByteArray &comment : comments)
        block += littleEndian(comment.size()) + comment;
    const QByteArray audio = makeAudio(u"flac"_s);
    constexpr qsizetype streamInfoEnd = 4 + 4 + 34;
    QByteArray head = audio.first(streamInfoEnd);
    head[4] = 0; // not the last block
    return head + '\x04' + bigEndian(block.size()).sliced(1) + block + audio.sliced(streamInfoEnd);
}

QByteArray wavWithInfo(const QList<std::pair<QByteArray, QByteArray>> &chunks)
{
    QByteArray list = "INFO";
    for (const auto &[id, text] : chunks)
        list += id + littleEndian(text.size()) + text + QByteArray(text.size() % 2, '\0');
    QByteArray file = makeAudio(u"wav"_s) + "LIST" + littleEndian(list.size()) + list;
    file.replace(4, 4, littleEndian(file.size() - 8));
    return file;
}

} // namespace cadorel
