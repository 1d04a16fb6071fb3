// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: frame times while 1,000 rows with covers are scrolled in each look, and how long a full screen
// takes to change its look.
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Support/Backends.h"
#include "Support/Frames.h"
#include "Support/MadeHome.h"
#include "Support/MadeLibrary.h"
#include "Support/MadeSound.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/Scroller.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/CoverRegistry.h"
#include "Views/UserInterface.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int rowCount = 1000;
constexpr int usualSeconds = 3; // in a round
constexpr int rounds = 3;
constexpr double barRatio = 1.5;
constexpr double barSwitchMs = 200;
constexpr double nsPerMs = 1e6;
constexpr QSize phone(390, 844);

constexpr auto scene = R"(
import QtQuick
import Cadorel

Item {
    id: root

    property var covers

    ThemedBackground { anchors.fill: parent }
    Column {
        id: head

        x: 16
        y: 16
        width: parent.width - 32
        spacing: 12

        ThemedSectionHeader { width: parent.width; title: "全部歌曲" }
        ThemedSearchBar { width: parent.width; placeholder: "搜索" }
        ThemedSegmentedPicker { width: parent.width; options: ["歌曲", "专辑", "歌手"]; selection: "歌曲" }
        Row {
            spacing: 16

            ThemedPlayButton {}
            ThemedControlButton { systemName: "forward.fill"; text: "下一首" }
            ThemedHeartButton { isFavorite: true }
            ThemedButtonStyle { text: "随机播放"; symbol: "shuffle" }
        }
        ThemedProgressBar { width: parent.width; progress: 0.4 }
    }
    ListView {
        objectName: "list"
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        x: 16
        width: parent.width - 32
        topMargin: 12
        spacing: 8
        clip: true
        model: root.covers
        reuseItems: true
        delegate: ThemedSongRow {
            required property int index
            required property string modelData

            width: ListView.view.width
            title: "清晨的第一班船 " + index
            subtitle: "林间小队 · 远岸"
            trailingText: "3:46"
            coverSource: modelData
            isFavorite: index % 3 === 0
        }
    }
}
)";

/// Addresses of as many covers, each decoded by itself.
QStringList makeCovers(const Directories &directories)
{
    const ArtworkData artwork(madeCover());
    QStringList addresses;
    QList<Song> songs = madeSongs(directories, 0, rowCount);
    for (Song &song : songs) {
        song.setArtworkData(artwork);
        addresses.append(CoverRegistry::shared().source(song));
    }
    return addresses;
}

class Screen
{
public:
    explicit Screen(const Directories &directories)
        : m_manager(m_preferences, m_appearance)
    {
        installFonts();
        installUserInterface(m_engine, {.desktopAppearance = &m_appearance, .themeManager = &m_manager});
        QQmlComponent component(&m_engine);
        component.setData(scene, QUrl());
        m_root.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{u"covers"_s, QVariant::fromValue(makeCovers(directories))}})));
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(phone);
        m_window.resize(phone);
        showWindow(m_window);
        letPass(1s);
        watch();
    }

    /// From the wish for another look to the end of the first frame in it, in milliseconds.
    double switchTo(ThemeType type)
    {
        if (type == m_manager.currentThemeType())
            return 0;
        m_isChanged = false;
        m_isTaken = false;
        m_drawnNs = 0;
        m_clock.start();
        m_manager.switchTo(type);
        if (!waitFor([this] { return m_drawnNs != 0; }, 20s))
            qFatal("no frame in the other look");
        return static_cast<double>(m_drawnNs) / nsPerMs;
    }

    QList<double> scroll()
    {
        constexpr double flick = 42; // 2,500 pixels a second: as fast as a finger can make it
        auto *list = m_root->findChild<QQuickItem *>(u"list"_s);
        if (list->property("count").toInt() != rowCount)
            qFatal("the list does not show its rows");
        Scroller scroller(m_window, *list, flick);
        return scroller.run(std::chrono::seconds(measuredSeconds(usualSeconds)));
    }

    QString backend() const { return backendName(m_window); }

private:
    void watch()
    {
        const auto change = [this] { m_isChanged = true; };
        // A frame that was under way when the look changed does not count.
        const auto take = [this] { m_isTaken = m_isChanged.load(); };
        const auto note = [this] {
            if (m_drawnNs == 0 && m_isTaken)
                m_drawnNs = m_clock.nsecsElapsed();
        };
        QObject::connect(&m_manager, &ThemeManager::currentThemeChanged, &m_window, change);
        QObject::connect(&m_window, &QQuickWindow::beforeSynchronizing, &m_window, take,
                         Qt::DirectConnection);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, note, Qt::DirectConnection);
    }

    FakePreferences m_preferences;
    FakeDesktopAppearance m_appearance;
    ThemeManager m_manager;
    QElapsedTimer m_clock;
    std::atomic<bool> m_isChanged = false;
    std::atomic<bool> m_isTaken = false;
    std::atomic<qint64> m_drawnNs = 0;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
};

/// The part that has a display: its backend comes from the environment.
void measure(const MadeHome &home)
{
    Report report;
    Screen screen(home.directories());
    constexpr std::array order{ThemeType::neumorphism, ThemeType::kawaiiPink, ThemeType::classic};
    for (const bool isFirst : {true, false}) {
        for (const ThemeType type : order) {
            const QString what = u"%1, to %2%3: first frame"_s.arg(
                screen.backend(), rawValue(type), isFirst ? u" for the first time"_s : QString());
            report.add({.what = what, .value = screen.switchTo(type), .unit = u"ms"_s, .bar = barSwitchMs});
            letPass(500ms);
        }
    }
    // The covers of these rows are decoded once, whatever look is measured first.
    screen.scroll();
    // By turns, so that what else the machine does meets all of them.
    QMap<ThemeType, QList<double>> frames;
    for (int round = 0; round < rounds; ++round) {
        for (const ThemeType type : allThemeTypes()) {
            screen.switchTo(type);
            letPass(500ms);
            frames[type] += screen.scroll();
        }
    }
    const Reference middle{.what = u"classic"_s, .value = middleFrame(frames[ThemeType::classic])};
    const Reference late{.what = u"classic"_s, .value = lateFrame(frames[ThemeType::classic])};
    for (const ThemeType type : allThemeTypes()) {
        const bool isHeld = type == ThemeType::neumorphism;
        const auto bar = isHeld ? std::optional(barRatio) : std::nullopt;
        addFrames(report, {.name = u"%1, %2"_s.arg(screen.backend(), rawValue(type)),
                           .frames = frames[type],
                           .middleReference = isHeld ? std::optional(middle) : std::nullopt,
                           .middleBar = bar,
                           .lateReference = isHeld ? std::optional(late) : std::nullopt,
                           .lateBar = bar});
    }
}

} // namespace

int main(int argc, char *argv[])
{
    return measureOnEachBackend(argc, argv, measure);
}
