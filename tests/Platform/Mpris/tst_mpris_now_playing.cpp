// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"

#include <QDBusObjectPath>
#include <QFile>
#include <QTest>
#include <QUrl>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QImage picture(const QColor &color)
{
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

/// What the desktop reads of the song, and what is announced of it.
class TestMprisNowPlaying : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }

    void withoutASongThereIsOnlyTheTrackThatIsNone();
    void aSongIsDescribed();
    void whatIsUnknownIsLeftOut();
    void lengthsThatAreNoneAreLeftOut_data();
    void lengthsThatAreNoneAreLeftOut();
    void theTrackIdTellsSongsApartAndNothingElse();
    void theStatusFollowsSongAndRate();
    void whatTheDesktopStoppedIsStopped();
    void stoppingMayTakeAMoment();
    void theControlsAreTold();
    void changesOfOneTurnAreOneSignal();
    void onlyWhatChangedIsAnnounced();
    void ticksAnnounceNothing();
    void whatComesBackWithinATurnIsNotAnnounced();
    void thePositionRunsOn();
    void jumpsAreAnnouncedAfterTheirSong();
    void ticksAreNoJumps();
    void aPlaceThatTheDesktopAskedForIsAnnounced();
    void theCoverIsAnnouncedWhenItsFileStands();
    void theCoverOfTheSongBeforeIsNotShown();
    void anAlbumKeepsItsCover();
    void textThatWouldCutTheConnectionIsMended_data();
    void textThatWouldCutTheConnectionIsMended();
    void anEndlessTitleIsCut();
    void noTimerRuns();

private:
    MprisClient &client() { return m_bench->client(); }

    std::unique_ptr<MprisBench> m_bench;
};

void TestMprisNowPlaying::init()
{
    m_bench = std::make_unique<MprisBench>();
    QVERIFY(m_bench->isReady());
}

