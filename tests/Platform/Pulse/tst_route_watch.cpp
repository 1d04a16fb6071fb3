// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/RouteWatch.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

using Reason = RouteWatch::Reason;
using Reasons = QList<Reason>;
using enum PortAvailability;

constexpr std::uint32_t card = 7;
constexpr std::uint32_t builtIn = 0;
constexpr std::uint32_t wireless = 1;

SoundStream ours(std::uint32_t sink, bool isCorked = false, std::uint32_t index = 1)
{
    return {.index = index, .sink = sink, .role = "music"_ba, .isOurs = true, .isCorked = isCorked};
}

QList<SoundPort> ports(PortAvailability headphones)
{
    return {{.name = "speaker"_ba}, {.name = "headphones"_ba, .availability = headphones}};
}

/// A sink with a jack and a speaker of the card, and a wireless headset with a card of its own.
SoundScene scene(const QList<SoundStream> &streams, PortAvailability headphones = available,
                 const QByteArray &port = "headphones"_ba)
{
    SoundScene made;
    made.streams = streams;
    made.sinks = {
        {.index = builtIn, .card = card, .activePort = port, .ports = ports(headphones)},
        {.index = wireless, .card = 8, .activePort = "headset"_ba, .ports = {{.name = "headset"_ba}}}};
    made.cards = {{.index = card, .ports = ports(headphones)},
                  {.index = 8, .ports = {{.name = "headset"_ba}}}};
    return made;
}

/// The wireless headset has gone, with its card.
SoundScene withoutWireless(const QList<SoundStream> &streams)
{
    SoundScene made = scene(streams);
    made.sinks.removeLast();
    made.cards.removeLast();
    return made;
}

} // namespace

/// Why the sound comes out elsewhere: records in, reasons out.
class TestRouteWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_first_scene_is_no_change();
    void a_plug_that_is_pulled_is_a_device_that_has_gone_data();
    void a_plug_that_is_pulled_is_a_device_that_has_gone();
    void a_plug_that_is_pulled_is_told_once();
    void a_plug_of_a_jack_not_in_use_is_nothing();
    void a_jack_that_cannot_tell_is_nothing();
    void a_plug_that_is_put_in_is_a_new_device();
    void choosing_the_speaker_by_hand_is_nothing();
    void a_sink_that_goes_with_its_card_has_gone();
    void a_sink_that_goes_and_takes_the_stream_along_has_gone();
    void a_sink_not_in_use_may_go();
    void a_sink_that_only_a_paused_stream_is_on_is_not_in_use();
    void the_sink_of_a_paused_player_is_in_use();
    void between_two_songs_the_last_sink_is_in_use();
    void a_stream_that_the_listener_moves_is_an_override();
    void a_new_sink_is_a_new_device();
    void a_card_set_up_anew_is_an_override();
    void a_card_set_up_anew_because_the_plug_is_pulled_has_lost_its_device();
    void a_card_switched_off_has_lost_its_device();
    void a_stream_on_its_way_is_waited_for();
    void lists_of_two_moments_are_understood();
    void streams_of_others_do_not_count();
    void after_a_lost_server_all_begins_anew();
};

void TestRouteWatch::the_first_scene_is_no_change()
{
    RouteWatch watch;
    QCOMPARE(watch.update(scene({ours(builtIn)})), Reasons());
    QCOMPARE(watch.update(scene({ours(builtIn)})), Reasons());
}

void TestRouteWatch::a_plug_that_is_pulled_is_a_device_that_has_gone_data()
{
    QTest::addColumn<QByteArray>("portAfter");
    QTest::newRow("the server has switched to the speaker") << "speaker"_ba;
    QTest::newRow("the server has not switched yet") << "headphones"_ba;
}

void TestRouteWatch::a_plug_that_is_pulled_is_a_device_that_has_gone()
{
    QFETCH(QByteArray, portAfter);
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(builtIn)}, unavailable, portAfter)),
             (Reasons{Reason::oldDeviceUnavailable}));
}

void TestRouteWatch::a_plug_that_is_pulled_is_told_once()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(builtIn)}, unavailable)), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(watch.update(scene({ours(builtIn)}, unavailable, "speaker"_ba)), Reasons());
    QCOMPARE(watch.update(scene({ours(builtIn, true)}, unavailable, "speaker"_ba)), Reasons());
}

void TestRouteWatch::a_plug_of_a_jack_not_in_use_is_nothing()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}, available, "speaker"_ba));
    QCOMPARE(watch.update(scene({ours(builtIn)}, unavailable, "speaker"_ba)), Reasons());
    RouteWatch elsewhere;
    elsewhere.update(scene({ours(wireless)}));
    QCOMPARE(elsewhere.update(scene({ours(wireless)}, unavailable)), Reasons());
}

void TestRouteWatch::a_jack_that_cannot_tell_is_nothing()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(builtIn)}, unknown)), Reasons());
    QCOMPARE(watch.update(scene({ours(builtIn)}, unavailable)), (Reasons{Reason::oldDeviceUnavailable}));
}

void TestRouteWatch::a_plug_that_is_put_in_is_a_new_device()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}, unavailable, "speaker"_ba));
    QCOMPARE(watch.update(scene({ours(builtIn)})), (Reasons{Reason::newDeviceAvailable}));
}

