// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/ConsoleLines.h"
#include "Fakes/TestPlatform.h"
#include "Fixtures/Sound/MarkedSound.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <clocale>
#include <memory>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// The engine is told from the stream player by how loud it plays.
constexpr float preamp = -6;
constexpr double betweenLevels = 0.75;
constexpr float audible = 0.0005F;

// What the player says, before the position that it hands over.
const QString toEngineLine = u"🎛️ 切换到均衡器引擎，位置: "_s;
const QString toStreamLine = u"🎛️ 切换回 AVPlayer，位置: "_s;

constexpr double positionTolerance = 0.05; // seconds
constexpr double longestGap = 0.15;
constexpr double longestOverlap = 0.005;
constexpr double longestStall = 0.03;

/// What is heard of one switch, in seconds.
struct Switch
{
    bool toEngine = false;
    double handed = 0;  ///< the position that one engine told the other
    double left = 0;    ///< where in the song the one fell silent
    double resumed = 0; ///< where the other began
    double gap = 0;     ///< nothing was heard
    double overlap = 0; ///< both were heard
};

} // namespace

/// The two engines and the player between them, all real, by what a sound device plays.
class EngineSwitchingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void soundGoesOnWhereItWas();
    void pausedItStaysSilentAndGoesOnWhereItWas();

private:
    /// The switch that a recording holds.
    std::optional<Switch> switchIn(std::span<const float> recording, bool toEngine) const;
    /// Hears so much after what it has heard already.
    bool hearMore(std::chrono::milliseconds length)
    {
        const std::size_t heard = m_recorder->samples().size() / Recorder::samplesIn(1ms);
        return m_recorder->hear(std::chrono::milliseconds(heard) + length);
    }
    /// The position in the last line that begins so.
    std::optional<double> handedPosition(const QString &beginning);
    static double median(std::vector<double> values)
    {
        std::ranges::sort(values);
        return values[values.size() / 2];
    }

    QTemporaryDir m_directory;
    const MarkedSound m_sound{40};
    Song m_song;

    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<ConsoleLines> m_console;
    std::unique_ptr<TestPlatform> m_home;
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<EqualizerService> m_equalizer;
    std::unique_ptr<AudioPlayerService> m_player;
};

void EngineSwitchingTest::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
    std::setlocale(LC_NUMERIC, "C"); // as the program does, for libmpv
    const QString path = m_directory.filePath(u"song.wav"_s);
    QVERIFY(m_sound.write(path));
    SongFields fields;
    fields.id = u"song"_s;
    fields.title = u"Song"_s;
    fields.assetURL = QUrl::fromLocalFile(path);
    m_song = Song(fields);
}

void EngineSwitchingTest::init()
{
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->start());
    m_recorder = std::make_unique<Recorder>(*m_server);
    m_console = std::make_unique<ConsoleLines>();
    m_home = std::make_unique<TestPlatform>();
    Platform &platform = m_home->platform;
    platform.clock = std::make_unique<SystemClock>();
    platform.assetReader = std::make_unique<FileAssetReader>();
    platform.makeStreamPlayer = [&platform] {
        return std::make_unique<MpvStreamPlayer>(*platform.assetReader,
                                                 QList<MpvHandle::Option>{{"ao", "pulse"}});
    };
    m_importService = std::make_unique<LocalMusicImportService>(platform);
    m_equalizer = std::make_unique<EqualizerService>(
        *platform.preferences,
        std::make_unique<OutputAudioEngine>(
            [link = std::make_shared<PulseLink>()] { return std::make_unique<PulseOutput>(link); },
            DecodedAudioFile::open));
    m_equalizer->setPreampGain(preamp);
    m_player = std::make_unique<AudioPlayerService>(platform, *m_importService,
                                                    AudioPlayerParts{.equalizer = m_equalizer.get()});
}

void EngineSwitchingTest::cleanup()
{
    m_player.reset();
    m_equalizer.reset();
    m_importService.reset();
    m_home.reset();
    m_console.reset();
    m_recorder.reset();
    m_server.reset();
}

std::optional<double> EngineSwitchingTest::handedPosition(const QString &beginning)
{
    std::optional<double> position;
    for (const QString &line : m_console->take()) {
        if (line.startsWith(beginning))
            position = line.sliced(beginning.size()).toDouble();
    }
    return position;
}

std::optional<Switch> EngineSwitchingTest::switchIn(std::span<const float> recording, bool toEngine) const
{
    // Which moments are the one's and which the other's.
    const std::vector<MarkedSound::Moment> moments = m_sound.follow(recording);
    const auto isOf = [](const MarkedSound::Moment &moment, bool engine) {
        return moment.place && (moment.place->level < betweenLevels) == engine;
    };
    const auto begun = std::ranges::find_if(
        moments, [&](const MarkedSound::Moment &moment) { return isOf(moment, toEngine); });
    const auto lastBefore =
        std::find_if(std::make_reverse_iterator(begun), moments.rend(),
                     [&](const MarkedSound::Moment &moment) { return isOf(moment, !toEngine); });
    if (begun == moments.end() || lastBefore == moments.rend())
        return std::nullopt;

    // Around it in pieces of 2.5 ms: how much of it is the one, going on, and how much the other, begun
    // before.
    constexpr std::ptrdiff_t pieceSamples = MarkedSound::sampleRate / 400;
    constexpr double heard = 0.1;
    Switch found;
    found.toEngine = toEngine;
    std::optional<double> resumed;
    const std::ptrdiff_t first = lastBefore->recorded;
    const std::ptrdiff_t last =
        std::min(begun->recorded + 5 * MarkedSound::momentSamples, std::ssize(recording) - pieceSamples);
    for (std::ptrdiff_t at = first; at < last; at += pieceSamples) {
        const std::ptrdiff_t before = lastBefore->place->sample + (at - lastBefore->recorded);
        const std::ptrdiff_t after = begun->place->sample + (at - begun->recorded);
        const auto piece = recording.subspan(static_cast<std::size_t>(at), pieceSamples);
        const MarkedSound::Mix mix = m_sound.mix(piece, before, after);
        const bool hasOne = std::abs(mix.first) > heard;
        const bool hasOther = std::abs(mix.second) > heard;
        constexpr double length = static_cast<double>(pieceSamples) / MarkedSound::sampleRate;
        if (hasOne)
            found.left = static_cast<double>(before + pieceSamples) / MarkedSound::sampleRate;
        if (hasOther && !resumed)
            resumed = static_cast<double>(after) / MarkedSound::sampleRate;
        if (hasOne && hasOther)
            found.overlap += length;
        if (!hasOne && !hasOther)
            found.gap += length;
    }
    found.resumed = resumed.value_or(-1);
    return found;
}

