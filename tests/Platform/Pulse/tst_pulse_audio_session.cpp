// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Machine/FakeLogind.h"
#include "Platform/Pulse/MediaRole.h"
#include "SessionBench.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace cadorel {

/// What a real server does to the stream of the real stream player, as the session tells it.
class TestPulseAudioSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_bench.reset(); }

    void a_call_interrupts_and_its_end_lets_the_music_go_on();
    void a_paused_player_is_asked_to_go_on_too();
    void a_call_with_other_manners_of_the_server();
    void the_listeners_mute_is_no_interruption();
    void a_call_on_another_device_is_none();
    void what_another_player_is_asked_is_none();
    void a_song_that_begins_in_a_call_is_interrupted();
    void a_server_that_dies_in_a_call_asks_for_nothing();
    void a_call_around_a_sleep_asks_for_nothing_data();
    void a_call_around_a_sleep_asks_for_nothing();
    void a_device_that_goes_is_told();
    void the_last_device_that_goes_is_told();
    void the_listener_moves_the_sound();
    void a_device_that_comes_is_told();
    void a_server_that_comes_later_is_watched();
    void a_server_that_comes_again_is_watched();
    void ends_at_any_time();

private:
    QByteArray cork(const QStringList &arguments = {}) const
    {
        return m_bench->server.ask(QStringList{u"load-module"_s, u"module-role-cork"_s} + arguments);
    }
    static void end(std::unique_ptr<QProcess> &process);

    SoundFiles m_files;
    QString m_song;
    std::optional<SessionBench> m_bench;
};

void TestPulseAudioSession::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
    declareMusic();
    m_song = m_files.make(u"song.flac"_s, {{440, 60}});
    QVERIFY(!m_song.isEmpty());
}

void TestPulseAudioSession::init()
{
    m_bench.emplace(m_song);
}

void TestPulseAudioSession::end(std::unique_ptr<QProcess> &process)
{
    process->kill();
    process->waitForFinished();
    process.reset();
}

void TestPulseAudioSession::a_call_interrupts_and_its_end_lets_the_music_go_on()
{
    QVERIFY(m_bench->start());
    QVERIFY(!cork().isEmpty());
    for (int i = 0; i < 2; ++i) {
        auto call = m_bench->server.other(u"phone"_s);
        QVERIFY(m_bench->waitFor(u"began"_s));
        QVERIFY(m_bench->catchUp());
        QCOMPARE(m_bench->told, QStringList());
        end(call);
        QVERIFY(m_bench->waitFor(u"ended, resume"_s));
        QVERIFY(m_bench->catchUp());
        QCOMPARE(m_bench->told, QStringList());
    }
}

void TestPulseAudioSession::a_paused_player_is_asked_to_go_on_too()
{
    QVERIFY(m_bench->start());
    QVERIFY(!cork().isEmpty());
    auto call = m_bench->server.other(u"phone"_s);
    QVERIFY(m_bench->waitFor(u"began"_s));
    m_bench->player.pause();
    QTRY_VERIFY(m_bench->server.streams().contains("Corked: yes"));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    end(call);
    QVERIFY(m_bench->waitFor(u"ended, resume"_s));
}

void TestPulseAudioSession::a_call_with_other_manners_of_the_server()
{
    QVERIFY(m_bench->start());
    const QByteArray module = cork({u"trigger_roles=alarm"_s, u"cork_roles=music"_s});
    QVERIFY(!module.isEmpty());
    auto call = m_bench->server.other(u"phone"_s);
    QTRY_VERIFY(m_bench->server.streams().contains("\"phone\""));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    auto alarm = m_bench->server.other(u"alarm"_s);
    QVERIFY(m_bench->waitFor(u"began"_s));
    // Without the module nobody asks for silence any more.
    QVERIFY(m_bench->server.unload(module));
    QVERIFY(m_bench->waitFor(u"ended, resume"_s));
    end(alarm);
    end(call);
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
}

