// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace cadorel {

/// Tags built byte by byte, for what a well-behaved writer would never write.

/// An ID3v2.4 frame; of version 2.2 when the name has three letters.
QByteArray id3Frame(const QByteArray &id, const QByteArray &content);
/// An ID3v2.4 tag; of version 2.2 when the frames are.
QByteArray id3Tag(const QByteArray &frames);
/// An ID3v1.1 tag; the texts are cut at 30 bytes.
QByteArray id3v1Tag(const QByteArray &title, const QByteArray &artist, const QByteArray &album, int track);
/// Text in GBK.
QByteArray gbk(const QString &text);
/// A FLAC file with these comments, "NAME=value" as bytes.
QByteArray flacWith(const QList<QByteArray> &comments);
/// A WAV file with an INFO list of these chunks.
QByteArray wavWithInfo(const QList<std::pair<QByteArray, QByteArray>> &chunks);

} // namespace cadorel
