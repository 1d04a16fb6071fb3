// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"

#include <QDBusObjectPath>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What the desktop asks for, and what becomes of it.
class TestMprisCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bench = std::make_unique<MprisBench>();
        QVERIFY(m_bench->isReady());
    }
    void init() { QVERIFY(m_bench->begin()); }
    void cleanupTestCase() { m_bench.reset(); }

    void eachMethodIsACommand_data();
    void eachMethodIsACommand();
    void whatCannotBeDoneHasNoEffect_data();
    void whatCannotBeDoneHasNoEffect();
    void theWindowIsRaisedAndTheProgramEnded();
    void commandsKeepTheirOrder();
    void seekingGoesFromWhereTheSongIs();
    void seekingBeforeTheStartGoesThere();
    void seekingBeyondTheEndGoesToTheNext();
    void absurdOffsetsAreSurvived();
    void aSongWithoutALengthCanBeSought();
    void settingThePositionNeedsTheSong_data();
    void settingThePositionNeedsTheSong();
    void modesAreLoopAndShuffle_data();
    void modesAreLoopAndShuffle();
    void loopAndShuffleSetTheMode_data();
    void loopAndShuffleSetTheMode();
    void theVolumeIsClamped_data();
    void theVolumeIsClamped();
    void aRateOfNothingPauses();

private:
    MprisClient &client() { return m_bench->client(); }
    QStringList commandsOf(const QString &method, const QVariantList &arguments = {});

    std::unique_ptr<MprisBench> m_bench;
};

QStringList TestMprisCommands::commandsOf(const QString &method, const QVariantList &arguments)
{
    const QString error = client().play(method, arguments);
    return error.isEmpty() ? m_bench->takeCommands() : QStringList{error};
}

void TestMprisCommands::eachMethodIsACommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("Play") << u"play"_s;
    QTest::newRow("Pause") << u"pause"_s;
    QTest::newRow("PlayPause") << u"toggle"_s;
    QTest::newRow("Stop") << u"stop"_s;
    QTest::newRow("Next") << u"next"_s;
    QTest::newRow("Previous") << u"previous"_s;
}

void TestMprisCommands::eachMethodIsACommand()
{
    QFETCH(QString, command);
    QCOMPARE(commandsOf(QString::fromLatin1(QTest::currentDataTag())), QStringList{command});
}

void TestMprisCommands::whatCannotBeDoneHasNoEffect_data()
{
    QTest::addColumn<QVariantList>("arguments");
    const QDBusObjectPath track = client().metadata().value(u"mpris:trackid"_s).value<QDBusObjectPath>();
    QTest::newRow("Play") << QVariantList();
    QTest::newRow("Pause") << QVariantList();
    QTest::newRow("Next") << QVariantList();
    QTest::newRow("Previous") << QVariantList();
    QTest::newRow("Seek") << QVariantList{1'000'000LL};
    QTest::newRow("SetPosition") << QVariantList{QVariant::fromValue(track), 1'000'000LL};
}

void TestMprisCommands::whatCannotBeDoneHasNoEffect()
{
    QFETCH(QVariantList, arguments);
    m_bench->tell(PlaybackControls{});
    QCOMPARE(commandsOf(QString::fromLatin1(QTest::currentDataTag()), arguments), QStringList());
    // Of all only this one has to tell.
    QCOMPARE(commandsOf(u"PlayPause"_s), QStringList{u"org.freedesktop.DBus.Error.Failed"_s});
    QCOMPARE(m_bench->takeCommands(), QStringList());
    QCOMPARE(commandsOf(u"Stop"_s), QStringList{u"stop"_s});
}

void TestMprisCommands::theWindowIsRaisedAndTheProgramEnded()
{
    m_bench->tell(PlaybackControls{});
    QCOMPARE(client().call(MprisClient::rootInterface, u"Raise"_s).errorName(), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList{u"raise"_s});
    QCOMPARE(client().call(MprisClient::rootInterface, u"Quit"_s).errorName(), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList{u"quit"_s});
}

void TestMprisCommands::commandsKeepTheirOrder()
{
    QDBusConnection connection = m_bench->bus().connection(u"in a hurry"_s);
    QStringList expected;
    for (int i = 0; i < 50; ++i) {
        for (const auto &[method, command] : {std::pair{u"Next"_s, u"next"_s},
                                              {u"Pause"_s, u"pause"_s},
                                              {u"Play"_s, u"play"_s},
                                              {u"Previous"_s, u"previous"_s}}) {
            QVERIFY(connection.send(QDBusMessage::createMethodCall(
                MprisBus::busName, u"/org/mpris/MediaPlayer2"_s, MprisClient::playerInterface, method)));
            expected.append(command);
        }
    }
    QTRY_VERIFY(m_bench->commands().size() >= expected.size());
    QCOMPARE(m_bench->takeCommands(), expected);
}

