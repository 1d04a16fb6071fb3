// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: what the equalizer engine costs, how soon it sounds, and how long a switch is silent.
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Support/HeardSound.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"

#include <QCoreApplication>
#include <QProcess>

#include <clocale>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 60;
constexpr int marginSeconds = 30;
constexpr int startRuns = 9;
constexpr int switchRuns = 7;
constexpr double processorBar = 2.5;
constexpr double startBar = 1.5;
constexpr double gapBarMilliseconds = 150;

/// The player without its window, on the sound server of this program.
struct HeadlessPlayer
{
    explicit HeadlessPlayer(const MadeHome &home)
        : platform(home.platform())
        , library(platform)
        , equalizer(*platform.preferences,
                    std::make_unique<OutputAudioEngine>([link = std::make_shared<PulseLink>()] {
                        return std::make_unique<PulseOutput>(link);
                    }))
        , player(platform, library, {.equalizer = &equalizer})
    {
    }

    /// Plays and returns when the place in the song moves.
    void playUntilHeard(const QString &file)
    {
        player.playSong(songAt(file), {});
        if (!waitFor([this] { return player.currentTime() > 1; }, 20s))
            qFatal("the player does not play");
    }

    Platform platform;
    LocalMusicImportService library;
    EqualizerService equalizer;
    AudioPlayerService player;
};

/// The reference, playing beside ours: what else the machine does weighs on both alike.
class ReferencePlayer
{
public:
    explicit ReferencePlayer(const QString &file)
    {
        m_process.start(u"mpv"_s, {u"--no-config"_s, u"--no-video"_s, u"--ao=pulse"_s,
                                   u"--term-status-msg=at=${=time-pos}"_s, file});
        QByteArray output;
        const bool plays = waitFor(
            [&] {
                output += m_process.readAllStandardOutput() + m_process.readAllStandardError();
                return output.contains("at=1.");
            },
            20s);
        if (!plays)
            qFatal("the reference does not play: %s", output.constData());
        // Reading its messages would be work of ours.
        m_process.closeReadChannel(QProcess::StandardOutput);
        m_process.closeReadChannel(QProcess::StandardError);
    }
    ~ReferencePlayer()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(ReferencePlayer)

    ProcessUsage usage() const { return ProcessUsage(static_cast<pid_t>(m_process.processId())); }

private:
    QProcess m_process;
};

/// Processor time of both players over the same stretches.
struct Spent
{
    double ours = 0;
    double reference = 0;

    void measure(const ReferencePlayer &player, std::chrono::seconds length)
    {
        const ProcessUsage own;
        const ProcessUsage other = player.usage();
        ours -= own.processorSeconds();
        reference -= other.processorSeconds();
        letPass(length);
        ours += own.processorSeconds();
        reference += other.processorSeconds();
    }
};

void tellProcessorTime(Report &report, const MadeHome &home)
{
    constexpr auto slice = 5s;
    constexpr auto settling = 1500ms;
    constexpr int states = 3;
    const int slices = std::max(1, measuredSeconds(usualSeconds) / int(slice.count()));
    const QString file = makeSound(home, u"long.mp3"_s, slices * states * 7 + marginSeconds);
    // Every band moved, and none of them by the same amount as its neighbour.
    constexpr EqualizerGains moved{5, -4, 6, -3, 2, -6, 4, -2, 3, -5};
    const ReferencePlayer reference(file);
    HeadlessPlayer headless(home);
    headless.playUntilHeard(file);
    Spent bands;
    Spent neutral;
    Spent stream;
    for (int i = 0; i < slices; ++i) {
        letPass(settling);
        stream.measure(reference, slice);
        headless.equalizer.setBands(moved);
        headless.equalizer.setEnabled(true);
        letPass(settling);
        bands.measure(reference, slice);
        if (!headless.player.usingEqualizerEngine() || !headless.player.isPlaying())
            qFatal("the song does not play on the equalizer engine");
        headless.equalizer.setCurrentPreset(EqualizerPreset::flat);
        letPass(settling);
        neutral.measure(reference, slice);
        headless.equalizer.setEnabled(false);
    }
    const QString what = u"processor time of an MP3 for %1 s, "_s.arg(slices * slice.count());
    const auto tell = [&](const QString &how, const Spent &spent, std::optional<double> bar) {
        report.add({.what = what + how,
                    .value = spent.ours,
                    .unit = u"s"_s,
                    .reference = Reference{u"mpv --no-video --ao=pulse"_s, spent.reference},
                    .bar = bar});
    };
    tell(u"ten bands moved"_s, bands, processorBar);
    tell(u"ten bands at 0 dB"_s, neutral, std::nullopt);
    tell(u"equalizer off"_s, stream, std::nullopt);
    report.add({.what = u"ten bands moved against ten bands at 0 dB"_s,
                .value = bands.ours,
                .unit = u"s"_s,
                .reference = Reference{u"at 0 dB"_s, neutral.ours}});
    report.add({.what = u"ten bands moved against the equalizer off"_s,
                .value = bands.ours,
                .unit = u"s"_s,
                .reference = Reference{u"stream player"_s, stream.ours}});
}

