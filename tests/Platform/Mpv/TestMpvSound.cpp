// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Fixtures/Sound/Spectrum.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr float audible = 0.01F;

} // namespace

/// What leaves the sound device, heard on a sound server of the test's own.
class TestMpvSound : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void playsWhatTheFileHolds();
    void isSilentAfterPause();
    void playsFromWhereItWasSoughtTo();
    void pausedItStandsWhereItWasSoughtTo();
    void halfVolumeIsHalfAmplitude();
    void theLastItemSoundsToItsEnd();
    void nextItemLeavesTheTailAlone();
    void replacingAPausedItemDoesNotSoundIt();
    void showsTheProductName();
    void failsWithoutAServerAndPlaysWithOne();
    void failsWhenTheServerDies_data();
    void failsWhenTheServerDies();

private:
    std::shared_ptr<PlayerItem> load(const QString &path);
    bool isReady(const std::shared_ptr<PlayerItem> &item);
    static bool isTone(const Spectrum &heard, double hertz, double amplitude);
    /// Whether a third of a second of what plays is as expected. It listens for ten seconds: something else
    /// may still be on its way to the device, and a busy machine tears gaps.
    bool hears(const std::function<bool(const Spectrum &)> &expected);

    SoundFiles m_files;
    FakeAssetReader m_reader;
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<MpvStreamPlayer> m_player;
    QString m_oneKilohertz;
    QString m_twoTones;
    QString m_short;
    QString m_high;
};

void TestMpvSound::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
    m_oneKilohertz = m_files.make(u"1000.flac"_s, {{1000, 60}});
    m_twoTones = m_files.make(u"tones.flac"_s, {{440, 15}, {1320, 30}});
    m_short = m_files.make(u"short.flac"_s, {{700, 1}});
    m_high = m_files.make(u"high.flac"_s, {{5000, 20}});
    QVERIFY(!m_high.isEmpty());
    QVERIFY(!m_oneKilohertz.isEmpty() && !m_twoTones.isEmpty() && !m_short.isEmpty());
}

void TestMpvSound::init()
{
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->start());
    m_recorder = std::make_unique<Recorder>(*m_server);
    // Another sound system of the machine must not answer in the server's place.
    m_player = std::make_unique<MpvStreamPlayer>(m_reader, QList<MpvHandle::Option>{{"ao", "pulse"}});
}

void TestMpvSound::cleanup()
{
    m_player.reset();
    m_recorder.reset();
    m_server.reset();
}

std::shared_ptr<PlayerItem> TestMpvSound::load(const QString &path)
{
    auto item = m_player->makeItem({.url = QUrl::fromLocalFile(path)});
    m_player->replaceCurrentItem(item);
    return item;
}

bool TestMpvSound::isReady(const std::shared_ptr<PlayerItem> &item)
{
    return QTest::qWaitFor([&] { return item->status() == PlayerItem::Status::readyToPlay; });
}

bool TestMpvSound::isTone(const Spectrum &heard, double hertz, double amplitude)
{
    const Spectrum::Peak peak = heard.loudest();
    return std::abs(peak.hertz - hertz) < 5 && std::abs(Spectrum::decibels(peak.amplitude / amplitude)) < 0.5;
}

bool TestMpvSound::hears(const std::function<bool(const Spectrum &)> &expected)
{
    const auto length = static_cast<std::ptrdiff_t>(Recorder::samplesIn(350ms));
    for (const QDeadlineTimer deadline(10s); !deadline.hasExpired();) {
        m_recorder->clear();
        if (!m_recorder->hear(400ms))
            return false;
        const auto &samples = m_recorder->samples();
        if (expected(Spectrum({samples.end() - length, samples.end()}, Recorder::sampleRate)))
            return true;
    }
    return false;
}

void TestMpvSound::playsWhatTheFileHolds()
{
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(hears([](const Spectrum &heard) {
        const double elsewhere = heard.loudestElsewhere(1000, 50).amplitude;
        return isTone(heard, 1000, 0.5) && Spectrum::decibels(elsewhere / heard.loudest().amplitude) < -40;
    }));
}

void TestMpvSound::isSilentAfterPause()
{
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    m_player->pause();
    QVERIFY(m_recorder->hearSilence(300ms, 3s));
    m_player->play();
    m_recorder->clear();
    QVERIFY(m_recorder->hearSound(audible, 5s));
}

void TestMpvSound::playsFromWhereItWasSoughtTo()
{
    load(m_twoTones);
    m_player->play();
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 440, 0.5); }));
    std::optional<bool> finished;
    m_player->seek(16, 0.5, 0.5, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == true);
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 1320, 0.5); }));
}