void TestMprisCommands::seekingGoesFromWhereTheSongIs()
{
    NowPlayingInfo info = MprisBench::song();
    info.elapsedPlaybackTime = 100;
    m_bench->tell(info);
    QCOMPARE(commandsOf(u"Seek"_s, {5'500'000LL}), QStringList{u"position 105.5"_s});
    QCOMPARE(commandsOf(u"Seek"_s, {-20'000'000LL}), QStringList{u"position 80"_s});
    m_bench->clock().advance(2s);
    QCOMPARE(commandsOf(u"Seek"_s, {1'000'000LL}), QStringList{u"position 103"_s});
    QCOMPARE(commandsOf(u"Seek"_s, {98'000'000LL}), QStringList{u"position 200"_s}); // the end itself
}

void TestMprisCommands::seekingBeforeTheStartGoesThere()
{
    QCOMPARE(commandsOf(u"Seek"_s, {-1'000'000LL}), QStringList{u"position 0"_s});
}

void TestMprisCommands::seekingBeyondTheEndGoesToTheNext()
{
    QCOMPARE(commandsOf(u"Seek"_s, {201'000'000LL}), QStringList{u"next"_s});
    PlaybackControls last = MprisBench::everything();
    last.canGoNext = false;
    m_bench->tell(last);
    QCOMPARE(commandsOf(u"Seek"_s, {201'000'000LL}), QStringList());
}

void TestMprisCommands::absurdOffsetsAreSurvived()
{
    m_bench->clock().advance(10s);
    QCOMPARE(commandsOf(u"Seek"_s, {std::numeric_limits<qlonglong>::max()}), QStringList{u"next"_s});
    QCOMPARE(commandsOf(u"Seek"_s, {std::numeric_limits<qlonglong>::min()}), QStringList{u"position 0"_s});
}

void TestMprisCommands::aSongWithoutALengthCanBeSought()
{
    NowPlayingInfo info = MprisBench::song(u"endless"_s);
    info.playbackDuration = 0;
    m_bench->tell(info);
    QCOMPARE(commandsOf(u"Seek"_s, {500'000'000LL}), QStringList{u"position 500"_s});
}

void TestMprisCommands::settingThePositionNeedsTheSong_data()
{
    QTest::addColumn<QString>("track"); // empty: that of the song
    QTest::addColumn<qlonglong>("position");
    QTest::addColumn<QStringList>("commands");
    const QStringList none;
    QTest::newRow("a place") << QString() << 12'500'000LL << QStringList{u"position 12.5"_s};
    QTest::newRow("the start") << QString() << 0LL << QStringList{u"position 0"_s};
    QTest::newRow("the end") << QString() << 200'000'000LL << QStringList{u"position 200"_s};
    QTest::newRow("before the start") << QString() << -1LL << none;
    QTest::newRow("beyond the end") << QString() << 200'000'001LL << none;
    QTest::newRow("another song") << u"/com/cadorel/track/1"_s << 1'000'000LL << none;
    QTest::newRow("no song") << u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s << 1'000'000LL << none;
}

void TestMprisCommands::settingThePositionNeedsTheSong()
{
    QFETCH(QString, track);
    QFETCH(qlonglong, position);
    QFETCH(QStringList, commands);
    const QDBusObjectPath current = client().metadata().value(u"mpris:trackid"_s).value<QDBusObjectPath>();
    const QDBusObjectPath path = track.isEmpty() ? current : QDBusObjectPath(track);
    QCOMPARE(commandsOf(u"SetPosition"_s, {QVariant::fromValue(path), position}), commands);
    // The same once the song is over: the caller still means the old one.
    m_bench->tell(MprisBench::song(u"next song"_s));
    QCOMPARE(commandsOf(u"SetPosition"_s, {QVariant::fromValue(path), position}), QStringList());
    m_bench->tell(NowPlayingInfo{});
    QCOMPARE(commandsOf(u"SetPosition"_s, {QVariant::fromValue(path), position}), QStringList());
}

void TestMprisCommands::modesAreLoopAndShuffle_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<QString>("loop");
    QTest::addColumn<bool>("shuffle");
    QTest::newRow("sequential") << PlayMode::sequential << u"None"_s << false;
    QTest::newRow("repeatAll") << PlayMode::repeatAll << u"Playlist"_s << false;
    QTest::newRow("repeatOne") << PlayMode::repeatOne << u"Track"_s << false;
    QTest::newRow("shuffle") << PlayMode::shuffle << u"Playlist"_s << true;
}

