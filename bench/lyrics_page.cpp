// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: how soon 5,000 lines of lyrics are seen and another line is current, frame times while they are
// scrolled, blurred and beside that without blur, what following a song costs, and what a thousand songs
// leave.
#include "Support/Backends.h"
#include "Support/Frames.h"
#include "Support/MadeHome.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/Scroller.h"
#include "ViewModels/LyricsBench.h"
#include "Views/UserInterface.h"

#include <QElapsedTimer>
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
constexpr QSize phone(390, 560);

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
        showWindow(m_window);
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
        waitForFrame(m_window);
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
            waitForFrame(m_window);
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
            waitForFrame(m_window);
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

    QString backend() const { return backendName(m_window); }

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

    LyricsBench m_bench;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
};

void measure(const MadeHome &)
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
    // That frame waits for the beat of the display, and for whatever else the machine does.
    report.add({.what = u"  another line, until its first frame, median of %1"_s.arg(changeCount),
                .value = change.passed,
                .unit = u"ms"_s});
    report.add({.what = u"  processor time of that"_s, .value = change.busy, .unit = u"ms"_s, .bar = barMs});
    const QList<double> sharp = page.scroll(false);
    const QList<double> blurred = page.scroll(true);
    addFrames(report, {.name = u"%1, blurred lines"_s.arg(name),
                       .frames = blurred,
                       .middleReference = Reference{.what = u"sharp"_s, .value = middleFrame(sharp)},
                       .lateBar = barMs});
    report.add({.what = u"  sharp lines, 99th percentile"_s,
                .value = lateFrame(sharp),
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
}

} // namespace

int main(int argc, char *argv[])
{
    return measureOnEachBackend(argc, argv, measure);
}