void TestRouteWatch::choosing_the_speaker_by_hand_is_nothing()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(builtIn)}, available, "speaker"_ba)), Reasons());
}

void TestRouteWatch::a_sink_that_goes_with_its_card_has_gone()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn)})), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn, true)})), Reasons());
}

void TestRouteWatch::a_sink_that_goes_and_takes_the_stream_along_has_gone()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    QCOMPARE(watch.update(withoutWireless({})), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn, false, 2)})), Reasons());
}

void TestRouteWatch::a_sink_not_in_use_may_go()
{
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn)})), Reasons());
}

void TestRouteWatch::a_sink_that_only_a_paused_stream_is_on_is_not_in_use()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless, true, 1), ours(builtIn, false, 2)}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn, true, 1), ours(builtIn, false, 2)})), Reasons());
}

void TestRouteWatch::the_sink_of_a_paused_player_is_in_use()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless, true)}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn, true)})), (Reasons{Reason::oldDeviceUnavailable}));
}

void TestRouteWatch::between_two_songs_the_last_sink_is_in_use()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    QCOMPARE(watch.update(scene({})), Reasons());
    QCOMPARE(watch.update(withoutWireless({})), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(watch.update(withoutWireless({})), Reasons());
}

void TestRouteWatch::a_stream_that_the_listener_moves_is_an_override()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    QCOMPARE(watch.update(scene({ours(builtIn)})), (Reasons{Reason::override}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn)})), Reasons());
}

void TestRouteWatch::a_new_sink_is_a_new_device()
{
    RouteWatch watch;
    watch.update(withoutWireless({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(builtIn)})), (Reasons{Reason::newDeviceAvailable}));
    watch.update(withoutWireless({ours(builtIn)}));
    QCOMPARE(watch.update(scene({ours(wireless)})), (Reasons{Reason::override, Reason::newDeviceAvailable}));
}

void TestRouteWatch::a_card_set_up_anew_is_an_override()
{
    SoundScene after = scene({ours(2)});
    after.sinks[0].index = 2;
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(after), (Reasons{Reason::override, Reason::newDeviceAvailable}));
}

void TestRouteWatch::a_card_set_up_anew_because_the_plug_is_pulled_has_lost_its_device()
{
    SoundScene after = scene({ours(2)}, unavailable, "speaker"_ba);
    after.sinks[0].index = 2;
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(after).constFirst(), Reason::oldDeviceUnavailable);
}

void TestRouteWatch::a_card_switched_off_has_lost_its_device()
{
    SoundScene after = scene({ours(wireless)});
    after.sinks.removeFirst();
    RouteWatch watch;
    watch.update(scene({ours(builtIn)}));
    QCOMPARE(watch.update(after), (Reasons{Reason::oldDeviceUnavailable}));
}

void TestRouteWatch::a_stream_on_its_way_is_waited_for()
{
    SoundScene between = scene({ours(SoundScene::noIndex)});
    between.sinks.removeFirst();
    SoundScene after = scene({ours(2)});
    after.sinks[0].index = 2;
    RouteWatch toTheSame;
    toTheSame.update(scene({ours(builtIn)}));
    QCOMPARE(toTheSame.update(between), Reasons());
    QVERIFY(!toTheSame.update(after).contains(Reason::oldDeviceUnavailable));
    RouteWatch toAnother;
    toAnother.update(scene({ours(builtIn)}));
    QCOMPARE(toAnother.update(between), Reasons());
    between.streams = {ours(wireless)};
    QCOMPARE(toAnother.update(between), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(toAnother.update(between), Reasons());
    // With its card gone too there is nothing to wait for.
    RouteWatch gone;
    gone.update(scene({ours(wireless)}));
    QCOMPARE(gone.update(withoutWireless({ours(SoundScene::noIndex)})),
             (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(gone.update(withoutWireless({ours(builtIn)})), Reasons());
}

void TestRouteWatch::lists_of_two_moments_are_understood()
{
    // The stream was still on the sink when the streams were listed, and the sink gone when the sinks were.
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    QCOMPARE(watch.update(withoutWireless({ours(wireless)})), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(watch.update(withoutWireless({ours(builtIn)})), Reasons());
    // It had been moved there a moment before.
    RouteWatch moved;
    moved.update(scene({ours(builtIn)}));
    QCOMPARE(moved.update(withoutWireless({ours(wireless)})), (Reasons{Reason::oldDeviceUnavailable}));
    QCOMPARE(moved.update(withoutWireless({ours(builtIn)})), Reasons());
}

void TestRouteWatch::streams_of_others_do_not_count()
{
    SoundStream other = ours(wireless);
    other.isOurs = false;
    RouteWatch watch;
    watch.update(scene({other}));
    other.sink = builtIn;
    QCOMPARE(watch.update(withoutWireless({other})), Reasons());
}

void TestRouteWatch::after_a_lost_server_all_begins_anew()
{
    RouteWatch watch;
    watch.update(scene({ours(wireless)}));
    watch.lose();
    QCOMPARE(watch.update(withoutWireless({ours(builtIn)})), Reasons());
    watch.lose();
    QCOMPARE(watch.update(scene({ours(builtIn)})), Reasons());
}

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestRouteWatch)
#include "tst_route_watch.moc"
