// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: what it costs to blur a cover, and what the background of the Now Playing screen and the bars
// about the cover cost while something plays.
#include "Components/BackdropImageProvider.h"
#include "Components/BackdropPainter.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/PlayerBench.h"
#include "Services/Cloud/CoverImage.h"
#include "Services/ThemeService.h"
#include "Support/Backends.h"
#include "Support/Frames.h"
#include "Support/MadeHome.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/CoverRegistry.h"
#include "Views/UserInterface.h"

#include <QBuffer>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <utility>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 5;
constexpr int coverSide = 600;
constexpr int coverCount = 40;
constexpr double nsPerMs = 1e6;
constexpr double percent = 100;
constexpr double msPerSecond = 1000;
constexpr double barPercent = 35;
constexpr double barRatio = 1.5;
constexpr QSize phone(390, 844);
constexpr std::chrono::milliseconds tick{80};

constexpr auto scene = R"(
import QtQuick
import Cadorel

Item {
    id: root

    required property AudioPlayerService player
    required property string coverSource

    NowPlayingBackdrop { id: backdrop; anchors.fill: parent; coverSource: root.coverSource }
    AlbumCoverView {
        objectName: "cover"
        x: 20
        y: 90
        width: 350
        height: 350
        player: root.player
        coverSource: root.coverSource
        waveColor: backdrop.accentColor
    }
}
)";

/// A picture with something everywhere, as a photograph has, encoded as most covers are.
QByteArray madeBusyCover(int number)
{
    QImage image(coverSide, coverSide, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, coverSide, coverSide);
    gradient.setColorAt(0, QColor::fromHsv(number * 37 % 360, 200, 220));
    gradient.setColorAt(1, QColor::fromHsv(number * 91 % 360, 220, 90));
    painter.fillRect(image.rect(), gradient);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 200; ++i) {
        painter.setBrush(QColor::fromHsv(i * 53 % 360, 180, 80 + i % 170, 120));
        painter.drawEllipse(QPoint(i * 131 % coverSide, i * 71 % coverSide), 10 + i % 40, 10 + i % 30);
    }
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 90);
    return buffer.data();
}

QString addressOf(int number)
{
    Song song = fileSong(u"bench %1"_s.arg(number));
    song.setArtworkData(ArtworkData(madeBusyCover(number)));
    return CoverRegistry::shared().source(song);
}

/// Beside what the decoding costs, which is to be paid anyway.
void measureBlur(const MadeHome &)
{
    Report report;
    for (const double blur : {BackdropImageProvider::largestBlur, 30.0, 5.0}) {
        const BackdropDrawing drawing{.blur = blur, .saturation = BackdropImageProvider::coverSaturation};
        QList<double> painted;
        QList<double> decoded;
        for (int i = 0; i < coverCount; ++i) {
            const QByteArray bytes = madeBusyCover(i);
            QElapsedTimer clock;
            clock.start();
            const QImage cover = decodedCover(bytes, 2 * backdropSide(blur));
            decoded.append(static_cast<double>(clock.nsecsElapsed()) / nsPerMs);
            clock.start();
            if (paintBackdrop(cover, drawing).isNull())
                qFatal("no picture");
            painted.append(static_cast<double>(clock.nsecsElapsed()) / nsPerMs);
        }
        report.add({.what = u"blur of %1, of a cover of %2 pixels, on a worker"_s.arg(blur).arg(coverSide),
                    .value = median(painted),
                    .unit = u"ms"_s,
                    .reference = Reference{.what = u"decoding it"_s, .value = median(decoded)}});
    }
}

