// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeSong.h"

#include "Fixtures/MadeAudio.h"
#include "Fixtures/RareAudio.h"
#include "Fixtures/SongTags.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

bool isTagged(const MadeSong &song)
{
    return !(song.title + song.artist + song.albumArtist + song.album + song.track).isEmpty() ||
           !song.lyrics.isEmpty() || !song.cover.isEmpty();
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// The containers that only ffmpeg can tag: it copies the sound and adds the tags.
bool tagByFfmpeg(const QString &path, const QString &format, const QByteArray &audio, const MadeSong &song)
{
    const QTemporaryDir directory;
    const QString source = directory.filePath("untagged."_L1 + format);
    if (!write(source, audio))
        return false;
    QStringList arguments{u"-i"_s, source};
    const bool matroska = format == "mka"_L1;
    if (matroska && !song.cover.isEmpty()) {
        const QString mimeType = QString::fromLatin1(pictureMimeType(song.cover));
        const QString cover =
            directory.filePath(mimeType == "image/png"_L1 ? u"cover.png"_s : u"cover.jpg"_s);
        if (!write(cover, song.cover))
            return false;
        arguments += {u"-attach"_s, cover, u"-metadata:s:t"_s, "mimetype="_L1 + mimeType};
    }
    const auto add = [&arguments](QLatin1StringView name, const QString &value) {
        if (!value.isEmpty())
            arguments += {u"-metadata"_s, name + u'=' + value};
    };
    add("title"_L1, song.title);
    add(matroska ? "ARTIST"_L1 : "author"_L1, song.artist);
    add("ALBUMARTIST"_L1, song.albumArtist);
    add("ALBUM"_L1, song.album);
    add("track"_L1, song.track);
    add("LYRICS"_L1, song.lyrics.value(0));
    arguments += {u"-c"_s, u"copy"_s, u"-f"_s, matroska ? u"matroska"_s : u"rm"_s, path};
    return runFfmpeg(arguments);
}

} // namespace

bool makeSong(const QString &path, const MadeSong &song)
{
    const QString format = song.format.isEmpty() ? QFileInfo(path).suffix().toLower() : song.format;
    const QByteArray audio = makeAudio(format, song.seconds, song.frequency);
    bool made = !audio.isEmpty();
    if (made && !isTagged(song))
        made = write(path, audio);
    else if (made && format == "aac"_L1)
        made = write(path, renderedId3(song) + audio);
    else if (made && format == "tak"_L1)
        made = write(path, audio + renderedApe(song));
    else if (made && (format == "dsf"_L1 || format == "dff"_L1))
        made = write(path, withId3(audio, renderedId3(song)));
    else if (made && (format == "mka"_L1 || format.startsWith("r"_L1)))
        made = tagByFfmpeg(path, format, audio, song);
    else if (made)
        made = write(path, audio) && writeTags(path, format, song);
    if (!made)
        qWarning() << "cannot make" << path << "as" << format;
    return made;
}

} // namespace cadorel
