// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakePreferences.h"
#include "Fixtures/Sound/MarkedSound.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Services/EqualizerService.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 0.02; // seconds
constexpr float audible = 0.0005F;

} // namespace

/// The engine's clock on a real sound server, beside a recording of what the device gave.
class EqualizerClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void agreesWithTheRecordingOverAMinute();
    void standsWhereTheSoundStopped();

private:
    /// The engine on a device of the test's own.
    struct Bench
    {
        bool start()
        {
            if (!server.start())
                return false;
            recorder.emplace(server);
            service.emplace(preferences, std::make_unique<OutputAudioEngine>(
                                             [link = std::make_shared<PulseLink>()] {
                                                 return std::make_unique<PulseOutput>(link);
                                             },
                                             DecodedAudioFile::open));
            service->setEnabled(true);
            return true;
        }

        ConsoleLines console;
        SoundServer server;
        std::optional<Recorder> recorder;
        FakePreferences preferences;
        std::optional<EqualizerService> service;
    };

    /// Seconds of the song up to a sample of the recording; nothing when it is not the song there.
    std::optional<double> heardUpTo(const std::vector<float> &recording, std::size_t end, double near) const;

    QTemporaryDir m_directory;
    const MarkedSound m_sound{66};
    QUrl m_song;
};

void EqualizerClockTest::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
    const QString path = m_directory.filePath(u"song.wav"_s);
    QVERIFY(m_sound.write(path));
    m_song = QUrl::fromLocalFile(path);
}

std::optional<double> EqualizerClockTest::heardUpTo(const std::vector<float> &recording, std::size_t end,
                                                    double near) const
{
    constexpr auto length = static_cast<std::size_t>(MarkedSound::momentSamples);
    constexpr std::ptrdiff_t reach = MarkedSound::sampleRate / 2;
    if (end < length)
        return std::nullopt;
    const auto expected = static_cast<std::ptrdiff_t>(near * MarkedSound::sampleRate);
    const MarkedSound::Place place =
        m_sound.find(std::span(recording).subspan(end - length, length), expected - reach, expected + reach);
    if (place.likeness < 0.95)
        return std::nullopt;
    return place.seconds() + static_cast<double>(length) / MarkedSound::sampleRate;
}

void EqualizerClockTest::agreesWithTheRecordingOverAMinute()
{
    struct Check
    {
        double clock;
        std::size_t recorded;
    };
    constexpr int checksInAGroup = 20;
    Bench bench;
    QVERIFY(bench.start());
    bench.service->prepareToPlay(m_song);
    bench.service->play();
    QVERIFY(bench.recorder->hearSound(audible, 5s));

    std::vector<Check> checks;
    for (auto length = 250ms; bench.service->currentTime() < 60; length += 250ms) {
        QVERIFY(bench.recorder->hear(length));
        checks.push_back({bench.service->currentTime(), bench.recorder->samples().size()});
    }
    bench.service->pause();
    QVERIFY(checks.size() > 200);

    // A busy machine now and then brings one of both late: of some checks together the one in the middle
    // counts.
    std::vector<double> ahead;
    for (std::size_t i = 0; i + checksInAGroup <= checks.size(); i += checksInAGroup) {
        std::vector<double> group;
        for (std::size_t check = i; check < i + checksInAGroup; ++check) {
            const auto &[clock, recorded] = checks[check];
            if (const auto heard = heardUpTo(bench.recorder->samples(), recorded, clock))
                group.push_back(clock - *heard);
        }
        QVERIFY(group.size() > checksInAGroup / 2);
        std::ranges::sort(group);
        ahead.push_back(group[group.size() / 2]);
    }
    QStringList texts;
    for (const double seconds : ahead)
        texts << QString::number(seconds * 1000, 'f', 1);
    qInfo().noquote() << "milliseconds that the clock is ahead of the recording:" << texts.join(u' ');
    const auto [least, most] = std::ranges::minmax(ahead);
    QVERIFY(least > -tolerance && most < tolerance);
    QVERIFY(most - least < tolerance);
}

void EqualizerClockTest::standsWhereTheSoundStopped()
{
    Bench bench;
    QVERIFY(bench.start());
    bench.service->prepareToPlay(m_song);
    std::vector<double> deviations;
    for (const double position : {0.0, 30.0, 12.5, 58.25, 3.0}) {
        bench.service->seek(position);
        bench.recorder->clear();
        bench.service->play();
        QVERIFY(bench.recorder->hearSound(audible, 5s));
        QVERIFY(bench.recorder->hear(700ms));
        bench.service->pause();
        QVERIFY(bench.recorder->hearSilence(300ms, 5s));
        const double stands = bench.service->currentTime();
        const std::optional<double> heard = m_sound.endOf(bench.recorder->samples(), stands);
        QVERIFY(heard.has_value());
        deviations.push_back(std::abs(stands - *heard));
        QCOMPARE(bench.service->currentTime(), stands);
    }
    // On a busy machine sound can go on for a while after it was told to stop.
    std::ranges::sort(deviations);
    QVERIFY(deviations[deviations.size() / 2] < tolerance);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::EqualizerClockTest)
#include "tst_equalizer_clock.moc"