void TestMprisNowPlaying::withoutASongThereIsOnlyTheTrackThatIsNone()
{
    const QVariantMap metadata = client().metadata();
    QCOMPARE(metadata.keys(), QStringList{u"mpris:trackid"_s});
    QCOMPARE(metadata.first().value<QDBusObjectPath>().path(),
             u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Stopped"_s);
    QCOMPARE(client().get(u"Position"_s).toLongLong(), 0);
    for (const QString &name :
         {u"CanGoNext"_s, u"CanGoPrevious"_s, u"CanPlay"_s, u"CanPause"_s, u"CanSeek"_s})
        QCOMPARE(client().get(name).toBool(), false);
}

void TestMprisNowPlaying::aSongIsDescribed()
{
    NowPlayingInfo info = MprisBench::song();
    info.playbackDuration = 200.1234567;
    m_bench->tell(info);
    const QVariantMap metadata = client().metadata();
    QCOMPARE(metadata.keys(), (QStringList{u"mpris:length"_s, u"mpris:trackid"_s, u"xesam:album"_s,
                                           u"xesam:artist"_s, u"xesam:title"_s}));
    QStringList types;
    for (const QVariant &value : metadata)
        types.append(MprisClient::signature(value));
    QCOMPARE(types, (QStringList{u"x"_s, u"o"_s, u"s"_s, u"as"_s, u"s"_s}));
    QCOMPARE(metadata.value(u"mpris:length"_s).toLongLong(), 200'123'457);
    QCOMPARE(metadata.value(u"xesam:title"_s).toString(), u"晴天"_s);
    QCOMPARE(metadata.value(u"xesam:artist"_s).toStringList(), QStringList{u"阿箬"_s});
    QCOMPARE(metadata.value(u"xesam:album"_s).toString(), u"第一张"_s);
    QCOMPARE(m_bench->player().nowPlayingInfo().title, u"晴天"_s);
}

void TestMprisNowPlaying::whatIsUnknownIsLeftOut()
{
    NowPlayingInfo info;
    info.songId = u"bare"_s;
    info.title = u" \n\t"_s;
    m_bench->tell(info);
    QCOMPARE(client().metadata().keys(), QStringList{u"mpris:trackid"_s});
}

void TestMprisNowPlaying::lengthsThatAreNoneAreLeftOut_data()
{
    QTest::addColumn<double>("length");
    QTest::newRow("no number") << qQNaN();
    QTest::newRow("endless") << qInf();
    QTest::newRow("negative") << -1.0;
    QTest::newRow("none") << 0.0;
    QTest::newRow("longer than the type") << 1e300;
}

void TestMprisNowPlaying::lengthsThatAreNoneAreLeftOut()
{
    QFETCH(double, length);
    NowPlayingInfo info = MprisBench::song();
    info.playbackDuration = length;
    m_bench->tell(info);
    QVERIFY(!client().metadata().contains(u"mpris:length"_s));
    QVERIFY(client().metadata().contains(u"xesam:title"_s));
}

void TestMprisNowPlaying::theTrackIdTellsSongsApartAndNothingElse()
{
    QStringList paths;
    const QString address = u"webdav_1_%2Fmusic%2Fuser%3Apassword"_s;
    for (const QString &id : {address, u"0123456789ABCDEF"_s, u"歌"_s, address}) {
        m_bench->tell(MprisBench::song(id));
        paths.append(client().metadata().value(u"mpris:trackid"_s).value<QDBusObjectPath>().path());
    }
    QCOMPARE(paths.constFirst(), paths.constLast());
    QCOMPARE(QSet<QString>(paths.cbegin(), paths.cend()).size(), 3);
    for (const QString &path : std::as_const(paths)) {
        QVERIFY2(path.startsWith("/com/cadorel/track/"_L1), qPrintable(path));
        QVERIFY2(!path.contains("webdav"_L1) && !path.contains("0123456789ABCDEF"_L1), qPrintable(path));
    }
}

void TestMprisNowPlaying::theStatusFollowsSongAndRate()
{
    NowPlayingInfo info = MprisBench::song();
    m_bench->tell(info);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Playing"_s);
    info.playbackRate = 0;
    m_bench->tell(info);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Paused"_s);
    m_bench->tell(NowPlayingInfo{});
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Stopped"_s);
}

void TestMprisNowPlaying::whatTheDesktopStoppedIsStopped()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo stopped = MprisBench::song();
    stopped.playbackRate = 0;
    const auto stop = [&] { m_bench->tell(stopped); };
    connect(&m_bench->player(), &RemoteCommandCenter::stopCommand, this, stop);
    const auto status = [this] { return client().get(u"PlaybackStatus"_s).toString(); };
    const auto isStoppedAgain = [&] {
        m_bench->tell(MprisBench::song());
        client().play(u"Stop"_s);
        return status() == "Stopped"_L1;
    };
    QVERIFY(isStoppedAgain());
    const QList<QVariantMap> changes = client().takeChanges();
    QCOMPARE(changes, QList{QVariantMap({{u"PlaybackStatus"_s, u"Stopped"_s}})});
    QVERIFY(client().metadata().contains(u"xesam:title"_s)); // Play begins it anew
    m_bench->tell(MprisBench::song());
    QCOMPARE(status(), u"Playing"_s);
    m_bench->tell(stopped); // somebody paused it at the start
    QCOMPARE(status(), u"Paused"_s);
    QVERIFY(isStoppedAgain());
    NowPlayingInfo moved = stopped;
    moved.elapsedPlaybackTime = 5;
    m_bench->tell(moved);
    QCOMPARE(status(), u"Paused"_s);
    QVERIFY(isStoppedAgain());
    stopped = MprisBench::song(u"another"_s);
    stopped.playbackRate = 0;
    m_bench->tell(stopped);
    QCOMPARE(status(), u"Paused"_s);
}

void TestMprisNowPlaying::stoppingMayTakeAMoment()
{
    NowPlayingInfo playing = MprisBench::song();
    playing.elapsedPlaybackTime = 30;
    NowPlayingInfo stopped = MprisBench::song();
    stopped.playbackRate = 0;
    QVERIFY(m_bench->begin(playing));
    QCOMPARE(client().play(u"Stop"_s), QString());
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Playing"_s);
    m_bench->clock().advance(250ms);
    playing.elapsedPlaybackTime = 0;
    m_bench->tell(playing);
    m_bench->tell(stopped);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Stopped"_s);
    // Nobody stops it this time.
    m_bench->tell(playing);
    m_bench->tell(stopped);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Paused"_s);
    // A stop that did not come about is no reason later on, and neither is one that was taken back.
    m_bench->tell(playing);
    QCOMPARE(client().play(u"Stop"_s), QString());
    m_bench->clock().advance(1min);
    m_bench->tell(stopped);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Paused"_s);
    m_bench->tell(playing);
    QCOMPARE(client().play(u"Stop"_s), QString());
    QCOMPARE(client().play(u"Play"_s), QString());
    m_bench->tell(stopped);
    QCOMPARE(client().get(u"PlaybackStatus"_s).toString(), u"Paused"_s);
}

