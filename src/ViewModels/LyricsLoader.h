// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/LyricLine.h"
#include "Models/OnlineSong.h"
#include "Models/Song.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace cadorel {

class AudioPlayerService;
class HttpTransfer;
class LocalMusicImportService;
class NavidromeService;
class OnlineMusicService;

/// Where lyrics come from. All of it outlives who asks.
struct LyricsSources
{
    OnlineMusicService &onlineMusic;
    NavidromeService &navidrome;
    LocalMusicImportService &importService;
};

/// Finds the lyrics of the current song, and again of each that follows until they are cleared. An answer for
/// a song that is not current any more is thrown away. Main thread; long texts are read on the pool.
class LyricsLoader : public QObject
{
    Q_OBJECT
public:
    /// Id of what plays, from whatever source; "none" without a song.
    static QString currentSongId(const AudioPlayerService &player);

    /// @param player outlives the loader
    LyricsLoader(AudioPlayerService &player, const LyricsSources &sources);
    ~LyricsLoader() override;
    Q_DISABLE_COPY_MOVE(LyricsLoader)

    /// In the order of their times; empty while they are looked for, and where there are none.
    const QList<LyricLine> &lines() const { return m_lines; }
    /// They are asked for, and it is not known yet whether there are any.
    bool isLoading() const { return m_isLoading; }
    /// Whose lyrics these are.
    const QString &lastSongId() const { return m_lastSongId; }

    /// Takes what is shown away and looks for the current song's lyrics.
    void load();
    /// Shows nothing and follows the player no more.
    void clear();

Q_SIGNALS:
    void linesChanged();
    void isLoadingChanged();

private:
    void songChanged();
    void loadLyrics();
    /// Nobody waits any more for what is asked.
    void leave();
    QCoro::Task<void> find(OnlineSong song);
    QCoro::Task<void> find(Song song);
    /// Whether the answer to that request is still wanted.
    bool isWanted(quint64 request) const;
    /// The search has come to its end, with lines or without.
    void finish(quint64 request, const QList<LyricLine> &lines);
    void setLines(const QList<LyricLine> &lines);
    void setIsLoading(bool isLoading);

    AudioPlayerService &m_player;
    const LyricsSources m_sources;
    bool m_isFollowing = false;
    QString m_lastSongId;
    /// Of the song, when it was looked at: on a server it may come while the song plays.
    std::optional<QString> m_embeddedLyrics;
    quint64 m_request = 0;                    ///< which search is the latest
    std::shared_ptr<HttpTransfer> m_transfer; ///< of what the latest search asks
    bool m_isLoading = false;
    QList<LyricLine> m_lines;
};

} // namespace cadorel
