// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/MarkedSound.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Platform/Pulse/MediaRole.h"
#include "Platform/Pulse/PulseOutputDevices.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <clocale>
#include <memory>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float audible = 0.01F;
constexpr int patienceMs = 20'000;
constexpr auto patience = 20s;

/// One of the two engines, and what it takes to hear it.
class Sounding
{
public:
    virtual ~Sounding() = default;
    virtual void play(const QString &file) = 0;
    virtual void stop() = 0;
};

class StreamSound : public Sounding
{
public:
    explicit StreamSound(const OutputDevices &devices)
        : m_player(m_reader, {{"ao", "pulse"}})
    {
        m_player.follow(devices);
    }
    void play(const QString &file) override
    {
        m_player.replaceCurrentItem(m_player.makeItem({.url = QUrl::fromLocalFile(file)}));
        m_player.play();
    }
    void stop() override { m_player.replaceCurrentItem(nullptr); }

private:
    FakeAssetReader m_reader;
    MpvStreamPlayer m_player;
};

class EqualizerSound : public Sounding
{
public:
    explicit EqualizerSound(const OutputDevices &devices)
        : m_engine(std::make_unique<OutputAudioEngine>([link = std::make_shared<PulseLink>(), &devices] {
            return std::make_unique<PulseOutput>(link, devices.chosenDevice().toUtf8());
        }))
    {
    }
    void play(const QString &file) override
    {
        const auto opened = m_engine->openFile(QUrl::fromLocalFile(file));
        m_engine->connectNodes(opened->processingFormat());
        m_engine->start();
        m_engine->playerNode().scheduleSegment(opened, 0, opened->length());
        m_engine->playerNode().play();
    }
    void stop() override
    {
        m_engine->playerNode().stop();
        // Another format closes the device.
        m_engine->connectNodes({.sampleRate = 8000, .channelCount = 1});
    }

private:
    std::unique_ptr<OutputAudioEngine> m_engine;
};

} // namespace

/// Where the sound of both engines goes, heard at two devices.
class TestOutputDevicesSound : public QObject
{
    Q_OBJECT
private:
    const MarkedSound m_sound{40};
    SoundFiles m_files;
    QString m_file;
    std::unique_ptr<SoundServer> m_server;
    QByteArray m_usb;
    std::unique_ptr<PulseOutputDevices> m_devices;
    std::unique_ptr<Recorder> m_atSpeaker;
    std::unique_ptr<Recorder> m_atUsb;
    std::unique_ptr<Sounding> m_engine;

    /// The id of the device that is marked as the one in use; empty for none.
    QString inUse() const
    {
        const QList<OutputDevice> devices = m_devices->devices();
        const auto found = std::ranges::find(devices, true, &OutputDevice::isInUse);
        return found == devices.cend() ? QString() : found->id;
    }
    /// Where in the sound those moments of a recording are from that are like a place of it, in seconds.
    QList<double> placesIn(const Recorder &recorder) const
    {
        QList<double> places;
        for (const MarkedSound::Moment &moment : m_sound.follow(recorder.samples()))
            if (moment.place)
                places.append(moment.place->seconds());
        return places;
    }

    void makeEngine()
    {
        QFETCH_GLOBAL(const bool, equalizer);
        if (equalizer)
            m_engine = std::make_unique<EqualizerSound>(*m_devices);
        else
            m_engine = std::make_unique<StreamSound>(*m_devices);
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("equalizer");
        QTest::newRow("stream player") << false;
        QTest::newRow("equalizer engine") << true;
    }
    void initTestCase()
    {
        QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
        std::setlocale(LC_NUMERIC, "C");
        declareMusic();
        m_file = m_files.path(u"marked.wav"_s);
        QVERIFY(m_sound.write(m_file));
    }
    void init()
    {
        m_server = std::make_unique<SoundServer>();
        QVERIFY(m_server->start());
        m_usb = m_server->addDevice(u"usb"_s, u"USB"_s);
        QVERIFY(!m_usb.isEmpty());
        m_devices = std::make_unique<PulseOutputDevices>();
        m_devices->activate();
        QTRY_COMPARE_WITH_TIMEOUT(m_devices->devices().size(), 2, patienceMs);
        m_atSpeaker = std::make_unique<Recorder>(*m_server);
        m_atUsb = std::make_unique<Recorder>(*m_server, u"usb"_s);
        makeEngine();
    }
    void cleanup()
    {
        m_engine.reset();
        m_atUsb.reset();
        m_atSpeaker.reset();
        m_devices.reset();
        m_server.reset();
    }

