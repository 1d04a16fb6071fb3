// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: what each page of the full-screen player costs in each look while a song plays, and nothing while
// it is paused, on a desktop without a graphics card: blurred cover behind it, bars and dancer about the
// cassette, blurred lyrics.
#include "Fixtures/Sound/SoundServer.h"
#include "Models/NowPlayingBackgroundStyle.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/AppearanceSettings.h"
#include "Support/Frames.h"
#include "Support/MadeSound.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Theme/ThemeManager.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 20;
constexpr int frameSeconds = 5;
constexpr int songSeconds = 900;
constexpr int secondsOfALine = 3;
constexpr int coverSide = 600;
constexpr double percent = 100;
constexpr double barPercent = 35;
constexpr double barMs = 16;
constexpr double pausedBarPercent = 0.1;

const QStringList pages{u"cover"_s, u"lyrics"_s, u"queue"_s};

/// A picture with something everywhere, as a photograph has.
QString makeCover(const MadeHome &home)
{
    QImage image(coverSide, coverSide, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), QColor(60, 90, 160));
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 200; ++i) {
        painter.setBrush(QColor::fromHsv(i * 53 % 360, 180, 80 + i % 170, 120));
        painter.drawEllipse(QPoint(i * 131 % coverSide, i * 71 % coverSide), 10 + i % 40, 10 + i % 30);
    }
    painter.end();
    QString path = home.path(u"cover.jpg"_s);
    if (!image.save(path))
        qFatal("the cover could not be made");
    return path;
}

QString timedLyrics()
{
    const QStringList words{u"夜色里的灯火照着我们回家"_s, u"风吹过无人的码头"_s,
                            u"The night is long and the road is winding on"_s, u"远处传来海的声音"_s};
    QString text;
    for (int i = 0; i * secondsOfALine < songSeconds; ++i) {
        const int at = i * secondsOfALine;
        text += QString::asprintf("[%02d:%02d.00]", at / 60, at % 60) + words.at(i % words.size()) + u'\n';
    }
    return text;
}

/// A song with cover and lyrics, which the next start brings back.
void makeSong(const MadeHome &home)
{
    const QString sound = makeSound(home, u"sound.flac"_s, songSeconds);
    const QString song = home.directories().documents + "/song.flac"_L1;
    const int code = QProcess::execute(u"ffmpeg"_s, {u"-v"_s,
                                                     u"error"_s,
                                                     u"-y"_s,
                                                     u"-i"_s,
                                                     sound,
                                                     u"-i"_s,
                                                     makeCover(home),
                                                     u"-map"_s,
                                                     u"0:a"_s,
                                                     u"-map"_s,
                                                     u"1:v"_s,
                                                     u"-c"_s,
                                                     u"copy"_s,
                                                     u"-disposition:v"_s,
                                                     u"attached_pic"_s,
                                                     u"-metadata"_s,
                                                     u"title=潮汐与灯塔"_s,
                                                     u"-metadata"_s,
                                                     u"LYRICS="_s + timedLyrics(),
                                                     song});
    if (code != 0 || !QFile::remove(sound))
        qFatal("the song to measure with could not be made");
    leaveSnapshot(home, song);
}

void choose(const MadeHome &home, ThemeType type)
{
    SqlitePreferences preferences(home.directories().applicationSupport + "/preferences.sqlite"_L1);
    preferences.setString(QLatin1StringView(ThemeManager::themeStorageKey), rawValue(type));
    preferences.setString(appearanceKeys::backgroundStylePrefix + rawValue(type),
                          rawValue(NowPlayingBackgroundStyle::blur));
}

/// The player in a look, playing, its full-screen player open.
class Scene
{
public:
    Scene(const MadeHome &home, const VirtualDisplay &display, const SoundServer &server, bool tellsFrames)
        : m_server(server)
        , m_player(home, display, [tellsFrames](QProcessEnvironment &environment) {
            environment.insert(u"PULSE_SERVER"_s, qEnvironmentVariable("PULSE_SERVER"));
            environment.insert(u"QSG_RHI_BACKEND"_s, u"opengl"_s);
            if (tellsFrames)
                environment.insert(u"QT_LOGGING_RULES"_s,
                                   u"cadorel.app.info=true;qt.scenegraph.time.renderloop=true"_s);
        })
    {
        m_player.waitForScan();
        m_player.typeKey(u"space"_s);
        if (!waitFor([this] { return isPlaying(); }, 20s))
            qFatal("the player does not play");
        m_player.typeKey(u"ctrl+p"_s);
        letPass(3s);
    }

    void nextPage()
    {
        m_player.typeKey(u"Next"_s);
        letPass(3s);
    }
    void pause()
    {
        m_player.typeKey(u"space"_s);
        if (!waitFor([this] { return !isPlaying(); }, 20s))
            qFatal("the player does not pause");
        m_player.waitUntilIdle();
    }
    /// Part of a core that it takes.
    double load() const
    {
        const int seconds = measuredSeconds(usualSeconds);
        const double before = m_player.usage().processorSeconds();
        letPass(std::chrono::seconds(seconds));
        return (m_player.usage().processorSeconds() - before) / seconds;
    }
    /// Milliseconds of each frame: bringing it to the thread that draws, and drawing.
    QList<double> frames()
    {
        static const QRegularExpression told(u"frame rendered in (\\d+)ms"_s);
        m_player.takeMessages();
        letPass(std::chrono::seconds(frameSeconds));
        QList<double> frames;
        for (const auto &match : told.globalMatch(QString::fromUtf8(m_player.takeMessages())))
            frames.append(match.captured(1).toDouble());
        return frames;
    }

private:
    bool isPlaying() const { return m_server.streams().contains("Corked: no"); }

    const SoundServer &m_server;
    RunningPlayer m_player;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const MadeHome home;
    makeSong(home);
    SoundServer server;
    if (!server.start())
        qFatal("no sound server");
    const VirtualDisplay display;
    // The library learns cover and lyrics of the song.
    RunningPlayer(home, display).waitForScan();
    for (const ThemeType type : allThemeTypes()) {
        choose(home, type);
        QList<QList<double>> frames;
        {
            Scene scene(home, display, server, true);
            for (const QString &page : pages) {
                if (page != pages.first())
                    scene.nextPage();
                frames.append(scene.frames());
            }
        }
        Scene scene(home, display, server, false);
        for (const QString &page : pages) {
            if (page != pages.first())
                scene.nextPage();
            report.add({.what = u"%1, %2: playing"_s.arg(rawValue(type), page),
                        .value = scene.load() * percent,
                        .unit = u"% CPU"_s,
                        .bar = barPercent});
            const QList<double> times = frames.takeFirst();
            report.add({.what = u"  frame, median of %1 in %2 s"_s.arg(times.size()).arg(frameSeconds),
                        .value = middleFrame(times),
                        .unit = u"ms"_s});
            report.add(
                {.what = u"  99th percentile"_s, .value = lateFrame(times), .unit = u"ms"_s, .bar = barMs});
        }
        scene.pause();
        report.add({.what = u"%1: paused"_s.arg(rawValue(type)),
                    .value = scene.load() * percent,
                    .unit = u"% CPU"_s,
                    .bar = pausedBarPercent});
    }
    return 0;
}
