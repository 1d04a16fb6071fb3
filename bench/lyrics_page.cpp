// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: frame times while 5,000 blurred lines of lyrics are scrolled, beside the same lines without blur,
// and while the page follows a song.
#include "Support/MadeHome.h"
#include "Support/MadeSound.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/Scroller.h"
#include "Support/VirtualDisplay.h"
#include "ViewModels/LyricsBench.h"
#include "Views/UserInterface.h"

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
constexpr double barMs = 16;
constexpr double half = 0.5;
constexpr double nearlyAll = 0.99;
constexpr QSize phone(390, 560);
constexpr auto innerVariable = "CADOREL_BENCH_INNER";

QString text()
{
    const QStringList words{u"夜色里的灯火照着我们回家"_s, u"风吹过"_s,
                            u"The night is long and the road is winding on"_s, u"远处传来海的声音"_s};
    QString text;
    for (int i = 0; i < lineCount; ++i)
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
        m_bench.play(LyricsBench::songWith(u"a"_s, text()));
        m_bench.lyrics().load();
        if (!waitFor([this] { return m_window.isExposed() && m_bench.lyrics().hasLyrics(); }, 20s))
            qFatal("no lyrics");
        letPass(1s);
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
    LyricsBench m_bench;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
};

int measure()
{
    Report report;
    Page page;
    const QList<double> sharp = page.scroll(false);
    const QList<double> blurred = page.scroll(true);
    const QString name = page.backend();
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
