// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Fixtures/Sound/Spectrum.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QSignalSpy>
#include <QTest>

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
    /// Hears a quarter of a second from now on, after what is on its way to the device.
    Spectrum spectrumNow();

    SoundFiles m_files;
    FakeAssetReader m_reader;
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<MpvStreamPlayer> m_player;
    QString m_oneKilohertz;
    QString m_twoTones;
    QString m_short;
};

void TestMpvSound::initTestCase()
{
    if (!SoundServer::available())
        QSKIP("no PulseAudio on this machine: scripts/setup installs it");
    m_oneKilohertz = m_files.make(u"1000.flac"_s, {{1000, 8}});
    m_twoTones = m_files.make(u"tones.flac"_s, {{440, 5}, {1320, 5}});
    m_short = m_files.make(u"short.flac"_s, {{700, 1}});
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

Spectrum TestMpvSound::spectrumNow()
{
    m_recorder->clear();
    m_recorder->hear(800ms);
    const auto tail = static_cast<std::ptrdiff_t>(Recorder::samplesIn(400ms));
    return {{m_recorder->samples().end() - tail, m_recorder->samples().end()}, Recorder::sampleRate};
}

void TestMpvSound::playsWhatTheFileHolds()
{
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    const Spectrum heard = spectrumNow();
    QVERIFY(std::abs(heard.loudest().hertz - 1000) < 5);
    QVERIFY(std::abs(Spectrum::decibels(heard.loudest().amplitude / 0.5)) < 0.5);
    const double elsewhere = heard.loudestElsewhere(1000, 50).amplitude;
    QVERIFY2(Spectrum::decibels(elsewhere / heard.loudest().amplitude) < -40, "something else sounds");
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
    QVERIFY(m_recorder->hearSound(audible, 5s));
    QVERIFY(std::abs(spectrumNow().loudest().hertz - 440) < 5);
    std::optional<bool> finished;
    m_player->seek(6, 0.5, 0.5, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    QVERIFY(*finished);
    QVERIFY(std::abs(spectrumNow().loudest().hertz - 1320) < 5);
}

void TestMpvSound::halfVolumeIsHalfAmplitude()
{
    m_player->setVolume(0.5F);
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    const double half = spectrumNow().loudest().amplitude;
    QVERIFY(std::abs(Spectrum::decibels(half / 0.25)) < 0.5);
    m_player->setVolume(1);
    const double full = spectrumNow().loudest().amplitude;
    QVERIFY(std::abs(Spectrum::decibels(full / half) - Spectrum::decibels(2)) < 0.5);
    m_player->setVolume(0);
    QVERIFY(m_recorder->hearSilence(200ms, 3s));
}

void TestMpvSound::theLastItemSoundsToItsEnd()
{
    const auto item = load(m_short);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    QVERIFY(m_recorder->hearSilence(500ms, 5s));
    const auto heard = m_recorder->lastAbove(audible) - m_recorder->firstAbove(audible);
    QVERIFY2(std::abs(double(heard) / Recorder::sampleRate - 1) < 0.02, qPrintable(QString::number(heard)));
}

void TestMpvSound::nextItemLeavesTheTailAlone()
{
    const auto first = load(m_short);
    connect(first.get(), &PlayerItem::didPlayToEnd, this, [this] {
        load(m_oneKilohertz);
        m_player->play();
    });
    m_player->play();
    QVERIFY(m_recorder->hear(3000ms));
    // The first tone's whole second: each tenth of it, between the first sound and the second tone.
    const std::ptrdiff_t start = m_recorder->firstAbove(audible);
    QVERIFY(start >= 0);
    const auto tenth = static_cast<std::ptrdiff_t>(Recorder::samplesIn(100ms));
    for (std::ptrdiff_t part = 0; part < 9; ++part) {
        const auto from = m_recorder->samples().begin() + start + part * tenth;
        const Spectrum heard({from, from + tenth}, Recorder::sampleRate);
        QVERIFY2(std::abs(heard.loudest().hertz - 700) < 20, qPrintable(u"tenth %1"_s.arg(part)));
        QVERIFY(heard.loudest().amplitude > 0.45);
    }
    const Spectrum after({m_recorder->samples().end() - 4 * tenth, m_recorder->samples().end()},
                         Recorder::sampleRate);
    QVERIFY(std::abs(after.loudest().hertz - 1000) < 5);
}

void TestMpvSound::replacingAPausedItemDoesNotSoundIt()
{
    load(m_twoTones);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    m_player->pause();
    QVERIFY(m_recorder->hearSilence(300ms, 3s));
    m_recorder->clear();
    load(m_oneKilohertz);
    m_player->play();
    QVERIFY(m_recorder->hearSound(audible, 5s));
    QVERIFY(m_recorder->hear(800ms));
    const auto &samples = m_recorder->samples();
    const auto start = static_cast<std::size_t>(m_recorder->firstAbove(audible));
    QVERIFY(samples.size() > start + 4096);
    const Spectrum heard({samples.begin() + std::ptrdiff_t(start), 4096}, Recorder::sampleRate);
    QVERIFY(std::abs(heard.loudest().hertz - 1000) < 20);
    QVERIFY(Spectrum::decibels(heard.loudestElsewhere(1000, 200).amplitude / heard.loudest().amplitude) <
            -25);
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
    QVERIFY(m_recorder->hearSound(audible, 5s));
    QVERIFY(std::abs(spectrumNow().loudest().hertz - 1000) < 5);
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
    QVERIFY(!*finished);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvSound)
#include "TestMpvSound.moc"
