// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/CorkWatch.h"
#include "Platform/Pulse/SoundSceneReader.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

using Change = CorkWatch::Change;

constexpr std::uint32_t music = 1;
constexpr std::uint32_t call = 2;

/// A server that makes way for calls, with our music on sink 0.
SoundScene quiet()
{
    SoundScene scene;
    scene.triggerRoles = {"phone"_ba};
    scene.sinks = {{.index = 0}, {.index = 1}};
    scene.streams = {{.index = music, .sink = 0, .role = "music"_ba, .isOurs = true}};
    return scene;
}

SoundStream ringing(std::uint32_t sink = 0)
{
    return {.index = call, .sink = sink, .role = "phone"_ba};
}

/// The same during a call, after the server has muted us.
SoundScene inCall()
{
    SoundScene scene = quiet();
    scene.streams[0].isMuted = true;
    scene.streams.append(ringing());
    return scene;
}

} // namespace

/// What counts as the server's wish for silence, and what as the listener's.
class TestCorkWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_call_interrupts_and_its_end_asks_to_go_on();
    void the_same_scene_again_changes_nothing();
    void the_listeners_mute_is_no_interruption();
    void the_listeners_mute_beside_a_call_that_left_us_alone_is_none();
    void a_stream_that_was_muted_already_is_not_interrupted();
    void a_call_on_another_sink_is_none_unless_the_server_says_so();
    void a_server_without_the_module_never_interrupts();
    void a_stream_that_starts_during_a_call_is_interrupted();
    void a_stream_that_is_moved_to_a_call_is_interrupted();
    void a_call_that_moves_away_ends_it();
    void unmuting_by_hand_during_the_call_ends_nothing();
    void a_call_that_ends_while_we_stay_muted_asks_for_nothing();
    void a_stream_of_ours_that_vanishes_asks_for_nothing();
    void a_server_that_goes_away_asks_for_nothing();
    void a_silent_call_does_not_count_data();
    void a_silent_call_does_not_count();
    void two_calls_are_one_interruption();
    void a_second_interruption_is_told_like_the_first();
    void our_own_sounds_interrupt_nobody();
    void streams_of_others_are_none_of_ours();
    void triggers_are_what_the_module_says_data();
    void triggers_are_what_the_module_says();
};

void TestCorkWatch::a_call_interrupts_and_its_end_asks_to_go_on()
{
    CorkWatch watch;
    QCOMPARE(watch.update(quiet()), Change::none);
    QCOMPARE(watch.update(inCall()), Change::began);
    SoundScene paused = inCall();
    paused.streams[0].isCorked = true;
    QCOMPARE(watch.update(paused), Change::none);
    SoundScene after = quiet();
    after.streams[0].isCorked = true;
    QCOMPARE(watch.update(after), Change::endedToResume);
}

void TestCorkWatch::the_same_scene_again_changes_nothing()
{
    CorkWatch watch;
    QCOMPARE(watch.update(quiet()), Change::none);
    QCOMPARE(watch.update(quiet()), Change::none);
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(inCall()), Change::none);
    QCOMPARE(watch.update(quiet()), Change::endedToResume);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::the_listeners_mute_is_no_interruption()
{
    CorkWatch watch;
    watch.update(quiet());
    SoundScene muted = quiet();
    muted.streams[0].isMuted = true;
    QCOMPARE(watch.update(muted), Change::none);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::the_listeners_mute_beside_a_call_that_left_us_alone_is_none()
{
    CorkWatch watch;
    SoundScene leftAlone = inCall();
    leftAlone.streams[0].isMuted = false;
    QCOMPARE(watch.update(leftAlone), Change::none);
    QCOMPARE(watch.update(inCall()), Change::none);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::a_stream_that_was_muted_already_is_not_interrupted()
{
    CorkWatch watch;
    SoundScene muted = quiet();
    muted.streams[0].isMuted = true;
    QCOMPARE(watch.update(muted), Change::none);
    QCOMPARE(watch.update(inCall()), Change::none);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::a_call_on_another_sink_is_none_unless_the_server_says_so()
{
    SoundScene elsewhere = inCall();
    elsewhere.streams[1] = ringing(1);
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(elsewhere), Change::none);

    SoundScene before = quiet();
    before.triggersReachAllSinks = elsewhere.triggersReachAllSinks = true;
    CorkWatch everywhere;
    everywhere.update(before);
    QCOMPARE(everywhere.update(elsewhere), Change::began);
    QCOMPARE(everywhere.update(before), Change::endedToResume);
}

void TestCorkWatch::a_server_without_the_module_never_interrupts()
{
    SoundScene before = quiet();
    SoundScene after = inCall();
    before.triggerRoles.clear();
    after.triggerRoles.clear();
    CorkWatch watch;
    watch.update(before);
    QCOMPARE(watch.update(after), Change::none);
}

void TestCorkWatch::a_stream_that_starts_during_a_call_is_interrupted()
{
    SoundScene before = inCall();
    before.streams.removeFirst();
    CorkWatch watch;
    QCOMPARE(watch.update(before), Change::none);
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(quiet()), Change::endedToResume);
}

void TestCorkWatch::a_stream_that_is_moved_to_a_call_is_interrupted()
{
    SoundScene before = quiet();
    before.streams.append(ringing(1));
    SoundScene after = inCall();
    after.streams[0].sink = after.streams[1].sink = 1;
    CorkWatch watch;
    QCOMPARE(watch.update(before), Change::none);
    QCOMPARE(watch.update(after), Change::began);
}

void TestCorkWatch::a_call_that_moves_away_ends_it()
{
    SoundScene after = quiet();
    after.streams.append(ringing(1));
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(after), Change::endedToResume);
}