void TestMprisNowPlaying::theControlsAreTold()
{
    const QMap<QString, bool PlaybackControls::*> names{
        {u"CanGoNext"_s, &PlaybackControls::canGoNext},
        {u"CanGoPrevious"_s, &PlaybackControls::canGoPrevious},
        {u"CanPlay"_s, &PlaybackControls::canPlay},
        {u"CanPause"_s, &PlaybackControls::canPlay},
        {u"CanSeek"_s, &PlaybackControls::canSeek}};
    for (auto told = names.cbegin(); told != names.cend(); ++told) {
        PlaybackControls controls;
        controls.*told.value() = true;
        m_bench->tell(controls);
        for (auto asked = names.cbegin(); asked != names.cend(); ++asked)
            QCOMPARE(client().get(asked.key()).toBool(), asked.value() == told.value());
    }
}

void TestMprisNowPlaying::changesOfOneTurnAreOneSignal()
{
    QVERIFY(m_bench->begin());
    PlaybackControls controls = MprisBench::everything();
    controls.volume = 0.25;
    controls.playMode = PlayMode::shuffle;
    NowPlayingInfo info = MprisBench::song(u"another"_s);
    info.playbackRate = 0;
    m_bench->tell(controls);
    m_bench->tell(info);
    const QList<QVariantMap> changes = client().takeChanges();
    QCOMPARE(changes.size(), 1);
    const QVariantMap &change = changes.constFirst();
    QCOMPARE(change.keys(),
             (QStringList{u"LoopStatus"_s, u"Metadata"_s, u"PlaybackStatus"_s, u"Shuffle"_s, u"Volume"_s}));
    QCOMPARE(change.value(u"LoopStatus"_s).toString(), u"Playlist"_s);
    QCOMPARE(change.value(u"Shuffle"_s).toBool(), true);
    QCOMPARE(change.value(u"Volume"_s).toDouble(), 0.25);
    QCOMPARE(change.value(u"PlaybackStatus"_s).toString(), u"Paused"_s);
    QCOMPARE(change.value(u"Metadata"_s).toMap(), client().metadata());
}

void TestMprisNowPlaying::onlyWhatChangedIsAnnounced()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.playbackRate = 0;
    m_bench->tell(info);
    QCOMPARE(client().takeChanges(), QList{QVariantMap({{u"PlaybackStatus"_s, u"Paused"_s}})});
    PlaybackControls controls = MprisBench::everything();
    controls.canGoNext = false;
    m_bench->tell(controls);
    QCOMPARE(client().takeChanges(), QList{QVariantMap({{u"CanGoNext"_s, false}})});
    controls.canPlay = false;
    m_bench->tell(controls);
    QCOMPARE(client().takeChanges(), QList{QVariantMap({{u"CanPlay"_s, false}, {u"CanPause"_s, false}})});
    info.title = u"雨天"_s;
    m_bench->tell(info);
    const QList<QVariantMap> changes = client().takeChanges();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.constFirst().keys(), QStringList{u"Metadata"_s});
}

void TestMprisNowPlaying::ticksAnnounceNothing()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    for (int tick = 1; tick <= 40; ++tick) {
        m_bench->clock().advance(250ms);
        info.elapsedPlaybackTime = tick * 0.25;
        m_bench->tell(info);
        m_bench->tell(MprisBench::everything());
    }
    QCOMPARE(client().takeChanges(), QList<QVariantMap>());
    QCOMPARE(client().takeJumps(), QList<qlonglong>());
    QCOMPARE(client().get(u"Position"_s).toLongLong(), 10'000'000);
}

