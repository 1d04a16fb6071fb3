// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/NumberLocale.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvHandle.h"

#include <QDeadlineTimer>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

namespace cadorel {

/// What the player relies on and libmpv does not promise in its manual. A failure here after an upgrade tells
/// what to look at in MpvStreamPlayer.
class TestLibmpv : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_mpv = {}; }

    void refusesOtherNumberLocales();
    void aReplacedLoadNeverStarts();
    void answersALoadBeforeItsFileStarts();
    void beginsExactlyAtItsStart();
    void exactSeeksLandOnTheSample();
    void packetSeeksLandEarly_data();
    void packetSeeksLandEarly();
    void thePositionOfTheSoundIsTheNewerOne();
    void aSeekIsAnsweredThenBegunThenRestarted();
    void anEndIsTheEndOfTheFile();
    void beginningAtTheEndEndsInOneOfTwoWays_data();
    void beginningAtTheEndEndsInOneOfTwoWays();
    void aPauseOfALoadEndsWithTheFile();
    void restartsBeforeItFailsWithoutAnOutput();
    void speexHasADecoderThatDoesNotClip();
    void theDurationOfAdtsIsAGuess();

private:
    struct Event
    {
        mpv_event_id id = MPV_EVENT_NONE;
        int error = 0;
        /// Of START_FILE and END_FILE, and of the answer to a load.
        qint64 entry = -1;
        mpv_end_file_reason reason = MPV_END_FILE_REASON_EOF;
        /// Of a property reply.
        double number = std::nan("");
        QByteArray text;
    };

    static QList<MpvHandle::Option> options(const QByteArray &output);
    static Event copyOf(const mpv_event &event);
    /// Takes events until one of this kind has come, which it returns; an empty one after five seconds.
    Event next(mpv_event_id id);
    double number(const char *property);
    QByteArray text(const char *property);
    /// Loads and waits until the first sound; its entry number.
    qint64 load(const QString &path, const QByteArray &loadOptions = "pause=yes");

    SoundFiles m_files;
    MpvHandle m_mpv;
    QList<Event> m_events;
    QString m_song;
    QString m_moment;
};

void TestLibmpv::initTestCase()
{
    m_song = m_files.make(u"song.flac"_s, {{440, 20}});
    m_moment = m_files.make(u"moment.flac"_s, {{440, 0.3}});
    QVERIFY(!m_song.isEmpty() && !m_moment.isEmpty());
}

QList<MpvHandle::Option> TestLibmpv::options(const QByteArray &output)
{
    return {{"config", "no"}, {"idle", "yes"},    {"vid", "no"},
            {"ao", output},   {"ad", "libspeex"}, {"audio-fallback-to-null", "no"}};
}

void TestLibmpv::init()
{
    m_events.clear();
    m_mpv = MpvHandle(options("null"));
    QVERIFY(m_mpv);
}

TestLibmpv::Event TestLibmpv::copyOf(const mpv_event &event)
{
    Event copy;
    copy.id = event.event_id;
    copy.error = event.error;
    if (event.event_id == MPV_EVENT_START_FILE) {
        copy.entry = static_cast<const mpv_event_start_file *>(event.data)->playlist_entry_id;
    } else if (event.event_id == MPV_EVENT_END_FILE) {
        const auto *end = static_cast<const mpv_event_end_file *>(event.data);
        copy.entry = end->playlist_entry_id;
        copy.reason = end->reason;
        copy.error = end->error;
    } else if (event.event_id == MPV_EVENT_COMMAND_REPLY && event.error >= 0) {
        const mpv_node &result = static_cast<const mpv_event_command *>(event.data)->result;
        if (result.format == MPV_FORMAT_NODE_MAP && result.u.list->num > 0)
            copy.entry = result.u.list->values[0].u.int64;
    } else if (event.event_id == MPV_EVENT_GET_PROPERTY_REPLY && event.error >= 0) {
        const auto *property = static_cast<const mpv_event_property *>(event.data);
        if (property->format == MPV_FORMAT_DOUBLE)
            copy.number = *static_cast<const double *>(property->data);
        else if (property->format == MPV_FORMAT_STRING)
            copy.text = *static_cast<const char *const *>(property->data);
    }
    return copy;
}

TestLibmpv::Event TestLibmpv::next(mpv_event_id id)
{
    Event found;
    std::ignore = QTest::qWaitFor([&] {
        while (const mpv_event *event = m_mpv.nextEvent()) {
            m_events << copyOf(*event);
            if (event->event_id == id) {
                found = m_events.constLast();
                return true;
            }
        }
        return false;
    });
    return found;
}

double TestLibmpv::number(const char *property)
{
    m_mpv.requestProperty(0, property, MPV_FORMAT_DOUBLE);
    return next(MPV_EVENT_GET_PROPERTY_REPLY).number;
}

