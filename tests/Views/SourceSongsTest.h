// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/OnlineAnswers.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/WebDAVService.h"
#include "Services/WebDAVStreamingService.h"
#include "ViewModels/LyricsViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/ScreenModels.h"
#include "ViewModels/SongListModel.h"
#include "Views/RootScreenTest.h"

namespace cadorel {

/// Songs with lyrics of each kind of source, played in the real window.
class SourceSongsTest : public RootScreenTest
{
    Q_OBJECT
protected:
    enum class Source {
        embedded,  ///< a file of the library, with lyrics in its tags
        sideFile,  ///< a file of the library, with lyrics beside the index
        webdav,    ///< lyrics in the tags of what is fetched while it plays
        navidrome, ///< lyrics that the music server is asked for
        online     ///< lyrics that the API is asked for
    };

    /// Seconds from one line to the next. The first begins at the first of them.
    static constexpr int lineSeconds = 5;
    static constexpr int lineCount = 16;

    static QString lineText(Source source, int line)
    {
        return QStringLiteral("第 %1 源第 %2 句").arg(static_cast<int>(source)).arg(line);
    }
    static QString lyricsOf(Source source)
    {
        QString text;
        for (int line = 0; line < lineCount; ++line) {
            const int seconds = (line + 1) * lineSeconds;
            text += QString::asprintf("[%02d:%02d.00]", seconds / 60, seconds % 60) + lineText(source, line) +
                    QLatin1Char('\n');
        }
        return text;
    }
    static FakeTag lyricsTag(const QString &text)
    {
        return {.identifier = QStringLiteral("id3/USLT"), .commonKey = {}, .string = text, .data = {}};
    }
    static void addSources()
    {
        QTest::addColumn<Source>("source");
        QTest::newRow("tags of a file") << Source::embedded;
        QTest::newRow("file beside the index") << Source::sideFile;
        QTest::newRow("tags of a stream") << Source::webdav;
        QTest::newRow("music server") << Source::navidrome;
        QTest::newRow("online") << Source::online;
    }

    /// Shows the window and plays the first of two songs of a source, ready and that long.
    [[nodiscard]] bool playFrom(Source source, double seconds = 100)
    {
        return addSongs(source) && t->show() && start(source) && answerSong(seconds);
    }
    /// The player's song says what there is to know of it.
    [[nodiscard]] bool answerSong(double seconds)
    {
        if (!QTest::qWaitFor([this] { return t->player && t->player->lastItem(); }))
            return false;
        const auto item = t->player->lastItem();
        item->answerDuration(seconds);
        item->becomeReady();
        return QTest::qWaitFor([this] { return t->playback->canSeek(); });
    }
    /// The first song of playFrom() from its beginning, this time that long.
    [[nodiscard]] bool replay(Source source, double seconds)
    {
        if (source == Source::online)
            return playOnline() && answerSong(seconds);
        t->audioPlayer->playSong(t->audioPlayer->queue().constFirst(), t->audioPlayer->queue());
        return answerSong(seconds);
    }
    /// Lets the lyrics of the song arrive that playFrom() has started.
    [[nodiscard]] bool answerLyrics(Source source)
    {
        switch (source) {
        case Source::embedded:
        case Source::sideFile:
            return true;
        case Source::webdav: {
            // Nobody asks for more of the stream: the copy is fetched, and its tags are read.
            FakeAsset asset{
                .duration = 100, .common = QList<FakeTag>{}, .all = QList<FakeTag>{}, .lyrics = {}};
            asset.lyrics = lyricsOf(source);
            t->reader->otherwise = asset;
            t->clock->advance(WebDAVStreamingService::loadingGrace);
            return QTest::qWaitFor(
                [this] { return t->web->answer(QStringLiteral("a.mp3"), onlineAnswers::body("copy")); });
        }
        case Source::navidrome:
            t->subsonic->setAnswer(
                QStringLiteral("getLyrics.view"),
                webAnswer(lyricsAnswer(
                    lyricsOf(source).replace(QLatin1Char('\n'), QStringLiteral("\\n")).toUtf8())));
            // By the song's id it knows none, by names it does.
            return QTest::qWaitFor([this] {
                t->subsonic->answerOne();
                return lyrics().hasLyrics();
            });
        case Source::online:
            return QTest::qWaitFor([this, source] {
                return t->web->answer(QStringLiteral("type=lrc"),
                                      onlineAnswers::body(lyricsOf(source).toUtf8()));
            });
        }
        return false;
    }