void TestMprisNowPlaying::whatComesBackWithinATurnIsNotAnnounced()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.playbackRate = 0;
    m_bench->tell(info);
    m_bench->tell(MprisBench::song());
    QCOMPARE(client().takeChanges(), QList<QVariantMap>());
}

void TestMprisNowPlaying::thePositionRunsOn()
{
    QVERIFY(m_bench->begin());
    m_bench->clock().advance(1500ms);
    QCOMPARE(client().get(u"Position"_s).toLongLong(), 1'500'000);
    // Ticks tell nobody, but are heard of by who asks.
    NowPlayingInfo later = MprisBench::song();
    later.elapsedPlaybackTime = 1.5;
    m_bench->tell(later);
    m_bench->clock().advance(500ms);
    QCOMPARE(client().get(u"Position"_s).toLongLong(), 2'000'000);
    QCOMPARE(client().takeChanges(), QList<QVariantMap>());
}

void TestMprisNowPlaying::jumpsAreAnnouncedAfterTheirSong()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.elapsedPlaybackTime = 60;
    m_bench->tell(info);
    QCOMPARE(client().takeJumps(), QList<qlonglong>{60'000'000});
    QCOMPARE(client().takeChanges(), QList<QVariantMap>());
    // Two in one turn are one: nobody saw the first.
    info.elapsedPlaybackTime = 90;
    m_bench->tell(info);
    info.elapsedPlaybackTime = 30;
    m_bench->tell(info);
    QCOMPARE(client().takeJumps(), QList<qlonglong>{30'000'000});
    info = MprisBench::song(u"brought back"_s);
    info.elapsedPlaybackTime = 42;
    m_bench->tell(info);
    QCOMPARE(client().takeChanges().size(), 1);
    QCOMPARE(client().takeJumps(), QList<qlonglong>{42'000'000});
    m_bench->tell(MprisBench::song(u"from the start"_s));
    QCOMPARE(client().takeChanges().size(), 1);
    QCOMPARE(client().takeJumps(), QList<qlonglong>());
}

void TestMprisNowPlaying::ticksAreNoJumps()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    for (int tick = 1; tick <= 4; ++tick) {
        m_bench->clock().advance(250ms);
        info.elapsedPlaybackTime = tick * 0.25;
        m_bench->tell(info);
        QCOMPARE(client().takeJumps(), QList<qlonglong>());
    }
}