QByteArray TestLibmpv::text(const char *property)
{
    m_mpv.requestProperty(0, property, MPV_FORMAT_STRING);
    return next(MPV_EVENT_GET_PROPERTY_REPLY).text;
}

qint64 TestLibmpv::load(const QString &path, const QByteArray &loadOptions)
{
    std::ignore = m_mpv.command(1, {"loadfile", path.toUtf8(), "replace", loadOptions});
    const qint64 entry = next(MPV_EVENT_START_FILE).entry;
    return next(MPV_EVENT_PLAYBACK_RESTART).id == MPV_EVENT_NONE ? -1 : entry;
}

void TestLibmpv::refusesOtherNumberLocales()
{
    {
        const NumberLocale locale;
        QVERIFY2(locale.active(), "no locale sources: scripts/setup installs them");
        QVERIFY(!MpvHandle(options("null")));
    }
    QVERIFY(MpvHandle(options("null")));
}

void TestLibmpv::aReplacedLoadNeverStarts()
{
    for (const quint64 tag : {1U, 2U, 3U})
        std::ignore = m_mpv.command(tag, {"loadfile", m_song.toUtf8(), "replace"});
    QVERIFY(next(MPV_EVENT_PLAYBACK_RESTART).id != MPV_EVENT_NONE);
    QList<qint64> answered;
    QList<qint64> started;
    for (const Event &event : m_events) {
        if (event.id == MPV_EVENT_COMMAND_REPLY)
            answered << event.entry;
        if (event.id == MPV_EVENT_START_FILE)
            started << event.entry;
    }
    QCOMPARE(answered.size(), 3);
    // The first may have begun before the second came; one that started is the last or had its end told.
    QCOMPARE(started.constLast(), answered.constLast());
    for (qsizetype i = 0; i + 1 < started.size(); ++i)
        QVERIFY(std::ranges::any_of(m_events, [&](const Event &event) {
            return event.id == MPV_EVENT_END_FILE && event.entry == started[i];
        }));
}

void TestLibmpv::answersALoadBeforeItsFileStarts()
{
    for (int i = 0; i < 20; ++i) {
        m_events.clear();
        const qint64 entry = load(m_song);
        const auto indexOf = [&](mpv_event_id id) {
            return std::ranges::find(m_events, std::pair(id, entry),
                                     [](const Event &event) { return std::pair(event.id, event.entry); }) -
                   m_events.begin();
        };
        QVERIFY(indexOf(MPV_EVENT_COMMAND_REPLY) < indexOf(MPV_EVENT_START_FILE));
        QVERIFY(indexOf(MPV_EVENT_START_FILE) < m_events.size());
    }
}

void TestLibmpv::beginsExactlyAtItsStart()
{
    QVERIFY(load(m_song, "pause=yes,start=10.000000") >= 0);
    QVERIFY(std::abs(number("time-pos") - 10) < 0.0001);
}

void TestLibmpv::exactSeeksLandOnTheSample()
{
    QVERIFY(load(m_song) >= 0);
    std::ignore = m_mpv.command(1, {"seek", "13.37", "absolute+exact"});
    QVERIFY(next(MPV_EVENT_PLAYBACK_RESTART).id != MPV_EVENT_NONE);
    QVERIFY(std::abs(number("time-pos") - 13.37) < 0.0001);
}

void TestLibmpv::packetSeeksLandEarly_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"early.opus", "early.mp3", "early.flac", "early.m4a"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestLibmpv::packetSeeksLandEarly()
{
    QFETCH(const QString, name);
    QVERIFY(load(m_files.make(name, {{440, 20}})) >= 0);
    std::ignore = m_mpv.command(1, {"seek", "13.37", "absolute+keyframes"});
    QVERIFY(next(MPV_EVENT_PLAYBACK_RESTART).id != MPV_EVENT_NONE);
    const double landed = number("time-pos");
    QVERIFY2(landed <= 13.38 && landed >= 12.37, qPrintable(QString::number(landed)));
}

void TestLibmpv::thePositionOfTheSoundIsTheNewerOne()
{
    load(m_song, "pause=no");
    double mostBehind = 0;
    for (int asked = 0; asked < 40; ++asked) {
        // Requests that follow each other closely bring "time-pos" up to date.
        const QDeadlineTimer deadline(73);
        QTRY_VERIFY(deadline.hasExpired());
        m_mpv.requestProperty(0, "audio-pts", MPV_FORMAT_DOUBLE);
        m_mpv.requestProperty(0, "time-pos", MPV_FORMAT_DOUBLE);
        const double heard = next(MPV_EVENT_GET_PROPERTY_REPLY).number;
        const double told = next(MPV_EVENT_GET_PROPERTY_REPLY).number;
        QVERIFY(std::isfinite(heard) && std::isfinite(told));
        QVERIFY2(heard > told - 0.005, qPrintable(u"%1 before %2"_s.arg(heard).arg(told)));
        mostBehind = std::max(mostBehind, heard - told);
    }
    QVERIFY2(mostBehind > 0.03, qPrintable(QString::number(mostBehind)));
}