class Screen
{
public:
    Screen()
    {
        installFonts();
        m_service.setCassetteStyle(CassetteStyle::none);
        installUserInterface(m_engine, {.desktopAppearance = &m_appearance,
                                        .themeManager = &m_manager,
                                        .kawaiiDecorations = &m_decorations,
                                        .themeService = &m_service});
        AudioPlayerService &player = m_player.start();
        QQmlComponent component(&m_engine);
        component.setData(scene, QUrl());
        m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{u"player"_s, QVariant::fromValue(&player)}, {u"coverSource"_s, addressOf(1)}})));
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(phone);
        m_window.resize(phone);
        showWindow(m_window);
        m_player.equalizer.enabled = true;
        player.playSong(fileSong(u"playing"_s), {});
        watch();
        letPass(1s);
    }

    void switchTo(ThemeType type)
    {
        m_manager.switchTo(type);
        letPass(1s);
    }
    void setRing(bool shows) { m_service.setSoundWaveRing(shows); }

    /// Plays for a while at the pace of the player's own clock. @return the part of a core that it took, and
    /// the milliseconds of a core for each frame
    std::pair<double, double> play()
    {
        m_frameMs.clear();
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { m_player.home.clock().advance(tick); });
        timer.start(tick);
        const ProcessUsage usage;
        const double before = usage.processorSeconds();
        const int seconds = measuredSeconds(usualSeconds);
        letPass(std::chrono::seconds(seconds));
        const double used = usage.processorSeconds() - before;
        const double frameCount = std::max(1.0, static_cast<double>(m_frameMs.size()));
        return {used / seconds, used * msPerSecond / frameCount};
    }
    const QList<double> &frames() const { return m_frameMs; }

    /// Milliseconds from the wish for another cover to the end of its fade.
    double changeCover(int number)
    {
        const QString cover = addressOf(number);
        const auto *pictures = m_root->findChild<QObject *>(u"pictures"_s);
        QElapsedTimer clock;
        clock.start();
        m_root->setProperty("coverSource", cover);
        const auto isThere = [&] {
            return pictures->property("shownSource").toString().contains(cover.mid(8)) &&
                   !pictures->property("isFading").toBool();
        };
        if (!waitFor(isThere, 20s))
            qFatal("no other cover");
        return static_cast<double>(clock.nsecsElapsed()) / nsPerMs;
    }

    QString backend() const { return backendName(m_window); }

private:
    void watch()
    {
        m_clock.start();
        const auto begin = [this] { m_startNs = m_clock.nsecsElapsed(); };
        const auto end = [this] {
            const double ms = static_cast<double>(m_clock.nsecsElapsed() - m_startNs) / nsPerMs;
            const auto note = [this, ms] { m_frameMs.append(ms); };
            QMetaObject::invokeMethod(&m_window, note, Qt::QueuedConnection);
        };
        QObject::connect(&m_window, &QQuickWindow::beforeSynchronizing, &m_window, begin,
                         Qt::DirectConnection);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, end, Qt::DirectConnection);
    }

    PlayerBench m_player;
    FakeClock m_heartClock;
    FakeRandom m_random;
    FakePreferences m_preferences;
    FakeDesktopAppearance m_appearance;
    KawaiiDecorations m_decorations{m_heartClock, m_random};
    ThemeManager m_manager{m_preferences, m_appearance};
    ThemeService m_service{m_preferences, m_manager, m_appearance};
    QElapsedTimer m_clock;
    std::atomic<qint64> m_startNs = 0;
    QList<double> m_frameMs;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
};

/// The part that has a display: its backend comes from the environment.
void measure(const MadeHome &)
{
    Screen screen;
    Report report;
    for (const ThemeType type : allThemeTypes()) {
        screen.switchTo(type);
        screen.setRing(false);
        const double without = screen.play().first * percent;
        screen.setRing(true);
        const auto [with, eachFrame] = screen.play();
        const QString name = u"%1, %2"_s.arg(screen.backend(), rawValue(type));
        const bool isHeld = type == ThemeType::classic;
        report.add({.what = u"%1: playing, with bars and dancer"_s.arg(name),
                    .value = with * percent,
                    .unit = u"% CPU"_s,
                    .bar = isHeld ? std::optional(barPercent) : std::nullopt});
        report.add({.what = u"  without them"_s, .value = without, .unit = u"% CPU"_s});
        report.add({.what = u"  processor time of a frame"_s, .value = eachFrame, .unit = u"ms"_s});
        addFrames(report, {.name = name, .frames = screen.frames()});
    }
    screen.switchTo(ThemeType::classic);
    QList<double> changes;
    for (int i = 2; i < 10; ++i)
        changes.append(screen.changeCover(i));
    report.add({.what = u"%1: another cover, with its fade of 300 ms"_s.arg(screen.backend()),
                .value = median(changes),
                .unit = u"ms"_s,
                .reference = Reference{.what = u"the fade"_s, .value = 300},
                .bar = barRatio});
}

} // namespace

int main(int argc, char *argv[])
{
    return measureOnEachBackend(argc, argv, measure, measureBlur);
}