void TestMprisNowPlaying::aPlaceThatTheDesktopAskedForIsAnnounced()
{
    QVERIFY(m_bench->begin());
    QCOMPARE(client().play(u"Seek"_s, {200'000LL}), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList{u"position 0.2"_s});
    QCOMPARE(client().takeJumps(), QList<qlonglong>()); // it is not there yet
    NowPlayingInfo info = MprisBench::song();
    info.elapsedPlaybackTime = 0.2;
    m_bench->tell(info);
    QCOMPARE(client().takeJumps(), QList<qlonglong>{200'000});
}

void TestMprisNowPlaying::theCoverIsAnnouncedWhenItsFileStands()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.artwork = picture(Qt::red);
    m_bench->tell(info);
    QTRY_VERIFY(client().metadata().contains(u"mpris:artUrl"_s));
    const QList<QVariantMap> changes = client().takeChanges();
    QCOMPARE(changes.size(), 1);
    const QString address =
        changes.constFirst().value(u"Metadata"_s).toMap().value(u"mpris:artUrl"_s).toString();
    const QUrl url(address);
    QVERIFY2(url.isLocalFile(), qPrintable(address));
    QVERIFY(url.toLocalFile().startsWith(m_bench->caches() + u"/NowPlaying/"_s));
    const QImage shown(url.toLocalFile());
    QCOMPARE(shown.size(), QSize(32, 32));
    QVERIFY(shown.pixelColor(16, 16).red() > 240);
    // The cover goes, as it does when the player publishes anew without one.
    info.artwork.reset();
    m_bench->tell(info);
    QVERIFY(!client().metadata().contains(u"mpris:artUrl"_s));
    QCOMPARE(client().takeChanges().size(), 1);
}

void TestMprisNowPlaying::theCoverOfTheSongBeforeIsNotShown()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.artwork = picture(Qt::red);
    m_bench->tell(info);
    QTRY_VERIFY(client().metadata().contains(u"mpris:artUrl"_s));
    const QString first = client().metadata().value(u"mpris:artUrl"_s).toString();
    client().takeChanges();
    NowPlayingInfo next = MprisBench::song(u"next"_s);
    next.artwork = picture(Qt::blue);
    m_bench->tell(next);
    QTRY_VERIFY(client().metadata().contains(u"mpris:artUrl"_s));
    for (const QVariantMap &change : client().takeChanges())
        QVERIFY(change.value(u"Metadata"_s).toMap().value(u"mpris:artUrl"_s).toString() != first);
    const QUrl url(client().metadata().value(u"mpris:artUrl"_s).toString());
    QVERIFY(QImage(url.toLocalFile()).pixelColor(16, 16).blue() > 240);
}

void TestMprisNowPlaying::anAlbumKeepsItsCover()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.artwork = picture(Qt::green);
    m_bench->tell(info);
    QTRY_VERIFY(client().metadata().contains(u"mpris:artUrl"_s));
    const QVariant address = client().metadata().value(u"mpris:artUrl"_s);
    client().takeChanges();
    NowPlayingInfo next = MprisBench::song(u"next"_s);
    next.artwork = info.artwork;
    m_bench->tell(next);
    const QList<QVariantMap> changes = client().takeChanges();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.constFirst().value(u"Metadata"_s).toMap().value(u"mpris:artUrl"_s), address);
}

void TestMprisNowPlaying::textThatWouldCutTheConnectionIsMended_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    const QChar high(0xd83d);
    const QChar low(0xde00);
    QTest::newRow("half a character") << QString(u"a"_s + high + u"b"_s) << u"a\ufffdb"_s;
    QTest::newRow("the other half") << QString(u"a"_s + low + u"b"_s) << u"a\ufffdb"_s;
    QTest::newRow("halves in the wrong order") << QString(u"a"_s + low + high) << u"a\ufffd\ufffd"_s;
    QTest::newRow("half at the end") << QString(u"a"_s + high) << u"a\ufffd"_s;
    QTest::newRow("a whole one") << u"a😀b"_s << u"a😀b"_s;
    QTest::newRow("a null character") << QString(u"a"_s + QChar(u'\0') + u"b"_s) << u"a b"_s;
    QTest::newRow("line breaks") << u"a\r\nb\u2028c"_s << u"a  b c"_s;
    QTest::newRow("no character") << QString(u"a"_s + QChar(0xffff)) << QString(u"a"_s + QChar(0xffff));
}

void TestMprisNowPlaying::textThatWouldCutTheConnectionIsMended()
{
    QFETCH(QString, text);
    QFETCH(QString, told);
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.title = info.artist = info.albumTitle = text;
    m_bench->tell(info);
    QCOMPARE(client().takeChanges().size(), 1);
    const QVariantMap metadata = client().metadata();
    QCOMPARE(metadata.value(u"xesam:title"_s).toString(), told);
    QCOMPARE(metadata.value(u"xesam:artist"_s).toStringList(), QStringList{told});
    QCOMPARE(metadata.value(u"xesam:album"_s).toString(), told);
    QVERIFY(m_bench->bus().hasService(MprisBus::busName));
}

void TestMprisNowPlaying::anEndlessTitleIsCut()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.title = QString(1 << 20, u'歌');
    m_bench->tell(info);
    const QString title = client().metadata().value(u"xesam:title"_s).toString();
    QVERIFY(title.size() >= 100 && title.size() <= 1000);
    QVERIFY(info.title.startsWith(title));
}

void TestMprisNowPlaying::noTimerRuns()
{
    QVERIFY(m_bench->begin());
    NowPlayingInfo info = MprisBench::song();
    info.artwork = picture(Qt::red);
    m_bench->tell(info);
    QTRY_VERIFY(client().metadata().contains(u"mpris:artUrl"_s));
    QCOMPARE(m_bench->clock().activeTimers(), 0);
    QVERIFY(m_bench->player().findChildren<QTimer *>().isEmpty());
}

QTEST_GUILESS_MAIN(TestMprisNowPlaying)
#include "tst_mpris_now_playing.moc"