void TestMpvSound::pausedItStandsWhereItWasSoughtTo()
{
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    m_player->pause();
    // The device is open already, and what is on its way to it is no part of the new song.
    for (const double position : {16.0, 5.5, 0.25}) {
        const auto item = load(m_twoTones);
        std::optional<bool> finished;
        m_player->seek(position, 0, 0, [&](bool done) { finished = done; });
        QTRY_VERIFY(finished.has_value());
        QVERIFY(isReady(item));
        QVERIFY2(std::abs(item->currentTime() - position) < 0.02,
                 qPrintable(u"%1 instead of %2"_s.arg(item->currentTime()).arg(position)));
    }
}

void TestMpvSound::halfVolumeIsHalfAmplitude()
{
    m_player->setVolume(0.5F);
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 1000, 0.25); }));
    m_player->setVolume(1);
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 1000, 0.5); }));
    m_player->setVolume(0.25F);
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 1000, 0.125); }));
    m_player->setVolume(0);
    QVERIFY(m_recorder->hearSilence(200ms, 5s));
}

void TestMpvSound::theLastItemSoundsToItsEnd()
{
    const auto item = load(m_short);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    QVERIFY(m_recorder->hearSilence(500ms, 5s));
    const auto heard = m_recorder->toneLength(500, 900);
    QVERIFY2(heard > 960ms && heard < 1040ms, qPrintable(QString::number(heard.count())));
}

void TestMpvSound::nextItemLeavesTheTailAlone()
{
    const auto first = load(m_short);
    connect(first.get(), &PlayerItem::didPlayToEnd, this, [this] { load(m_high); });
    connect(first.get(), &PlayerItem::didPlayToEnd, m_player.get(), &StreamPlayer::play);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    const bool bothHeard = QTest::qWaitFor(
        [this] { return m_recorder->hear(100ms) && m_recorder->toneLength(4000, 6000) > 500ms; });
    QVERIFY(bothHeard);
    const auto heard = m_recorder->toneLength(500, 900);
    QVERIFY2(heard > 960ms && heard < 1040ms, qPrintable(QString::number(heard.count())));
}

void TestMpvSound::replacingAPausedItemDoesNotSoundIt()
{
    load(m_twoTones);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    m_player->pause();
    QVERIFY(m_recorder->hearSilence(300ms, 3s));
    m_recorder->clear();
    load(m_high);
    m_player->play();
    const bool nextHeard = QTest::qWaitFor(
        [this] { return m_recorder->hear(100ms) && m_recorder->toneLength(4000, 6000) > 500ms; });
    QVERIFY(nextHeard);
    QCOMPARE(m_recorder->toneLength(200, 3000).count(), 0);
}

void TestMpvSound::showsTheProductName()
{
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    const QByteArray streams = m_server->streams();
    QVERIFY2(streams.contains("application.name = \"Tarnova Music Player\""), streams.constData());
    QVERIFY2(streams.contains("media.name = \"Tarnova Music Player\""), streams.constData());
    QVERIFY2(!streams.contains("1000.flac"), streams.constData());
}

void TestMpvSound::failsWithoutAServerAndPlaysWithOne()
{
    m_recorder.reset();
    m_server->stop();
    const auto silent = load(m_oneKilohertz);
    QSignalSpy statuses(silent.get(), &PlayerItem::statusChanged);
    m_player->play();
    QTRY_COMPARE(silent->status(), PlayerItem::Status::failed);
    QCOMPARE(statuses.size(), 1);
    QCOMPARE(silent->errorDescription(), u"没有可用的音频设备"_s);
    QCOMPARE(m_player->rate(), 0.0);
    QVERIFY(!m_player->timerActive());

    QVERIFY(m_server->start());
    m_recorder = std::make_unique<Recorder>(*m_server);
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(hears([](const Spectrum &heard) { return isTone(heard, 1000, 0.5); }));
}

void TestMpvSound::failsWhenTheServerDies_data()
{
    QTest::addColumn<bool>("playing");
    QTest::newRow("playing") << true;
    QTest::newRow("paused") << false;
}

void TestMpvSound::failsWhenTheServerDies()
{
    QFETCH(const bool, playing);
    const auto item = load(m_oneKilohertz);
    QVERIFY(isReady(item));
    if (playing) {
        m_player->play();
        QVERIFY(m_recorder->hearSound(audible, 5s));
    }
    m_recorder.reset();
    m_server->stop();
    QTRY_COMPARE(item->status(), PlayerItem::Status::failed);
    QCOMPARE(item->errorDescription(), u"没有可用的音频设备"_s);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
    std::optional<bool> finished;
    m_player->seek(1, 0, 0, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == false);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvSound)
#include "TestMpvSound.moc"
