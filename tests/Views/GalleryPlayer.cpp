// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/GalleryPlayer.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "ViewModels/ContentViewModel.h"
#include "ViewModels/LyricsViewModel.h"
#include "ViewModels/MiniPlayerViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/ScreenModels.h"

#include <QPainter>
#include <QPainterPath>

namespace cadorel::gallery {

namespace {

using BackgroundStyle = NowPlayingBackgroundStyles::Type;

QString madeLyrics()
{
    const QStringList lines = {u"潮水在天亮以前退去"_s,
                               u"石阶上还留着昨夜的盐"_s,
                               u"第一班船推开雾"_s,
                               u"把灯一盏一盏还给岸"_s,
                               u"你说过要在风停的时候写信"_s,
                               u"写那些没有来得及说完、后来又说了很多很多遍、终于谁也不再提起的话"_s,
                               u"And the harbour keeps its light on"_s,
                               u"🌊 一浪，又一浪 🌙"_s,
                               u"我把名字折进纸船"_s,
                               u"让它替我走远"_s,
                               u"潮水在天亮以后回来"_s,
                               u"没有带回什么"_s};
    QString text;
    for (int i = 0; i < lines.size(); ++i)
        text += QString::asprintf("[00:%02d.00]", 4 + 4 * i) + lines.at(i) + u'\n';
    return text;
}

void play(TestWindow &test, const QList<Song> &queue, int row, double duration)
{
    test.audioPlayer->playSong(queue.at(row), queue);
    const auto item = test.player->lastItem();
    item->answerDuration(duration);
    item->becomeReady();
}

void pagesOf(const Gallery &gallery, TestWindow &test, const QList<Song> &queue)
{
    NowPlayingViewModel &screen = *test.screens->nowPlaying();
    ThemeService &appearance = *test.themeService;
    openPlayer(test);
    gallery.save(test, u"player-nothing"_s);
    screen.setCurrentPage(NowPlayingViewModel::LyricsPage);
    gallery.save(test, u"player-nothing-lyrics"_s);
    screen.setCurrentPage(NowPlayingViewModel::QueuePage);
    gallery.save(test, u"player-nothing-queue"_s);
    screen.setCurrentPage(NowPlayingViewModel::CoverPage);

    playWithLyrics(test, queue);
    gallery.save(test, u"player-cassette"_s);
    appearance.setCassetteStyle(CassetteStyles::Type::none);
    gallery.save(test, u"player-cover"_s);
    appearance.setCircleAlbumCover();
    test.playlistService->toggleFavorite(queue.constFirst());
    test.equalizerService->setEnabled(true);
    gallery.save(test, u"player-round-favorite"_s);
    test.equalizerService->setEnabled(false);
    appearance.setAlbumCoverCornerRadius(12);
    appearance.setSoundWaveRing(false);
    gallery.save(test, u"player-without-ring"_s);
    appearance.setSoundWaveRing(true);

    screen.setCurrentPage(NowPlayingViewModel::LyricsPage);
    gallery.save(test, u"player-lyrics"_s);
    appearance.setLyricsAlignment(LyricsAlignments::Type::left);
    appearance.setLyricsFontSize(28);
    appearance.setLyricsBlurEnabled(false);
    gallery.save(test, u"player-lyrics-large-left"_s);
    appearance.setLyricsAlignment(LyricsAlignments::Type::center);
    appearance.setLyricsFontSize(18);
    appearance.setLyricsBlurEnabled(true);
    screen.setCurrentPage(NowPlayingViewModel::QueuePage);
    gallery.save(test, u"player-queue"_s);
    test.item(u"queuePageList"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(test.window, Qt::Key_Down);
    gallery.save(test, u"player-queue-keyboard"_s);
    screen.setCurrentPage(NowPlayingViewModel::CoverPage);

    play(test, queue, 4, 3725);
    gallery.save(test, u"player-long-title"_s);
    screen.setCurrentPage(NowPlayingViewModel::LyricsPage);
    gallery.save(test, u"player-lyrics-empty"_s);
    // Nobody answers for it.
    const OnlineSong online{u"1"_s, u"灯塔来信"_s, u"潮汐乐队"_s, u"远岸"_s, MusicPlatform::netease, {}, {}};
    test.audioPlayer->playOnlineSong(online, {online});
    gallery.save(test, u"player-lyrics-loading"_s);
    screen.setCurrentPage(NowPlayingViewModel::CoverPage);
    test.audioPlayer->playSong(queue.at(5), queue);
    gallery.save(test, u"player-loading"_s);
    play(test, queue, 3, 301);
    gallery.save(test, u"player-paused-dark-cover"_s);
    test.player->lastItem()->fail(u"打不开文件"_s);
    gallery.save(test, u"player-failed"_s);
}

void backgroundsOf(const Gallery &gallery, TestWindow &test, const QList<Song> &queue)
{
    ThemeService &appearance = *test.themeService;
    playWithLyrics(test, queue);
    appearance.setCustomBackgroundImage(madePainting());
    for (const auto &[name, style] : {std::pair(u"blur"_s, BackgroundStyle::blur),
                                      {u"solid"_s, BackgroundStyle::solid},
                                      {u"gradient"_s, BackgroundStyle::gradient},
                                      {u"custom-color"_s, BackgroundStyle::customColor},
                                      {u"custom-image"_s, BackgroundStyle::customImage},
                                      {u"clear"_s, BackgroundStyle::clear}}) {
        appearance.setNowPlayingBackgroundStyle(style);
        gallery.save(test, u"player-background-"_s + name);
    }
    appearance.setCustomBackgroundColor(QColor(0xff, 0xf3, 0xc4));
    appearance.setNowPlayingBackgroundStyle(BackgroundStyle::customColor);
    gallery.save(test, u"player-background-custom-pale"_s);
    appearance.setNowPlayingBackgroundStyle(BackgroundStyle::blur);
    for (const double opacity : {0.0, 1.0}) {
        appearance.setNowPlayingBackgroundOpacity(opacity);
        gallery.save(test, u"player-background-opacity-%1"_s.arg(opacity));
    }
}

} // namespace

QImage madePainting(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = size.width();
    const double h = size.height();
    QLinearGradient sky(0, 0, 0, h);
    sky.setColorAt(0, 0x1d2b53);
    sky.setColorAt(0.55, 0xd9626e);
    sky.setColorAt(0.75, 0xffc27a);
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xe9, 0xb0));
    painter.drawEllipse(QPointF(w * 0.62, h * 0.56), w * 0.12, w * 0.12);
    const QList<QColor> hills = {0x6b3a5b, 0x44294a, 0x241a30};
    for (int i = 0; i < hills.size(); ++i) {
        const double y = h * (0.62 + 0.11 * i);
        QPainterPath hill(QPointF(0, h));
        hill.lineTo(0, y);
        hill.cubicTo(w * 0.3, y - h * (0.16 - 0.05 * i), w * (0.45 + 0.1 * i), y + h * 0.12, w, y - h * 0.06);
        hill.lineTo(w, h);
        painter.fillPath(hill, hills.at(i));
    }
    return image;
}

