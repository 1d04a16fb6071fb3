// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: how soon 5,000 lines of lyrics are seen and another line is current, frame times while they are
// scrolled, blurred and beside that without blur, what following a song costs, and what a thousand songs
// leave.
#include "Support/MadeHome.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/Scroller.h"
#include "Support/VirtualDisplay.h"
#include "ViewModels/LyricsBench.h"
#include "Views/UserInterface.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <ctime>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int lineCount = 5000;
constexpr int usualSeconds = 3;
constexpr int changeCount = 20;
constexpr double barMs = 16;
constexpr double openingBarMs = 100; // what answers a tap
constexpr int songCount = 1000;
constexpr double leftBarMiB = 10; // the pictures that are kept are in it
constexpr double half = 0.5;
constexpr double nearlyAll = 0.99;
constexpr QSize phone(390, 560);
constexpr auto innerVariable = "CADOREL_BENCH_INNER";

QString text(int lines)
{
    const QStringList words{u"夜色里的灯火照着我们回家"_s, u"风吹过"_s,
                            u"The night is long and the road is winding on"_s, u"远处传来海的声音"_s};
    QString text;
    for (int i = 0; i < lines; ++i)
        text += QString::asprintf("[%02d:%02d.00]", i / 60, i % 60) + words.at(i % words.size()) +
                QString::number(i) + u'\n';
    return text;
}

class Page
{
public:
    Page()
    {
        installFonts();
        installUserInterface(m_engine, {.desktopAppearance = &m_bench.desktop,
                                        .themeManager = &m_bench.themeManager(),
                                        .themeService = &m_bench.appearance()});
        QQmlComponent component(&m_engine);
        component.setData("import Cadorel\nLyricsView {}", QUrl());
        m_root.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{u"lyrics"_s, QVariant::fromValue(&m_bench.lyrics())}})));
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
        m_window.setColor(QColor(0x30, 0x2a, 0x44));
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(phone);
        m_window.resize(phone);
        m_window.show();
        if (!waitFor([this] { return m_window.isExposed(); }, 20s))
            qFatal("no window");
        letPass(1s);
    }

    /// Of something that ends with a frame, in milliseconds.
    struct Cost
    {
        double passed;
        double busy; ///< of all threads; what else the machine does is not in it
    };

    /// From the song to the frame that shows its lines.
    Cost open()
    {
        const Song song = LyricsBench::songWith(u"a"_s, text(lineCount));
        m_bench.lyrics().load();
        const Stopwatch watch;
        m_bench.play(song);
        if (!waitFor([this] { return m_bench.lyrics().hasLyrics(); }, 20s))
            qFatal("no lyrics");
        waitForFrame();
        const Cost cost = watch.read();
        letPass(1s);
        return cost;
    }

    /// Goes on by a line again and again, each until its first frame. @return the median of all
    Cost changeLines()
    {
        QList<double> passed;
        QList<double> busy;
        for (int i = 1; i <= changeCount; ++i) {
            letPass(400ms);
            const Stopwatch watch;
            m_bench.tick(i);
            waitForFrame();
            const Cost cost = watch.read();
            passed.append(cost.passed);
            busy.append(cost.busy);
        }
        return {.passed = median(passed), .busy = median(busy)};
    }

    /// Plays one song after the other, each with lyrics of its own. @return MiB that are in use more
    double changeSongs()
    {
        constexpr int warmUp = 100;
        const ProcessUsage usage;
        double before = 0;
        for (int i = 0; i < warmUp + songCount; ++i) {
            if (i == warmUp)
                before = usage.residentMiB();
            m_bench.play(LyricsBench::songWith(QString::number(i), text(20 + i % 40)));
            m_bench.tick(i % 10);
            waitForFrame();
            QCoreApplication::processEvents();
        }
        letPass(1s);
        return usage.residentMiB() - before;
    }

    QList<double> scroll(bool isBlurred)
    {
        constexpr double flick = 42; // 2,500 pixels a second: as fast as a finger can make it
        m_bench.appearance().setLyricsBlurEnabled(isBlurred);
        letPass(1s);
        Scroller scroller(m_window, *m_root->findChild<QQuickItem *>(u"lyricList"_s), flick);
        return scroller.run(std::chrono::seconds(measuredSeconds(usualSeconds)));
    }

    /// A line a second. @return the share of that time that the process was busy
    double follow()
    {
        m_bench.appearance().setLyricsBlurEnabled(true);
        m_bench.tick(10);
        letPass(1s);
        const std::clock_t begin = std::clock();
        const int seconds = 2 * measuredSeconds(usualSeconds);
        for (int i = 0; i < seconds; ++i) {
            m_bench.tick(11 + i);
            letPass(1s);
        }
        return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / seconds;
    }

    /// Lines that exist as items.
    int madeLines() const
    {
        const auto *list = m_root->findChild<QQuickItem *>(u"lyricList"_s);
        return static_cast<int>(list->property("contentItem").value<QQuickItem *>()->childItems().size());
    }

    QString backend() const
    {
        return m_window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software ? u"raster"_s
                                                                                             : u"OpenGL"_s;
    }

