// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace cadorel {

/// How the texts of an ID3v2 tag are written.
enum class Id3Text { latin1, utf16, utf8 };

/// A song to be made. Empty values are not written.
struct MadeSong
{
    /// File ending; one of madeFormats() (Fixtures/MadeAudio.h). Empty: that of the path.
    QString format = {};
    QString title = {};
    QString artist = {};
    QString albumArtist = {};
    QString album = {};
    /// "7" or "7/12".
    QString track = {};
    /// ID3v2: one USLT frame each; other formats take the first.
    QStringList lyrics = {};
    /// A JPEG or PNG file (Fixtures/MadePicture.h). Not written to "rm" and its relatives.
    QByteArray cover = {};
    double seconds = 1;
    /// Hertz.
    int frequency = 440;
    Id3Text id3Text = Id3Text::utf16;
};

/// Makes an audio file with tags in the way that is usual for its format. "rm" and its relatives only know
/// title and artist. @return whether the file is there; otherwise the reason is on standard error
bool makeSong(const QString &path, const MadeSong &song);

} // namespace cadorel