void TestPulseAudioSession::the_listeners_mute_is_no_interruption()
{
    QVERIFY(m_bench->start());
    QVERIFY(!cork().isEmpty());
    for (const QString &mute : {u"1"_s, u"0"_s, u"1"_s, u"0"_s}) {
        QVERIFY(!m_bench->server.ask({u"set-sink-input-mute"_s, m_bench->stream(), mute}).isNull());
        QVERIFY(m_bench->catchUp());
    }
    QCOMPARE(m_bench->told, QStringList());
}

void TestPulseAudioSession::a_call_on_another_device_is_none()
{
    QVERIFY(m_bench->start());
    QVERIFY(!cork().isEmpty());
    QVERIFY(!m_bench->server.plugIn(u"headset"_s).isEmpty());
    QVERIFY(m_bench->waitFor(u"newDeviceAvailable"_s));
    // The music may have followed the default; it is sent back.
    QVERIFY(!m_bench->server.ask({u"move-sink-input"_s, m_bench->stream(), u"out"_s}).isNull());
    QVERIFY(m_bench->catchUp());
    m_bench->told.clear();
    auto call = m_bench->server.other(u"phone"_s);
    QTRY_VERIFY(m_bench->server.streams().contains("\"phone\""));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    end(call);
}

void TestPulseAudioSession::what_another_player_is_asked_is_none()
{
    QVERIFY(m_bench->server.start());
    QVERIFY(!cork({u"cork_roles=video"_s}).isEmpty());
    QVERIFY(m_bench->play());
    auto film = m_bench->server.other(u"video"_s);
    QTRY_VERIFY(m_bench->server.streams().contains("\"video\""));
    auto call = m_bench->server.other(u"phone"_s);
    QTRY_VERIFY(m_bench->server.streams().contains("Mute: yes"));
    QVERIFY(m_bench->catchUp());
    end(call);
    QTRY_VERIFY(!m_bench->server.streams().contains("Mute: yes"));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    end(film);
}

void TestPulseAudioSession::a_song_that_begins_in_a_call_is_interrupted()
{
    QVERIFY(m_bench->server.start());
    QVERIFY(!cork().isEmpty());
    auto call = m_bench->server.other(u"phone"_s);
    QTRY_VERIFY(m_bench->server.streams().contains("\"phone\""));
    QVERIFY(m_bench->play());
    QVERIFY(m_bench->waitFor(u"began"_s));
    end(call);
    QVERIFY(m_bench->waitFor(u"ended, resume"_s));
}

void TestPulseAudioSession::a_server_that_dies_in_a_call_asks_for_nothing()
{
    QVERIFY(m_bench->start());
    QVERIFY(!cork().isEmpty());
    auto call = m_bench->server.other(u"phone"_s);
    QVERIFY(m_bench->waitFor(u"began"_s));
    m_bench->server.stop();
    QVERIFY(m_bench->waitFor(u"ended"_s));
    QCOMPARE(m_bench->told, QStringList());
    end(call);
}

void TestPulseAudioSession::a_call_around_a_sleep_asks_for_nothing_data()
{
    QTest::addColumn<bool>("isCallFirst");
    QTest::newRow("the call comes first") << true;
    QTest::newRow("the sleep comes first") << false;
}

void TestPulseAudioSession::a_call_around_a_sleep_asks_for_nothing()
{
    QFETCH(bool, isCallFirst);
    FakeLogind logind;
    QVERIFY(logind.appear());
    m_bench.emplace(m_song, logind.client());
    QVERIFY(m_bench->start());
    QVERIFY(QTest::qWaitFor([&logind] { return logind.isHeldUp(); }, soundPatienceMs));
    QVERIFY(!cork().isEmpty());
    if (!isCallFirst) {
        logind.prepareForSleep(true);
        QVERIFY(m_bench->waitFor(u"began"_s));
    }
    auto call = m_bench->server.other(u"phone"_s);
    if (isCallFirst) {
        QVERIFY(m_bench->waitFor(u"began"_s));
        // Whatever plays in spite of the call stops for the sleep.
        logind.prepareForSleep(true);
        QVERIFY(m_bench->waitFor(u"began"_s));
    }
    // Nothing is told of a call that comes into the sleep: it has to be there before the sleep ends.
    QVERIFY(
        QTest::qWaitFor([this] { return m_bench->server.streams().contains("\"phone\""); }, soundPatienceMs));
    QVERIFY(m_bench->catchUp());
    logind.prepareForSleep(false);
    QVERIFY(QTest::qWaitFor([&logind] { return logind.isHeldUp(); }, soundPatienceMs));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList()); // the call goes on
    end(call);
    QVERIFY(m_bench->waitFor(u"ended"_s));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    m_bench.reset(); // before its bus
}