    LyricsViewModel &lyrics() const { return *t->screens->lyrics(); }
    static QList<OnlineSong> onlineSongs()
    {
        QList<OnlineSong> songs;
        for (const auto &id : {QStringLiteral("41"), QStringLiteral("42")}) {
            songs.append({.id = id,
                          .name = QStringLiteral("在线 ") + id,
                          .artist = QStringLiteral("歌手"),
                          .album = QStringLiteral("专辑"),
                          .platform = MusicPlatform::netease,
                          .picUrl = {},
                          .lrcUrl = {}});
        }
        return songs;
    }

private:
    [[nodiscard]] bool addSongs(Source source)
    {
        switch (source) {
        case Source::embedded:
        case Source::sideFile:
            for (const auto &name : {QStringLiteral("00.mp3"), QStringLiteral("01.mp3")}) {
                t->addFile(
                    name,
                    {QStringLiteral("歌 ") + name, QStringLiteral("歌手"), QStringLiteral("专辑"), 100, {}});
                if (source == Source::embedded)
                    t->reader->assets[name].all->append(lyricsTag(lyricsOf(source)));
            }
            return t->scan() &&
                   (source == Source::embedded ||
                    addSideFile(t->importService->importedSongs().constFirst().id(), lyricsOf(source)));
        case Source::webdav:
            t->folders->add(QStringLiteral("/music"), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")});
            return t->scanServer(t->addServer(QStringLiteral("网盘"))) &&
                   t->webDAVService->webDAVSongs().size() == 2;
        case Source::navidrome:
            t->subsonic->setSongs({QStringLiteral("夜曲"), QStringLiteral("晨曲")});
            m_navidrome = t->addNavidrome(QStringLiteral("家"));
            return true;
        case Source::online:
            return true;
        }
        return false;
    }
    [[nodiscard]] bool start(Source source)
    {
        switch (source) {
        case Source::embedded:
        case Source::sideFile:
            t->library->playSongAt(0);
            return true;
        case Source::webdav:
            t->viewModel->playWebDAVSong(t->webDAVService->webDAVSongs().constFirst());
            return true;
        case Source::navidrome:
            t->navidrome->openServer(m_navidrome.uuidText());
            if (!QTest::qWaitFor([this] {
                    t->subsonic->answerAll();
                    return !t->navidrome->page()->isBusy() && t->navidrome->page()->songs()->rowCount() == 2;
                }))
                return false;
            t->navidrome->page()->playSongAt(0);
            return true;
        case Source::online:
            return playOnline();
        }
        return false;
    }
    [[nodiscard]] bool playOnline()
    {
        const qsizetype before = t->player ? t->player->items.size() : 0;
        t->viewModel->playOnlineSongs(onlineSongs(), onlineSongs().constFirst());
        // The API is asked where the song really is, and knows no better place.
        const auto isAnswered = [this] {
            return t->web->answer(QStringLiteral("id=41&type=url"), onlineAnswers::body({}));
        };
        return QTest::qWaitFor(isAnswered) &&
               QTest::qWaitFor([&] { return t->player && t->player->items.size() > before; });
    }
    [[nodiscard]] bool addSideFile(const QString &songId, const QString &text) const
    {
        QFile file(t->platform.directories.applicationSupport + QStringLiteral("/LocalMusic/") + songId +
                   QStringLiteral("_lyrics.lrc"));
        return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
    }

    NavidromeConfig m_navidrome;
};

} // namespace cadorel