/// Seconds to the first sound of a player's first song, and of the one after it.
struct Starts
{
    QList<double> first;
    QList<double> next;
};

void measureStart(Starts &starts, const MadeHome &home, Recorder &recorder, bool onEngine)
{
    HeadlessPlayer headless(home);
    headless.equalizer.setEnabled(onEngine);
    const Song first = songAt(home.path(u"Music/Cadorel/first.mp3"_s));
    const Song next = songAt(home.path(u"Music/Cadorel/next.mp3"_s));
    starts.first.append(secondsToSound(recorder, [&] { headless.player.playSong(first, {}); }));
    headless.player.pause();
    starts.next.append(secondsToSound(recorder, [&] { headless.player.playSong(next, {}); }));
    if (headless.player.usingEqualizerEngine() != onEngine)
        qFatal("the song does not play where it should");
    headless.player.pause();
}

void tellStart(Report &report, const MadeHome &home, Recorder &recorder)
{
    constexpr int soundSeconds = 5;
    makeSound(home, u"first.mp3"_s, soundSeconds);
    makeSound(home, u"next.mp3"_s, soundSeconds);
    Starts stream;
    Starts engine;
    for (int run = 0; run < startRuns; ++run) {
        measureStart(stream, home, recorder, false);
        measureStart(engine, home, recorder, true);
    }
    report.add({.what = u"first sound of the first song, equalizer engine"_s,
                .value = median(engine.first),
                .unit = u"s"_s,
                .reference = Reference{u"stream player"_s, median(stream.first)},
                .bar = startBar});
    report.add({.what = u"first sound of the next song, equalizer engine"_s,
                .value = median(engine.next),
                .unit = u"s"_s,
                .reference = Reference{u"stream player"_s, median(stream.next)},
                .bar = startBar});
}

/// The longest time without sound, in milliseconds.
double longestGap(const std::vector<float> &samples)
{
    std::size_t longest = 0;
    std::size_t silent = 0;
    for (const float sample : samples) {
        silent = std::abs(sample) > audibleAmplitude ? 0 : silent + 1;
        longest = std::max(longest, silent);
    }
    return static_cast<double>(longest) * 1000 / Recorder::sampleRate;
}

void tellSwitch(Report &report, const MadeHome &home, Recorder &recorder)
{
    constexpr int soundSeconds = 120;
    const QString file = makeSound(home, u"switched.mp3"_s, soundSeconds);
    HeadlessPlayer headless(home);
    headless.playUntilHeard(file);
    QList<double> on;
    QList<double> off;
    for (int run = 0; run < switchRuns; ++run) {
        for (const bool enabled : {true, false}) {
            letPass(1s);
            recorder.clear();
            headless.equalizer.setEnabled(enabled);
            if (!recorder.hear(2s))
                qFatal("nothing is recorded");
            if (headless.player.usingEqualizerEngine() != enabled || !headless.player.isPlaying())
                qFatal("the song does not go on");
            (enabled ? on : off).append(longestGap(recorder.samples()));
        }
    }
    report.add({.what = u"audible gap of switching the equalizer on"_s,
                .value = median(on),
                .unit = u"ms"_s,
                .bar = gapBarMilliseconds});
    report.add({.what = u"audible gap of switching the equalizer off"_s,
                .value = median(off),
                .unit = u"ms"_s,
                .bar = gapBarMilliseconds});
    report.add({.what = u"the longest of these gaps"_s,
                .value = std::max(std::ranges::max(on), std::ranges::max(off)),
                .unit = u"ms"_s});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // as the program does, for libmpv
    Report report;
    const MadeHome home;
    SoundServer server;
    if (!server.start())
        qFatal("no sound server");
    tellProcessorTime(report, home);
    Recorder recorder(server);
    tellStart(report, home, recorder);
    tellSwitch(report, home, recorder);
    return 0;
}
