// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisProperties.h"

#include "Platform/NowPlayingInfo.h"
#include "Utils/OneLine.h"
#include "Utils/ProcessHash.h"

#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cadorel::mpris {

namespace {

// Paths below /org/mpris are not a player's to use.
constexpr QLatin1StringView trackFolder{"/com/cadorel/track/"};
constexpr QLatin1StringView noTrack{"/org/mpris/MediaPlayer2/TrackList/NoTrack"};

/// Text from outside as it may go over the bus, which cuts the connection of who sends half a character.
QString busText(const QString &text)
{
    const QList<uint> characters = oneLine(text).toUcs4();
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size());
}

QString playbackStatus(const NowPlayingInfo &info, bool isStopped)
{
    if (info.songId.isEmpty() || isStopped)
        return u"Stopped"_s;
    return info.playbackRate > 0 ? u"Playing"_s : u"Paused"_s;
}

QString loopStatus(PlayMode mode)
{
    switch (mode) {
    case PlayMode::sequential:
        return u"None"_s;
    case PlayMode::repeatOne:
        return u"Track"_s;
    case PlayMode::shuffle:
    case PlayMode::repeatAll:
        break;
    }
    return u"Playlist"_s;
}

QVariantMap metadata(const NowPlayingInfo &info, const QString &artUrl)
{
    QVariantMap result{{u"mpris:trackid"_s, QVariant::fromValue(trackId(info.songId))}};
    const auto insertUnlessEmpty = [&result](const QString &key, const QString &value) {
        if (!value.isEmpty())
            result.insert(key, value);
    };
    if (info.songId.isEmpty())
        return result;
    insertUnlessEmpty(u"xesam:title"_s, busText(info.title));
    insertUnlessEmpty(u"xesam:album"_s, busText(info.albumTitle));
    insertUnlessEmpty(u"mpris:artUrl"_s, artUrl);
    if (const QString artist = busText(info.artist); !artist.isEmpty())
        result.insert(u"xesam:artist"_s, QStringList{artist});
    if (const qint64 length = microseconds(info.playbackDuration); length > 0)
        result.insert(u"mpris:length"_s, length);
    return result;
}

} // namespace

qint64 microseconds(double seconds)
{
    constexpr double perSecond = 1e6;
    constexpr double longest = 1e12; // far beyond any song, far within the type
    return seconds > 0 && seconds < longest ? std::llround(seconds * perSecond) : 0;
}

QDBusObjectPath trackId(const QString &songId)
{
    if (songId.isEmpty())
        return QDBusObjectPath(QString(noTrack));
    return QDBusObjectPath(trackFolder + processHash(songId).replace(u'-', u'_'));
}

QVariantMap rootProperties()
{
    return {{u"CanQuit"_s, true},
            {u"CanRaise"_s, true},
            {u"HasTrackList"_s, false},
            {u"Identity"_s, u"Tarnova Music Player"_s},
            {u"DesktopEntry"_s, u"com.cadorel.Player"_s},
            {u"SupportedUriSchemes"_s, QStringList()},
            {u"SupportedMimeTypes"_s, QStringList()}};
}

QVariantMap playerProperties(const NowPlayingInfo &info, const PlaybackControls &controls,
                             const QString &artUrl, bool isStopped)
{
    constexpr double onlyRate = 1;
    return {{u"PlaybackStatus"_s, playbackStatus(info, isStopped)},
            {u"LoopStatus"_s, loopStatus(controls.playMode)},
            {u"Rate"_s, onlyRate},
            {u"Shuffle"_s, controls.playMode == PlayMode::shuffle},
            {u"Metadata"_s, metadata(info, artUrl)},
            {u"Volume"_s, controls.volume},
            {u"MinimumRate"_s, onlyRate},
            {u"MaximumRate"_s, onlyRate},
            {u"CanGoNext"_s, controls.canGoNext},
            {u"CanGoPrevious"_s, controls.canGoPrevious},
            {u"CanPlay"_s, controls.canPlay},
            {u"CanPause"_s, controls.canPlay},
            {u"CanSeek"_s, controls.canSeek},
            {u"CanControl"_s, true}};
}

std::optional<PlayMode> modeForLoopStatus(const QString &loopStatus, PlayMode current)
{
    if (loopStatus == "None"_L1)
        return PlayMode::sequential;
    if (loopStatus == "Track"_L1)
        return PlayMode::repeatOne;
    if (loopStatus == "Playlist"_L1)
        return current == PlayMode::shuffle ? PlayMode::shuffle : PlayMode::repeatAll;
    return std::nullopt;
}

PlayMode modeForShuffle(bool shuffle, PlayMode current)
{
    if (shuffle)
        return PlayMode::shuffle;
    return current == PlayMode::shuffle ? PlayMode::repeatAll : current;
}

} // namespace cadorel::mpris