void TestLibmpv::aSeekIsAnsweredThenBegunThenRestarted()
{
    QVERIFY(load(m_song) >= 0);
    m_events.clear();
    std::ignore = m_mpv.command(7, {"seek", "3", "absolute+exact"});
    QVERIFY(next(MPV_EVENT_PLAYBACK_RESTART).id != MPV_EVENT_NONE);
    QList<mpv_event_id> order;
    for (const Event &event : m_events)
        if (event.id != MPV_EVENT_AUDIO_RECONFIG)
            order << event.id;
    QCOMPARE(order, QList({MPV_EVENT_COMMAND_REPLY, MPV_EVENT_SEEK, MPV_EVENT_PLAYBACK_RESTART}));
}

void TestLibmpv::anEndIsTheEndOfTheFile()
{
    const qint64 entry = load(m_moment, "pause=no");
    const Event end = next(MPV_EVENT_END_FILE);
    QCOMPARE(end.entry, entry);
    QCOMPARE(end.reason, MPV_END_FILE_REASON_EOF);
    QVERIFY(next(MPV_EVENT_IDLE).id != MPV_EVENT_NONE);
}

void TestLibmpv::beginningAtTheEndEndsInOneOfTwoWays_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("flac") << u"end.flac"_s;
    QTest::newRow("mp3") << u"end.mp3"_s;
}

void TestLibmpv::beginningAtTheEndEndsInOneOfTwoWays()
{
    QFETCH(const QString, name);
    const QString path = m_files.make(name, {{440, 3}});
    std::ignore = m_mpv.command(1, {"loadfile", path.toUtf8(), "replace", "start=3.050000"});
    QVERIFY(next(MPV_EVENT_FILE_LOADED).id != MPV_EVENT_NONE);
    const Event end = next(MPV_EVENT_END_FILE);
    if (end.reason == MPV_END_FILE_REASON_ERROR)
        QCOMPARE(end.error, static_cast<int>(MPV_ERROR_NOTHING_TO_PLAY));
    else
        QCOMPARE(end.reason, MPV_END_FILE_REASON_EOF);
}

void TestLibmpv::aPauseOfALoadEndsWithTheFile()
{
    QVERIFY(load(m_song, "pause=yes") >= 0);
    QCOMPARE(text("pause"), "yes");
    std::ignore = m_mpv.command(1, {"stop"});
    QVERIFY(next(MPV_EVENT_END_FILE).id != MPV_EVENT_NONE);
    QVERIFY(next(MPV_EVENT_IDLE).id != MPV_EVENT_NONE);
    QCOMPARE(text("pause"), "no");
}

void TestLibmpv::restartsBeforeItFailsWithoutAnOutput()
{
    const QByteArray before = qgetenv("PULSE_SERVER");
    qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(m_files.path(u"nobody"_s)));
    const auto restore = qScopeGuard([&] {
        if (before.isNull())
            qunsetenv("PULSE_SERVER");
        else
            qputenv("PULSE_SERVER", before);
    });
    m_mpv = MpvHandle(options("pulse"));
    const qint64 entry = load(m_song, "pause=no");
    QVERIFY(entry >= 0);
    QCOMPARE(text("current-ao"), QByteArray());
    Event end;
    for (const Event &event : std::as_const(m_events))
        if (event.id == MPV_EVENT_END_FILE)
            end = event;
    if (end.id == MPV_EVENT_NONE)
        end = next(MPV_EVENT_END_FILE);
    QCOMPARE(end.entry, entry);
    QCOMPARE(end.error, static_cast<int>(MPV_ERROR_AO_INIT_FAILED));
}

void TestLibmpv::speexHasADecoderThatDoesNotClip()
{
    const QString path = m_files.make(u"voice.spx"_s, {{440, 2}}, {u"-ar"_s, u"16000"_s});
    QVERIFY(!path.isEmpty());
    QVERIFY(load(path) >= 0);
    const QByteArray codec = text("audio-codec");
    QVERIFY2(codec.toLower().contains("libspeex"), codec.constData());
    QVERIFY(load(m_song) >= 0);
    QVERIFY(!text("audio-codec").toLower().contains("speex"));
}

void TestLibmpv::theDurationOfAdtsIsAGuess()
{
    const QString path = m_files.make(u"guess.aac"_s, {{0, 30}, {440, 2}, {3000, 2}});
    QVERIFY(load(path) >= 0);
    const double told = number("duration");
    QVERIFY(told > 0);
    QVERIFY2(std::abs(told - 34) > 0.2, qPrintable(QString::number(told)));
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestLibmpv)
#include "TestLibmpv.moc"