private:
    class Stopwatch
    {
    public:
        Stopwatch() { m_clock.start(); }
        Cost read() const
        {
            constexpr double nsPerMs = 1e6;
            constexpr double msPerSecond = 1000;
            return {.passed = static_cast<double>(m_clock.nsecsElapsed()) / nsPerMs,
                    .busy = msPerSecond * (m_usage.processorSeconds() - m_before)};
        }

    private:
        ProcessUsage m_usage;
        double m_before = m_usage.processorSeconds();
        QElapsedTimer m_clock;
    };
    void waitForFrame()
    {
        bool isSwapped = false;
        const auto connection = QObject::connect(&m_window, &QQuickWindow::frameSwapped, m_root.get(),
                                                 [&isSwapped] { isSwapped = true; });
        m_window.update();
        waitFor([&isSwapped] { return isSwapped; }, 5s);
        QObject::disconnect(connection);
    }

    LyricsBench m_bench;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
};

int measure()
{
    Report report;
    Page page;
    const QString name = page.backend();
    const Page::Cost opening = page.open();
    report.add({.what = u"%1, %2 lines: from the song to their first frame"_s.arg(name).arg(lineCount),
                .value = opening.passed,
                .unit = u"ms"_s,
                .bar = openingBarMs});
    report.add({.what = u"  processor time of that"_s, .value = opening.busy, .unit = u"ms"_s});
    const Page::Cost change = page.changeLines();
    report.add({.what = u"  another line, until its first frame, median of %1"_s.arg(changeCount),
                .value = change.passed,
                .unit = u"ms"_s,
                .bar = barMs});
    report.add({.what = u"  processor time of that"_s, .value = change.busy, .unit = u"ms"_s});
    const QList<double> sharp = page.scroll(false);
    const QList<double> blurred = page.scroll(true);
    report.add({.what = u"%1, blurred lines: frame, median of %2"_s.arg(name).arg(blurred.size()),
                .value = percentile(blurred, half),
                .unit = u"ms"_s,
                .reference = Reference{.what = u"sharp"_s, .value = percentile(sharp, half)}});
    report.add({.what = u"  99th percentile"_s,
                .value = percentile(blurred, nearlyAll),
                .unit = u"ms"_s,
                .bar = barMs});
    report.add({.what = u"  sharp lines, 99th percentile"_s,
                .value = percentile(sharp, nearlyAll),
                .unit = u"ms"_s,
                .bar = barMs});
    report.add({.what = u"  lines that exist, of %1"_s.arg(lineCount),
                .value = static_cast<double>(page.madeLines()),
                .unit = u"lines"_s});
    report.add({.what = u"  share of a core while a line a second is followed"_s,
                .value = page.follow(),
                .unit = u""_s});
    report.add({.what = u"  memory that %1 songs leave"_s.arg(songCount),
                .value = page.changeSongs(),
                .unit = u"MiB"_s,
                .bar = leftBarMiB});
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsSet(innerVariable)) {
        const QGuiApplication application(argc, argv);
        return measure();
    }
    const QCoreApplication application(argc, argv);
    const VirtualDisplay display;
    const MadeHome home;
    for (const auto &[variable, value] :
         {std::pair("QSG_RHI_BACKEND", "opengl"), std::pair("QT_QUICK_BACKEND", "software")}) {
        QProcess process;
        QProcessEnvironment environment = home.environment();
        display.enter(environment);
        environment.insert(QString::fromLatin1(variable), QString::fromLatin1(value));
        environment.insert(QString::fromLatin1(innerVariable), u"1"_s);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForFinished(-1) || process.exitCode() != 0)
            return 1;
    }
    return 0;
}
