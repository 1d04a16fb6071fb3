// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAudioEngine.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"

#include <QTest>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int sampleRate = 48'000;

} // namespace

/// What every AudioEngine does, asked of the fake and of the real one alike.
class TestAudioEngineContract : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup() { m_engine.reset(); }

    void openedFileKnowsItsShape();
    void missingFileThrows();
    void readsFromWhereItWasSoughtTo();
    void runsOnceItIsStarted();
    void withoutADeviceItDoesNotRun();
    void anotherFormatNeedsAnotherDevice();
    void connectingStopsTheNode();
    void playsOnceItRuns();
    void clockBeginsWithPlaying();
    void clockStandsWhilePaused();
    void stopSetsTheClockBack();
    void clockRunsOnInSilence();
    void clockOfASegmentBeginsWithZero();
    void lostDeviceStopsTheNodeAndKeepsTheClock();
    void bandsKeepWhatTheyAreGiven();

private:
    FakeAudioEngine *fake() const { return dynamic_cast<FakeAudioEngine *>(m_engine.get()); }
    PlayerNode &node() { return m_engine->playerNode(); }
    /// Connects for the song and opens the device.
    std::shared_ptr<AudioFile> prepare();
    /// Lets so much be heard.
    bool hear(double seconds);
    void loseDevice();
    void setDevice(bool isThere);
    /// Seconds on the node's clock; -1 without a time.
    double clock();

    SoundFiles m_files;
    QUrl m_song;
    bool m_hasDevice = true;
    FileOutput *m_output = nullptr;
    std::unique_ptr<AudioEngine> m_engine;
};

void TestAudioEngineContract::initTestCase_data()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("fake") << false;
    QTest::newRow("real") << true;
}

void TestAudioEngineContract::initTestCase()
{
    const QString path = m_files.make(u"song.flac"_s, {{440, 3}});
    QVERIFY(!path.isEmpty());
    m_song = QUrl::fromLocalFile(path);
}

void TestAudioEngineContract::init()
{
    QFETCH_GLOBAL(const bool, real);
    m_hasDevice = true;
    if (real) {
        const auto makeOutput = [this]() -> std::unique_ptr<AudioOutput> {
            if (!m_hasDevice)
                throw std::runtime_error("no device");
            auto output = std::make_unique<FileOutput>();
            m_output = output.get();
            return output;
        };
        m_engine = std::make_unique<OutputAudioEngine>(makeOutput, DecodedAudioFile::open);
    } else {
        auto engine = std::make_unique<FakeAudioEngine>();
        engine->format = {.sampleRate = sampleRate, .channelCount = 1};
        engine->length = 3;
        m_engine = std::move(engine);
    }
}

std::shared_ptr<AudioFile> TestAudioEngineContract::prepare()
{
    const std::shared_ptr<AudioFile> file = m_engine->openFile(m_song);
    m_engine->connectNodes(file->processingFormat());
    m_engine->start();
    return file;
}

bool TestAudioEngineContract::hear(double seconds)
{
    if (fake()) {
        fake()->advance(seconds);
        return true;
    }
    m_output->allow(static_cast<qint64>(seconds * sampleRate));
    return QTest::qWaitFor([this] { return m_output->allowance() == 0; }, 20'000);
}

void TestAudioEngineContract::loseDevice()
{
    if (fake())
        fake()->loseDevice();
    else
        m_output->breakDown();
}

void TestAudioEngineContract::setDevice(bool isThere)
{
    m_hasDevice = isThere;
    if (fake())
        fake()->startFailure = isThere ? "" : "no device";
}

double TestAudioEngineContract::clock()
{
    const std::optional<NodeTime> time = node().playerTime();
    return time ? time->sampleTime / time->sampleRate : -1;
}

void TestAudioEngineContract::openedFileKnowsItsShape()
{
    const std::shared_ptr<AudioFile> file = m_engine->openFile(m_song);
    QCOMPARE(file->url(), m_song);
    QCOMPARE(file->processingFormat(), (AudioFormat{.sampleRate = sampleRate, .channelCount = 1}));
    QCOMPARE(file->length(), 3 * sampleRate);
}

void TestAudioEngineContract::missingFileThrows()
{
    if (fake())
        fake()->openFailure = "no file";
    QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                             m_engine->openFile(QUrl::fromLocalFile(m_files.path(u"nowhere.flac"_s))));
}

void TestAudioEngineContract::readsFromWhereItWasSoughtTo()
{
    const std::shared_ptr<AudioFile> file = m_engine->openFile(m_song);
    std::vector<float> sound(2000);
    file->seek(file->length() - 1500);
    QCOMPARE(file->read(sound.data(), 1000), 1000);
    QCOMPARE(file->read(sound.data(), 2000), 500);
    QCOMPARE(file->read(sound.data(), 2000), 0);
    file->seek(file->length() + 10);
    QCOMPARE(file->read(sound.data(), 2000), 0);
    file->seek(0);
    QCOMPARE(file->read(sound.data(), 2000), 2000);
}

void TestAudioEngineContract::runsOnceItIsStarted()
{
    const std::shared_ptr<AudioFile> file = m_engine->openFile(m_song);
    QVERIFY(!m_engine->isRunning());
    m_engine->connectNodes(file->processingFormat());
    QVERIFY(!m_engine->isRunning());
    m_engine->start();
    m_engine->start();
    QVERIFY(m_engine->isRunning());
    QVERIFY(!node().isPlaying());
}