void TestPulseAudioSession::a_device_that_goes_is_told()
{
    QVERIFY(m_bench->server.start());
    const QByteArray headphones = m_bench->server.plugIn(u"headphones"_s);
    QVERIFY(m_bench->play());
    QVERIFY(m_bench->server.unload(headphones));
    QVERIFY(m_bench->waitFor(u"oldDeviceUnavailable"_s));
    // The server has sent the sound to the other device, where it must not go on.
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
    QVERIFY(!m_bench->stream().isEmpty());
}

void TestPulseAudioSession::the_last_device_that_goes_is_told()
{
    QVERIFY(m_bench->start());
    const QByteArray modules = m_bench->server.ask({u"list"_s, u"short"_s, u"modules"_s});
    QVERIFY(modules.startsWith("0\tmodule-null-sink"));
    QVERIFY(m_bench->server.unload("0"_ba));
    QVERIFY(m_bench->waitFor(u"oldDeviceUnavailable"_s));
}

void TestPulseAudioSession::the_listener_moves_the_sound()
{
    QVERIFY(m_bench->server.start());
    const QByteArray headphones = m_bench->server.plugIn(u"headphones"_s);
    QVERIFY(m_bench->play());
    QVERIFY(!m_bench->server.ask({u"move-sink-input"_s, m_bench->stream(), u"out"_s}).isNull());
    QVERIFY(m_bench->waitFor(u"override"_s));
    QVERIFY(m_bench->server.unload(headphones));
    QVERIFY(m_bench->catchUp());
    QCOMPARE(m_bench->told, QStringList());
}

void TestPulseAudioSession::a_device_that_comes_is_told()
{
    QVERIFY(m_bench->start());
    QVERIFY(!m_bench->server.ask({u"load-module"_s, u"module-null-sink"_s}).isEmpty());
    QVERIFY(m_bench->waitFor(u"newDeviceAvailable"_s));
}

void TestPulseAudioSession::a_server_that_comes_later_is_watched()
{
    m_bench->session.activate();
    QVERIFY(m_bench->server.start());
    QVERIFY(m_bench->isWatching());
    QVERIFY(m_bench->play());
    QVERIFY(!cork().isEmpty());
    auto call = m_bench->server.other(u"phone"_s);
    QVERIFY(m_bench->waitFor(u"began"_s));
    end(call);
}

void TestPulseAudioSession::a_server_that_comes_again_is_watched()
{
    QVERIFY(m_bench->start());
    m_bench->server.stop();
    QVERIFY(m_bench->server.start());
    QVERIFY(m_bench->isWatching());
    const QByteArray headphones = m_bench->server.plugIn(u"headphones"_s);
    QVERIFY(m_bench->play());
    m_bench->told.clear();
    QVERIFY(m_bench->server.unload(headphones));
    QVERIFY(m_bench->waitFor(u"oldDeviceUnavailable"_s));
}

void TestPulseAudioSession::ends_at_any_time()
{
    const QDBusConnection noBus(u"no bus"_s);
    for (int i = 0; i < 10; ++i) {
        PulseAudioSession session(noBus);
        session.activate();
        QCoreApplication::processEvents();
    }
    QVERIFY(m_bench->server.start());
    for (int i = 0; i < 30; ++i) {
        PulseAudioSession session(noBus);
        session.activate();
        for (int turn = 0; turn < i; ++turn)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    QVERIFY(m_bench->play());
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPulseAudioSession)
#include "tst_pulse_audio_session.moc"
