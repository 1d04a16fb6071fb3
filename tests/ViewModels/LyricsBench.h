// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakeSubsonic.h"
#include "Fakes/OnlineAnswers.h"
#include "Fakes/PlayerBench.h"
#include "Services/APIConfigService.h"
#include "Services/LyricsOffsetService.h"
#include "Services/NavidromeService.h"
#include "Services/OnlineMusicService.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "Utils/Tasks.h"
#include "ViewModels/LyricsViewModel.h"

#include <QTest>

#include <algorithm>
#include <memory>

namespace cadorel {

/// Lyrics of every source over the real services, on a machine of fakes.
class LyricsBench : public PlayerBench
{
public:
    LyricsBench()
    {
        start();
        m_apiConfig = std::make_unique<APIConfigService>(home.platform);
        m_apiConfig->setBaseURL(QStringLiteral("https://api.example"));
        m_onlineMusic = std::make_unique<OnlineMusicService>(home.platform, *m_apiConfig);
        m_navidrome = std::make_unique<NavidromeService>(home.platform);
        m_offsets = std::make_unique<LyricsOffsetService>(home.platform);
        m_themeManager = std::make_unique<ThemeManager>(home.preferences(), desktop);
        m_appearance = std::make_unique<ThemeService>(home.preferences(), *m_themeManager, desktop);
    }
    ~LyricsBench()
    {
        // The lyrics go while requests are under way, whose answers then touch nothing.
        m_lyrics.reset();
        while (!home.web().pending.empty())
            answerWeb(onlineAnswers::broken(QStringLiteral("the test has ended")));
        m_navidrome.reset();
        m_onlineMusic.reset();
        settle();
    }
    Q_DISABLE_COPY_MOVE(LyricsBench)

    FakeDesktopAppearance desktop;
    FakeSubsonic subsonic{home.web()};

    LyricsSources sources() { return {*m_onlineMusic, *m_navidrome, importService()}; }
    LyricsOffsetService &offsets() { return *m_offsets; }
    ThemeService &appearance() { return *m_appearance; }
    ThemeManager &themeManager() { return *m_themeManager; }
    /// Made by the first call.
    LyricsViewModel &lyrics()
    {
        if (!m_lyrics) {
            m_lyrics = std::make_unique<LyricsViewModel>(LyricsServices{.audioPlayer = player(),
                                                                        .sources = sources(),
                                                                        .offsets = offsets(),
                                                                        .appearance = appearance(),
                                                                        .clock = home.clock()});
        }
        return *m_lyrics;
    }

    /// A song in a file with that text in its tags.
    static Song songWith(const QString &id, const QString &text)
    {
        Song song = fileSong(id);
        song.setEmbeddedLyrics(text);
        return song;
    }
    /// Lyrics in a file beside the library's index.
    void addSideFile(const QString &songId, const QByteArray &text)
    {
        home.addMetadataFile(songId + QStringLiteral("_lyrics.lrc"), text);
    }
    /// Stores a server with its password. @return a song on it
    Song addNavidromeSong(const QString &serverId)
    {
        NavidromeConfig config;
        config.name = QStringLiteral("家");
        config.serverURL = QStringLiteral("http://music.test:4533");
        config.username = QStringLiteral("listener");
        detach(m_navidrome->saveConfig(config, QStringLiteral("sesame")));
        if (!QTest::qWaitFor([this, &config] { return m_navidrome->configs().contains(config); }))
            qFatal("a server is not stored");
        SongFields fields;
        fields.id = QStringLiteral("navidrome_") + config.uuidText() + QLatin1Char('_') + serverId;
        fields.title = QStringLiteral("夜曲");
        fields.artist = QStringLiteral("歌手");
        fields.assetURL = QUrl(QStringLiteral("http://music.test:4533/stream"));
        return Song(fields);
    }
    /// Waits for a request to the server and answers it.
    bool answerServer()
    {
        const bool answered = QTest::qWaitFor([this] { return subsonic.answerOne(); });
        settle();
        return answered;
    }
    /// Answers the request for an online song's lyrics.
    void answerOnline(const QString &songId, const QByteArray &text)
    {
        const bool isAsked = home.web().answer(lyricsQuery(songId), onlineAnswers::body(text));
        if (!isAsked)
            qFatal("nobody asks for the lyrics of %s", qPrintable(songId));
        settle();
    }

    /// Whether somebody waits for an online song's lyrics.
    bool asksOnline(const QString &songId)
    {
        return std::ranges::any_of(home.web().pending, [&songId](const FakeHttpClient::Pending &waiting) {
            return waiting.request.url.toString().contains(lyricsQuery(songId));
        });
    }

    void play(const Song &song) { player().playSong(song, {song}); }
    /// The song plays and says that it stands there.
    void tick(double seconds) { stream().tick(seconds); }
    void pass(int milliseconds) { home.clock().advance(std::chrono::milliseconds(milliseconds)); }

    static QStringList texts(const QList<LyricLine> &lines)
    {
        QStringList texts;
        for (const LyricLine &line : lines)
            texts.append(line.text);
        return texts;
    }

private:
    static QString lyricsQuery(const QString &songId) { return QStringLiteral("id=%1&type=lrc").arg(songId); }

    std::unique_ptr<APIConfigService> m_apiConfig;
    std::unique_ptr<OnlineMusicService> m_onlineMusic;
    std::unique_ptr<NavidromeService> m_navidrome;
    std::unique_ptr<LyricsOffsetService> m_offsets;
    std::unique_ptr<ThemeManager> m_themeManager;
    std::unique_ptr<ThemeService> m_appearance;
    std::unique_ptr<LyricsViewModel> m_lyrics;
};

/// A text of that many lines, one a second from the beginning.
inline QString timedText(int lines)
{
    QString text;
    for (int i = 0; i < lines; ++i)
        text += QString::asprintf("[%02d:%02d.00]line %d\n", i / 60, i % 60, i);
    return text;
}

} // namespace cadorel