void TestCorkWatch::unmuting_by_hand_during_the_call_ends_nothing()
{
    SoundScene unmuted = inCall();
    unmuted.streams[0].isMuted = false;
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(unmuted), Change::none);
    QCOMPARE(watch.update(quiet()), Change::endedToResume);
}

void TestCorkWatch::a_call_that_ends_while_we_stay_muted_asks_for_nothing()
{
    SoundScene muted = quiet();
    muted.streams[0].isMuted = true;
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(muted), Change::endedForSilence);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::a_stream_of_ours_that_vanishes_asks_for_nothing()
{
    SoundScene without = inCall();
    without.streams.removeFirst();
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(without), Change::endedForSilence);
    QCOMPARE(watch.update(quiet()), Change::none);
}

void TestCorkWatch::a_server_that_goes_away_asks_for_nothing()
{
    CorkWatch watch;
    QCOMPARE(watch.lose(), Change::none);
    watch.update(quiet());
    QCOMPARE(watch.lose(), Change::none);
    watch.update(inCall());
    QCOMPARE(watch.lose(), Change::endedForSilence);
    QCOMPARE(watch.lose(), Change::none);
}

void TestCorkWatch::a_silent_call_does_not_count_data()
{
    QTest::addColumn<bool>("isCorked");
    QTest::newRow("on hold") << true;
    QTest::newRow("muted") << false;
}

void TestCorkWatch::a_silent_call_does_not_count()
{
    QFETCH(bool, isCorked);
    CorkWatch watch;
    SoundScene silent = quiet();
    silent.streams.append(ringing());
    silent.streams[1].isCorked = isCorked;
    silent.streams[1].isMuted = !isCorked;
    QCOMPARE(watch.update(silent), Change::none);
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(silent), Change::endedToResume);
}

void TestCorkWatch::two_calls_are_one_interruption()
{
    SoundScene both = inCall();
    both.streams.append(ringing());
    both.streams[2].index = 3;
    SoundScene second = both;
    second.streams.remove(1);
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(inCall()), Change::began);
    QCOMPARE(watch.update(both), Change::none);
    QCOMPARE(watch.update(second), Change::none);
    QCOMPARE(watch.update(quiet()), Change::endedToResume);
}

void TestCorkWatch::a_second_interruption_is_told_like_the_first()
{
    CorkWatch watch;
    watch.update(quiet());
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(watch.update(inCall()), Change::began);
        QCOMPARE(watch.update(quiet()), Change::endedToResume);
    }
}

void TestCorkWatch::our_own_sounds_interrupt_nobody()
{
    SoundScene scene = inCall();
    scene.streams[1].isOurs = true;
    CorkWatch watch;
    watch.update(quiet());
    QCOMPARE(watch.update(scene), Change::none);
}

void TestCorkWatch::streams_of_others_are_none_of_ours()
{
    SoundScene before = quiet();
    SoundScene after = inCall();
    before.streams[0].isOurs = after.streams[0].isOurs = false;
    CorkWatch watch;
    watch.update(before);
    QCOMPARE(watch.update(after), Change::none);
    QCOMPARE(watch.update(before), Change::none);
}

void TestCorkWatch::triggers_are_what_the_module_says_data()
{
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QSet<QByteArray>>("roles");
    QTest::addColumn<bool>("everywhere");
    const QSet phone{"phone"_ba};
    const QSet both{"phone"_ba, "event"_ba};
    const QByteArray module = "module-role-cork"_ba;
    const QSet<QByteArray> none;
    QTest::newRow("another module") << "module-role-ducking"_ba << QByteArray() << none << false;
    QTest::newRow("no argument") << module << QByteArray() << phone << false;
    QTest::newRow("other arguments") << module << "cork_roles=music,video"_ba << phone << false;
    QTest::newRow("roles") << module << "trigger_roles=phone,event cork_roles=music"_ba << both << false;
    QTest::newRow("groups") << module << "trigger_roles=phone/no_role"_ba << QSet{"phone"_ba, "no_role"_ba}
                            << false;
    QTest::newRow("double quotes") << module << "cork_roles=\"music\" trigger_roles=\"a b,phone\""_ba
                                   << QSet{"a b"_ba, "phone"_ba} << false;
    QTest::newRow("single quotes") << module << "trigger_roles='phone' global=yes"_ba << phone << true;
    QTest::newRow("everywhere") << module << "global=1"_ba << phone << true;
    QTest::newRow("not everywhere") << module << "global=0"_ba << phone << false;
}

void TestCorkWatch::triggers_are_what_the_module_says()
{
    QFETCH(QByteArray, module);
    QFETCH(QByteArray, argument);
    SoundScene scene;
    SoundSceneReader::addTriggers(scene, module, argument);
    QTEST(scene.triggerRoles, "roles");
    QTEST(scene.triggersReachAllSinks, "everywhere");
}

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestCorkWatch)
#include "tst_cork_watch.moc"
