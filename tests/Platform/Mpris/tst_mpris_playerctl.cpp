// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A program that others wrote drives the player, as a listener's key bindings do.
class TestMprisPlayerctl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QVERIFY(m_bench->begin()); }
    void cleanupTestCase() { m_bench.reset(); }

    void itIsListed();
    void eachCommandArrives_data();
    void eachCommandArrives();
    void itShowsWhatPlays();
    void itFollowsChanges();
    void openingIsRefused();

private:
    struct Outcome
    {
        int code = -1;
        QString text;
    };
    Outcome run(const QStringList &arguments);
    QString ask(const QStringList &arguments) { return run(arguments).text; }

    std::unique_ptr<MprisBench> m_bench;
};

void TestMprisPlayerctl::initTestCase()
{
    QVERIFY2(!QStandardPaths::findExecutable(u"playerctl"_s).isEmpty(),
             "no playerctl: scripts/setup installs it");
    m_bench = std::make_unique<MprisBench>();
    QVERIFY(m_bench->isReady());
}

TestMprisPlayerctl::Outcome TestMprisPlayerctl::run(const QStringList &arguments)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bench->bus().address());
    tool.setProcessEnvironment(environment);
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(u"playerctl"_s, QStringList{u"--player=cadorel"_s} + arguments);
    // The player answers it from this thread.
    const bool ended = QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }, 20'000);
    if (!ended)
        return {};
    return {.code = tool.exitCode(), .text = QString::fromUtf8(tool.readAll()).trimmed()};
}

void TestMprisPlayerctl::itIsListed()
{
    QCOMPARE(ask({u"--list-all"_s}), u"cadorel"_s);
}

void TestMprisPlayerctl::eachCommandArrives_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("command");
    QTest::newRow("play") << QStringList{u"play"_s} << u"play"_s;
    QTest::newRow("pause") << QStringList{u"pause"_s} << u"pause"_s;
    QTest::newRow("play-pause") << QStringList{u"play-pause"_s} << u"toggle"_s;
    QTest::newRow("stop") << QStringList{u"stop"_s} << u"stop"_s;
    QTest::newRow("next") << QStringList{u"next"_s} << u"next"_s;
    QTest::newRow("previous") << QStringList{u"previous"_s} << u"previous"_s;
    QTest::newRow("position") << QStringList{u"position"_s, u"30"_s} << u"position 30"_s;
    QTest::newRow("position +") << QStringList{u"position"_s, u"10+"_s} << u"position 70"_s;
    QTest::newRow("position -") << QStringList{u"position"_s, u"10-"_s} << u"position 50"_s;
    QTest::newRow("volume") << QStringList{u"volume"_s, u"0.75"_s} << u"volume 0.75"_s;
    QTest::newRow("volume +") << QStringList{u"volume"_s, u"0.25+"_s} << u"volume 0.75"_s;
    QTest::newRow("volume -") << QStringList{u"volume"_s, u"0.25-"_s} << u"volume 0.25"_s;
    QTest::newRow("loop track") << QStringList{u"loop"_s, u"Track"_s} << u"mode repeatOne"_s;
    QTest::newRow("loop playlist") << QStringList{u"loop"_s, u"Playlist"_s} << u"mode repeatAll"_s;
    QTest::newRow("shuffle") << QStringList{u"shuffle"_s, u"On"_s} << u"mode shuffle"_s;
    QTest::newRow("shuffle toggled") << QStringList{u"shuffle"_s, u"Toggle"_s} << u"mode shuffle"_s;
}

void TestMprisPlayerctl::eachCommandArrives()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, command);
    NowPlayingInfo info = MprisBench::song();
    info.elapsedPlaybackTime = 60;
    m_bench->tell(info);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.text, QString());
    QCOMPARE(outcome.code, 0);
    QTRY_COMPARE(m_bench->commands(), QStringList{command});
}

void TestMprisPlayerctl::itShowsWhatPlays()
{
    NowPlayingInfo info = MprisBench::song();
    info.title = u"晴天 & <雨天> 🎵"_s;
    info.elapsedPlaybackTime = 61;
    QImage cover(16, 16, QImage::Format_RGB32);
    cover.fill(Qt::red);
    info.artwork = cover;
    m_bench->tell(info);
    PlaybackControls controls = MprisBench::everything();
    controls.playMode = PlayMode::repeatAll;
    m_bench->tell(controls);
    QTRY_VERIFY(m_bench->client().metadata().contains(u"mpris:artUrl"_s));
    QCOMPARE(ask({u"status"_s}), u"Playing"_s);
    QCOMPARE(ask({u"metadata"_s, u"xesam:title"_s}), info.title);
    QCOMPARE(ask({u"metadata"_s, u"artist"_s}), u"阿箬"_s);
    QCOMPARE(ask({u"metadata"_s, u"album"_s}), u"第一张"_s);
    QCOMPARE(ask({u"metadata"_s, u"mpris:length"_s}), u"200000000"_s);
    QVERIFY(QFile::exists(QUrl(ask({u"metadata"_s, u"mpris:artUrl"_s})).toLocalFile()));
    QCOMPARE(qRound(ask({u"position"_s}).toDouble()), 61); // playerctl runs a clock of its own
    QCOMPARE(ask({u"volume"_s}).toDouble(), 0.5);
    QCOMPARE(ask({u"loop"_s}), u"Playlist"_s);
    QCOMPARE(ask({u"shuffle"_s}), u"Off"_s);
    QCOMPARE(ask({u"metadata"_s, u"--format"_s, u"{{playerInstance}} {{duration(position)}}"_s}),
             u"cadorel 1:01"_s);
    info.playbackRate = 0;
    m_bench->tell(info);
    QCOMPARE(ask({u"status"_s}), u"Paused"_s);
    m_bench->tell(NowPlayingInfo{});
    QCOMPARE(ask({u"status"_s}), u"Stopped"_s);
}

void TestMprisPlayerctl::itFollowsChanges()
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bench->bus().address());
    tool.setProcessEnvironment(environment);
    tool.start(u"playerctl"_s, {u"--player=cadorel"_s, u"--follow"_s, u"metadata"_s, u"--format"_s,
                                u"{{status}} {{title}} {{loop}}"_s});
    QByteArray said;
    const auto says = [&](const QString &text) {
        return QTest::qWaitFor(
            [&] {
                said += tool.readAll();
                return said.contains(text.toUtf8());
            },
            20'000);
    };
    QVERIFY(says(u"Playing 晴天 None"_s));
    NowPlayingInfo info = MprisBench::song(u"next"_s);
    info.title = u"雨天"_s;
    m_bench->tell(info);
    QVERIFY(says(u"Playing 雨天 None"_s));
    info.playbackRate = 0;
    m_bench->tell(info);
    QVERIFY(says(u"Paused 雨天 None"_s));
    PlaybackControls controls = MprisBench::everything();
    controls.playMode = PlayMode::repeatOne;
    m_bench->tell(controls);
    QVERIFY(says(u"Paused 雨天 Track"_s));
    tool.terminate();
    QVERIFY(QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }, 20'000));
}

void TestMprisPlayerctl::openingIsRefused()
{
    const Outcome outcome = run({u"open"_s, u"https://127.0.0.1/a.mp3"_s});
    QVERIFY(outcome.code != 0);
    QVERIFY2(outcome.text.contains("opens no addresses"_L1), qPrintable(outcome.text));
    QCOMPARE(m_bench->takeCommands(), QStringList());
}

QTEST_GUILESS_MAIN(TestMprisPlayerctl)
#include "tst_mpris_playerctl.moc"