QList<Song> madeQueue()
{
    const auto bytes = [](const QImage &image) {
        QByteArray made;
        QBuffer buffer(&made);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG", 92);
        return made;
    };
    const auto song = [](const QString &title, const QString &artist, const QByteArray &cover) {
        static int number = 0;
        SongFields fields;
        fields.id = u"made %1"_s.arg(++number);
        fields.title = title;
        fields.artist = artist;
        fields.assetURL = QUrl::fromLocalFile(u"/nowhere/%1.mp3"_s.arg(number));
        Song made(fields);
        if (!cover.isEmpty())
            made.setArtworkData(ArtworkData(cover));
        return made;
    };
    QList<Song> queue = {
        song(u"清晨的第一班船"_s, u"林间小队"_s, bytes(madePainting())),
        song(u"Paper Lanterns"_s, u"The Quiet Harbour"_s, TestWindow::picture(0xe07a5f, 0x3d405b)),
        song(u"雨后"_s, u"林间小队"_s, TestWindow::picture(0xf7f4ea, 0xe9dcc9)),
        song(u"🌙 夜航 ✨"_s, u"阿眠"_s, TestWindow::picture(0x050508, 0x16161e)),
        song(u"一首名字特别特别长的歌，长到在手机的宽度上无论如何也放不下"_s.repeated(10),
             u"同样有着很长很长名字的一支乐队与他们的朋友们"_s.repeated(5),
             TestWindow::picture(0x81b29a, 0xf2cc8f)),
        song({}, {}, {}),
        song(u"山谷回声"_s, u"林间小队"_s, "no picture at all"),
        song(u"2046"_s, u"阿眠"_s, TestWindow::picture(0x22223b, 0x9a8c98)),
        song(u"Last Train"_s, u"The Quiet Harbour"_s, TestWindow::picture(0xd62828, 0xfcbf49)),
    };
    queue.first().setEmbeddedLyrics(madeLyrics());
    return queue;
}