void TestAudioEngineContract::withoutADeviceItDoesNotRun()
{
    setDevice(false);
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, prepare());
    QVERIFY(!m_engine->isRunning());
    node().play();
    QVERIFY(!node().isPlaying());
    setDevice(true);
    prepare();
    QVERIFY(m_engine->isRunning());
}

void TestAudioEngineContract::anotherFormatNeedsAnotherDevice()
{
    const std::shared_ptr<AudioFile> file = prepare();
    m_engine->connectNodes(file->processingFormat());
    QVERIFY(m_engine->isRunning());
    m_engine->connectNodes({.sampleRate = 44'100, .channelCount = 2});
    QVERIFY(!m_engine->isRunning());
    m_engine->start();
    QVERIFY(m_engine->isRunning());
}

void TestAudioEngineContract::connectingStopsTheNode()
{
    const std::shared_ptr<AudioFile> file = prepare();
    node().scheduleFile(file);
    node().play();
    QVERIFY(hear(0.5));
    m_engine->connectNodes(file->processingFormat());
    QVERIFY(!node().isPlaying());
    QCOMPARE(clock(), -1.0);
}

void TestAudioEngineContract::playsOnceItRuns()
{
    const std::shared_ptr<AudioFile> file = m_engine->openFile(m_song);
    m_engine->connectNodes(file->processingFormat());
    node().play();
    QVERIFY(!node().isPlaying());
    m_engine->start();
    QVERIFY(!node().isPlaying());
    node().scheduleFile(file);
    node().play();
    node().play();
    QVERIFY(node().isPlaying());
}

void TestAudioEngineContract::clockBeginsWithPlaying()
{
    const std::shared_ptr<AudioFile> file = prepare();
    QCOMPARE(clock(), -1.0);
    node().scheduleFile(file);
    QCOMPARE(clock(), -1.0);
    node().play();
    QCOMPARE(clock(), 0.0);
    QVERIFY(hear(0.5));
    QCOMPARE(clock(), 0.5);
    QCOMPARE(node().playerTime()->sampleRate, double(sampleRate));
}

void TestAudioEngineContract::clockStandsWhilePaused()
{
    const std::shared_ptr<AudioFile> file = prepare();
    node().scheduleFile(file);
    node().play();
    QVERIFY(hear(0.5));
    node().pause();
    QVERIFY(!node().isPlaying());
    QCOMPARE(clock(), 0.5);
    node().play();
    QVERIFY(hear(0.25));
    QCOMPARE(clock(), 0.75);
}

void TestAudioEngineContract::stopSetsTheClockBack()
{
    const std::shared_ptr<AudioFile> file = prepare();
    node().scheduleFile(file);
    node().play();
    QVERIFY(hear(0.5));
    node().stop();
    QVERIFY(!node().isPlaying());
    QCOMPARE(clock(), -1.0);
    node().scheduleFile(file);
    node().play();
    QVERIFY(hear(0.25));
    QCOMPARE(clock(), 0.25);
}

void TestAudioEngineContract::clockRunsOnInSilence()
{
    prepare();
    // Nothing is scheduled.
    node().play();
    QVERIFY(node().isPlaying());
    QVERIFY(hear(0.5));
    QCOMPARE(clock(), 0.5);
}

void TestAudioEngineContract::clockOfASegmentBeginsWithZero()
{
    const std::shared_ptr<AudioFile> file = prepare();
    node().scheduleSegment(file, 2 * sampleRate, sampleRate);
    node().play();
    // Also past its end.
    QVERIFY(hear(1.5));
    QCOMPARE(clock(), 1.5);
    QVERIFY(node().isPlaying());
}

void TestAudioEngineContract::lostDeviceStopsTheNodeAndKeepsTheClock()
{
    const std::shared_ptr<AudioFile> file = prepare();
    node().scheduleFile(file);
    node().play();
    QVERIFY(hear(0.5));
    loseDevice();
    QVERIFY(!m_engine->isRunning());
    QVERIFY(!node().isPlaying());
    QCOMPARE(clock(), 0.5);
    m_engine->start();
    QVERIFY(!node().isPlaying());
    node().play();
    QVERIFY(hear(0.25));
    QCOMPARE(clock(), 0.75);
}

void TestAudioEngineContract::bandsKeepWhatTheyAreGiven()
{
    EqualizerUnit &equalizer = m_engine->equalizer();
    QCOMPARE(equalizer.bandCount(), 10);
    QCOMPARE(equalizer.globalGain(), 0.0);
    for (int band = 0; band < equalizer.bandCount(); ++band) {
        const EqualizerBand wanted{
            .frequency = 100.0 * (band + 1), .bandwidth = 1, .gain = band - 5.0, .bypass = band % 2 == 0};
        equalizer.setBand(band, wanted);
        QCOMPARE(equalizer.band(band), wanted);
    }
    equalizer.setGlobalGain(-3.5);
    QCOMPARE(equalizer.globalGain(), -3.5);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestAudioEngineContract)
#include "tst_audio_engine_contract.moc"