void EngineSwitchingTest::soundGoesOnWhereItWas()
{
    constexpr int switches = 10;
    m_player->playSong(m_song, {});
    QVERIFY(m_recorder->hearSound(audible, 10s));
    QVERIFY(m_recorder->hear(1500ms));

    struct Command
    {
        std::size_t recorded;
        double handed;
    };
    std::vector<Command> commands;
    for (int i = 0; i < switches; ++i) {
        const bool toEngine = i % 2 == 0;
        const std::size_t recorded = m_recorder->samples().size();
        m_console->take();
        m_equalizer->setEnabled(toEngine);
        QTRY_COMPARE(m_player->usingEqualizerEngine(), toEngine);
        const std::optional<double> handed = handedPosition(toEngine ? toEngineLine : toStreamLine);
        QVERIFY(handed.has_value());
        commands.push_back({recorded, *handed});
        QVERIFY(hearMore(1500ms));
        QVERIFY(m_player->isPlaying());
    }
    m_player->pause();

    std::vector<Switch> heard;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const std::size_t from = commands[i].recorded - Recorder::samplesIn(300ms);
        const std::span<const float> recording = m_recorder->samples();
        const std::size_t to = i + 1 < commands.size() ? commands[i + 1].recorded : recording.size();
        std::optional<Switch> found = switchIn(recording.subspan(from, to - from), i % 2 == 0);
        QVERIFY2(found.has_value(), qPrintable(u"switch %1"_s.arg(i)));
        found->handed = commands[i].handed;
        heard.push_back(*found);
    }

    std::vector<double> gaps;
    QStringList table{u"      to   handed    resumed   left ms   gap ms  overlap ms"_s};
    for (const Switch &each : heard) {
        table << u"%1 %2 s %3 ms %4 ms %5 ms %6 ms"_s.arg(each.toEngine ? u" engine"_s : u" stream"_s)
                     .arg(each.handed, 8, 'f', 3)
                     .arg((each.resumed - each.handed) * 1000, 7, 'f', 1)
                     .arg((each.left - each.handed) * 1000, 7, 'f', 1)
                     .arg(each.gap * 1000, 6, 'f', 1)
                     .arg(each.overlap * 1000, 6, 'f', 1);
        gaps.push_back(each.gap);
    }
    qInfo().noquote() << table.join(u'\n');
    for (const Switch &each : heard) {
        QVERIFY(std::abs(each.resumed - each.handed) <= positionTolerance);
        QVERIFY(each.overlap <= longestStall);
    }
    // Where the sound server itself gets no processor, what it has yet to fade out comes late: once, not
    // again.
    QVERIFY(std::ranges::count_if(heard, [](const Switch &each) { return each.overlap > longestOverlap; }) <=
            1);
    // A busy machine may hold one of them up, not most.
    QVERIFY(median(gaps) <= longestGap);
}

void EngineSwitchingTest::pausedItStaysSilentAndGoesOnWhereItWas()
{
    constexpr int switches = 6;
    std::vector<double> deviations;
    m_player->playSong(m_song, {});
    QVERIFY(m_recorder->hearSound(audible, 10s));
    for (int i = 0; i < switches; ++i) {
        const bool toEngine = i % 2 == 0;
        QVERIFY(hearMore(700ms));
        m_player->pause();
        QVERIFY(m_recorder->hearSilence(300ms, 5s));
        const std::optional<double> left = m_sound.endOf(m_recorder->samples(), m_player->currentTime());
        QVERIFY(left.has_value());
        m_recorder->clear();
        m_equalizer->setEnabled(toEngine);
        QTRY_COMPARE(m_player->usingEqualizerEngine(), toEngine);
        QVERIFY(hearMore(500ms));
        QCOMPARE(m_recorder->firstAbove(audible), -1);
        QVERIFY(!m_player->isPlaying());
        const double stands = m_player->currentTime();
        deviations.push_back(std::abs(stands - *left));

        m_player->play();
        QVERIFY(m_recorder->hearSound(audible, 5s));
        QVERIFY(hearMore(300ms));
        const auto moments = m_sound.follow(m_recorder->samples());
        const auto first =
            std::ranges::find_if(moments, [](const auto &moment) { return moment.place.has_value(); });
        QVERIFY(first != moments.end());
        QVERIFY2(std::abs(first->place->seconds() - stands) <= positionTolerance,
                 qPrintable(u"goes on at %1 s, stood at %2 s"_s.arg(first->place->seconds()).arg(stands)));
        QCOMPARE(first->place->level < betweenLevels, toEngine);
    }
    // On a busy machine sound can go on for a while after it was told to stop.
    QVERIFY(median(deviations) <= positionTolerance);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::EngineSwitchingTest)
#include "tst_engine_switching.moc"