    void withoutAChoiceItIsTheDefault()
    {
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"out"_s, patienceMs);
        QVERIFY(m_atUsb->hear(300ms));
        QCOMPARE(m_atUsb->firstAbove(audible), -1);
    }
    void whatPlaysGoesOnAtTheChosenDevice()
    {
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"out"_s, patienceMs);
        m_atSpeaker->clear();
        QVERIFY(m_atSpeaker->hear(1500ms));
        m_devices->choose(u"usb"_s);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QVERIFY(m_atSpeaker->hearSilence(500ms, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"usb"_s, patienceMs);
        QVERIFY(m_atUsb->hear(1000ms));
        // It was moved and not begun anew: it goes on behind what the first device has played.
        const QList<double> taken = placesIn(*m_atUsb);
        QVERIFY(!taken.isEmpty());
        QVERIFY2(taken.constFirst() > 1, qPrintable(u"%1 s"_s.arg(taken.constFirst())));
    }
    void whatPlaysNextBeginsAtTheChosenDevice()
    {
        m_devices->choose(u"usb"_s);
        m_engine->play(m_file);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QVERIFY(m_atSpeaker->hear(300ms));
        QCOMPARE(m_atSpeaker->firstAbove(audible), -1);
    }
    void aDeviceThatWasChosenWhilePlayingCountsForTheNextSong()
    {
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"out"_s, patienceMs);
        m_devices->choose(u"usb"_s);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        m_engine->stop();
        QVERIFY(m_atUsb->hearSilence(500ms, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), QString(), patienceMs);
        m_atSpeaker->clear();
        m_atUsb->clear();
        m_engine->play(m_file);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QVERIFY(m_atSpeaker->hear(300ms));
        QCOMPARE(m_atSpeaker->firstAbove(audible), -1);
    }
    void theDefaultTakesTheSoundBack()
    {
        m_devices->choose(u"usb"_s);
        m_engine->play(m_file);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"usb"_s, patienceMs);
        m_devices->choose(QString());
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QVERIFY(m_atUsb->hearSilence(500ms, patience));
    }
    void whenTheChosenDeviceGoesAwayTheNextSongPlaysOnTheDefault()
    {
        m_devices->choose(u"usb"_s);
        m_engine->play(m_file);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QSignalSpy losses(m_devices.get(), &OutputDevices::chosenDeviceLost);
        m_atUsb.reset();
        QVERIFY(m_server->unload(m_usb));
        QTRY_COMPARE_WITH_TIMEOUT(losses.count(), 1, patienceMs);
        m_engine->stop();
        QVERIFY(m_atSpeaker->hearSilence(500ms, patience));
        m_atSpeaker->clear();
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
    }
    void theChoiceIsForgottenByAServerThatRemembers()
    {
        QVERIFY(!m_server->ask({u"load-module"_s, u"module-stream-restore"_s}).isEmpty());
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"out"_s, patienceMs);
        m_devices->choose(u"usb"_s);
        QVERIFY(m_atUsb->hearSound(audible, patience));
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"usb"_s, patienceMs);

        // Somebody else's music is none of ours.
        const std::unique_ptr<QProcess> other = m_server->other(u"music"_s);
        const auto othersPlace = [this] {
            const QByteArrayList streams =
                m_server->ask({u"list"_s, u"short"_s, u"sink-inputs"_s}).split('\n');
            const QByteArray sinks = m_server->ask({u"list"_s, u"short"_s, u"sinks"_s});
            if (streams.size() != 2)
                return QByteArray();
            for (const QByteArray &sink : sinks.split('\n'))
                if (sink.startsWith(streams.last().split('\t').value(1) + '\t'))
                    return sink.split('\t').value(1);
            return QByteArray();
        };
        QTRY_COMPARE_WITH_TIMEOUT(othersPlace(), "out"_ba, patienceMs);
        other->kill();
        QVERIFY(other->waitForFinished());

        // The next run of the program.
        m_engine.reset();
        QVERIFY(m_atUsb->hearSilence(500ms, patience));
        m_devices = std::make_unique<PulseOutputDevices>();
        m_devices->activate();
        QTRY_COMPARE_WITH_TIMEOUT(m_devices->devices().size(), 2, patienceMs);
        makeEngine();
        m_atSpeaker->clear();
        m_atUsb->clear();
        m_engine->play(m_file);
        QVERIFY(m_atSpeaker->hearSound(audible, patience));
        QVERIFY(m_atUsb->hear(300ms));
        QCOMPARE(m_atUsb->firstAbove(audible), -1);
    }
    void aDeviceThatTheListenerMovesTheSoundToByOtherMeansIsMarked()
    {
        m_engine->play(m_file);
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"out"_s, patienceMs);
        const QByteArray stream =
            m_server->ask({u"list"_s, u"short"_s, u"sink-inputs"_s}).split('\t').first();
        QVERIFY(!m_server->ask({u"move-sink-input"_s, QString::fromLatin1(stream), u"usb"_s}).isNull());
        QTRY_COMPARE_WITH_TIMEOUT(inUse(), u"usb"_s, patienceMs);
        QCOMPARE(m_devices->chosenDevice(), QString());
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestOutputDevicesSound)
#include "tst_output_devices_sound.moc"
