// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsLoader.h"

#include "Platform/HttpTransfer.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/NavidromeService.h"
#include "Services/OnlineMusicService.h"
#include "Services/Subsonic/SubsonicSongs.h"
#include "Utils/Tasks.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// A text of more characters than this is read on the pool: the longest song is well below, and takes a
/// millisecond.
constexpr qsizetype longestAtOnce = 16 * 1024;

QCoro::Task<QList<LyricLine>> parsed(QString text)
{
    if (text.size() <= longestAtOnce)
        co_return LyricLine::parse(text);
    co_return co_await QtConcurrent::run(LyricLine::parse, text);
}

} // namespace

QString LyricsLoader::currentSongId(const AudioPlayerService &player)
{
    if (const std::optional<OnlineSong> &song = player.currentOnlineSong())
        return song->id;
    const std::optional<Song> &song = player.currentSong();
    return song ? song->id() : u"none"_s;
}

LyricsLoader::LyricsLoader(AudioPlayerService &player, const LyricsSources &sources)
    : m_player(player)
    , m_sources(sources)
{
    connect(&player, &AudioPlayerService::currentSongChanged, this, &LyricsLoader::songChanged);
    connect(&player, &AudioPlayerService::currentOnlineSongChanged, this, &LyricsLoader::songChanged);
}

LyricsLoader::~LyricsLoader()
{
    leave();
}

void LyricsLoader::load()
{
    m_isFollowing = true;
    loadLyrics();
}

void LyricsLoader::leave()
{
    ++m_request;
    // Passed songs would stand in line before the wanted one, and before its sound.
    if (const auto transfer = std::exchange(m_transfer, nullptr))
        transfer->cancel();
}

void LyricsLoader::clear()
{
    m_isFollowing = false;
    leave();
    m_lastSongId.clear();
    m_embeddedLyrics.reset();
    setLines({});
    setIsLoading(false);
}

void LyricsLoader::songChanged()
{
    if (!m_isFollowing)
        return;
    if (currentSongId(m_player) != m_lastSongId) {
        loadLyrics();
        return;
    }
    // The same song, of which more is known by now.
    const std::optional<Song> &song = m_player.currentSong();
    if (!m_player.currentOnlineSong() && song && song->hasLyricsText() &&
        song->embeddedLyrics() != m_embeddedLyrics)
        loadLyrics();
}

void LyricsLoader::loadLyrics()
{
    m_lastSongId = currentSongId(m_player);
    m_embeddedLyrics.reset();
    leave();
    m_transfer = std::make_shared<HttpTransfer>();
    setLines({});
    setIsLoading(m_player.currentOnlineSong() || m_player.currentSong());
    if (const std::optional<OnlineSong> online = m_player.currentOnlineSong()) {
        detach(find(*online));
    } else if (const std::optional<Song> song = m_player.currentSong()) {
        m_embeddedLyrics = song->embeddedLyrics();
        detach(find(*song));
    }
}

bool LyricsLoader::isWanted(quint64 request) const
{
    return request == m_request && m_lastSongId == currentSongId(m_player);
}

QCoro::Task<void> LyricsLoader::find(OnlineSong song)
{
    const QPointer<LyricsLoader> self(this);
    const quint64 request = m_request;
    const QList<LyricLine> lines = co_await m_sources.onlineMusic.getLyrics(song, m_transfer);
    if (self)
        finish(request, lines);
}

QCoro::Task<void> LyricsLoader::find(Song song)
{
    const QPointer<LyricsLoader> self(this);
    const quint64 request = m_request;
    std::optional<QString> text = song.embeddedLyrics();
    if (text.value_or(QString()).isEmpty() && song.id().startsWith(SubsonicSongId::idStart)) {
        text = co_await m_sources.navidrome.lyrics(song, m_transfer);
        if (!self || !isWanted(request))
            co_return;
    }
    if (text.value_or(QString()).isEmpty())
        text = m_sources.importService.getLyrics(song);
    const QList<LyricLine> lines = co_await parsed(text.value_or(QString()));
    if (self)
        finish(request, lines);
}

void LyricsLoader::finish(quint64 request, const QList<LyricLine> &lines)
{
    if (!isWanted(request))
        return;
    setLines(lines);
    setIsLoading(false);
}

void LyricsLoader::setLines(const QList<LyricLine> &lines)
{
    if (m_lines.isEmpty() && lines.isEmpty())
        return;
    m_lines = lines;
    Q_EMIT linesChanged();
}

void LyricsLoader::setIsLoading(bool isLoading)
{
    if (std::exchange(m_isLoading, isLoading) != isLoading)
        Q_EMIT isLoadingChanged();
}

} // namespace cadorel