void openPlayer(TestWindow &test)
{
    // Not by its key, which is for a player with a song.
    QMetaObject::invokeMethod(test.item(u"contentView"_s), "openNowPlaying");
    await([&test] { return test.item(u"nowPlayingCover"_s)->property("covers").toBool(); });
}

void playWithLyrics(TestWindow &test, const QList<Song> &queue)
{
    using namespace std::chrono_literals;
    play(test, queue, 0, 215);
    await([&test] { return test.screens->lyrics()->hasLyrics(); });
    test.player->tick(28.5);
    // The bars about the cover stand as they do in the middle of a song.
    for (int i = 0; i < 20; ++i) {
        test.clock->advance(50ms);
        QTest::qWait(1);
    }
}

void playerStates(const Gallery &gallery)
{
    const QList<Song> queue = madeQueue();
    {
        TestWindow test;
        gallery.show(test);
        pagesOf(gallery, test, queue);
    }
    TestWindow test;
    gallery.show(test);
    openPlayer(test);
    backgroundsOf(gallery, test, queue);
}

void discStates(const Gallery &gallery)
{
    const QList<Song> queue = madeQueue();
    TestWindow test;
    gallery.show(test);
    for (const auto *tab : {"library", "playlists", "webdav", "search", "settings"}) {
        test.click(QString::fromUtf8(tab) + u"Tab"_s);
        gallery.save(test, u"tab-empty-"_s + QString::fromUtf8(tab));
    }
    test.click(u"libraryTab"_s);
    addSongs(test);
    if (!test.scan())
        qFatal("the songs are not taken up");
    play(test, queue, 0, 215);
    test.player->tick(28.5);
    MiniPlayerViewModel &disc = *test.screens->miniPlayer();
    gallery.save(test, u"disc-right"_s);
    disc.toggleFan();
    disc.highlight(2);
    gallery.save(test, u"fan-right"_s);
    disc.resetControlMode();
    const QSizeF room = test.window->size();
    const MiniPlayerViewModel::Screen screen{.width = room.width(), .height = room.height()};
    disc.updatePosition({}, {0, room.height() / 2}, screen, false, false);
    gallery.save(test, u"disc-left"_s);
    disc.toggleFan();
    disc.highlight(4);
    gallery.save(test, u"fan-left"_s);
    disc.resetControlMode();
    disc.updatePosition({}, {0, 0}, screen, false, false);
    disc.toggleFan();
    gallery.save(test, u"fan-top"_s);
    disc.resetControlMode();
    play(test, queue, 5, 0);
    gallery.save(test, u"disc-without-cover"_s);
    test.player->lastItem()->fail(u"打不开文件"_s);
    gallery.save(test, u"disc-and-error"_s);
}

} // namespace cadorel::gallery