void TestMprisCommands::modesAreLoopAndShuffle()
{
    QFETCH(PlayMode, mode);
    PlaybackControls controls = MprisBench::everything();
    controls.playMode = mode;
    m_bench->tell(controls);
    QTEST(client().get(u"LoopStatus"_s).toString(), "loop");
    QTEST(client().get(u"Shuffle"_s).toBool(), "shuffle");
}

void TestMprisCommands::loopAndShuffleSetTheMode_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("commands");
    const auto row = [](PlayMode mode, const QString &property, const QVariant &value, const QString &then) {
        const QStringList commands = then.isEmpty() ? QStringList() : QStringList{u"mode "_s + then};
        QTest::addRow("%s %s %s", qPrintable(rawValue(mode)), qPrintable(property),
                      qPrintable(value.toString()))
            << mode << property << value << commands;
    };
    const QString loop = u"LoopStatus"_s;
    const QString shuffle = u"Shuffle"_s;
    row(PlayMode::sequential, loop, u"None"_s, {});
    row(PlayMode::sequential, loop, u"Track"_s, u"repeatOne"_s);
    row(PlayMode::sequential, loop, u"Playlist"_s, u"repeatAll"_s);
    row(PlayMode::sequential, shuffle, true, u"shuffle"_s);
    row(PlayMode::sequential, shuffle, false, {});
    row(PlayMode::repeatOne, loop, u"None"_s, u"sequential"_s);
    row(PlayMode::repeatOne, loop, u"Track"_s, {});
    row(PlayMode::repeatOne, loop, u"Playlist"_s, u"repeatAll"_s);
    row(PlayMode::repeatOne, shuffle, true, u"shuffle"_s);
    row(PlayMode::repeatOne, shuffle, false, {});
    row(PlayMode::repeatAll, loop, u"None"_s, u"sequential"_s);
    row(PlayMode::repeatAll, loop, u"Track"_s, u"repeatOne"_s);
    row(PlayMode::repeatAll, loop, u"Playlist"_s, {});
    row(PlayMode::repeatAll, shuffle, true, u"shuffle"_s);
    row(PlayMode::repeatAll, shuffle, false, {});
    row(PlayMode::shuffle, loop, u"None"_s, u"sequential"_s);
    row(PlayMode::shuffle, loop, u"Track"_s, u"repeatOne"_s);
    row(PlayMode::shuffle, loop, u"Playlist"_s, {}); // it repeats all
    row(PlayMode::shuffle, shuffle, true, {});
    row(PlayMode::shuffle, shuffle, false, u"repeatAll"_s);
}

void TestMprisCommands::loopAndShuffleSetTheMode()
{
    QFETCH(PlayMode, mode);
    QFETCH(QString, property);
    QFETCH(QVariant, value);
    PlaybackControls controls = MprisBench::everything();
    controls.playMode = mode;
    m_bench->tell(controls);
    QCOMPARE(client().set(property, value), QString());
    QTEST(m_bench->takeCommands(), "commands");
}

void TestMprisCommands::theVolumeIsClamped_data()
{
    QTest::addColumn<double>("volume");
    QTest::addColumn<QString>("command");
    QTest::newRow("between") << 0.25 << u"volume 0.25"_s;
    QTest::newRow("none") << 0.0 << u"volume 0"_s;
    QTest::newRow("full") << 1.0 << u"volume 1"_s;
    QTest::newRow("below") << -3.0 << u"volume 0"_s;
    QTest::newRow("above") << 1.5 << u"volume 1"_s;
    QTest::newRow("endless") << qInf() << u"volume 1"_s;
}

void TestMprisCommands::theVolumeIsClamped()
{
    QFETCH(double, volume);
    QFETCH(QString, command);
    QCOMPARE(client().get(u"Volume"_s).toDouble(), 0.5);
    QCOMPARE(client().set(u"Volume"_s, volume), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList{command});
}

void TestMprisCommands::aRateOfNothingPauses()
{
    for (const double rate : {1.0, 2.0, 0.5, -1.0, qQNaN()})
        QCOMPARE(client().set(u"Rate"_s, rate), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList());
    QCOMPARE(client().set(u"Rate"_s, 0.0), QString());
    QCOMPARE(m_bench->takeCommands(), QStringList{u"pause"_s});
    QCOMPARE(client().get(u"Rate"_s).toDouble(), 1.0);
}

QTEST_GUILESS_MAIN(TestMprisCommands)
#include "tst_mpris_commands.moc"
