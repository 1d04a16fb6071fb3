// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/Backends.h"

#include "Support/MadeHome.h"
#include "Support/VirtualDisplay.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Tells a process that it is one of those that measure, and where.
constexpr auto homeVariable = "CADOREL_BENCH_HOME";

} // namespace

int measureOnEachBackend(int argc, char *argv[], void (*measure)(const MadeHome &),
                         void (*prepare)(const MadeHome &))
{
    if (qEnvironmentVariableIsSet(homeVariable)) {
        const QGuiApplication application(argc, argv);
        measure(MadeHome(qEnvironmentVariable(homeVariable)));
        return 0;
    }
    const QCoreApplication application(argc, argv);
    const MadeHome home;
    if (prepare)
        prepare(home);
    const VirtualDisplay display;
    for (const auto &[variable, value] :
         {std::pair("QSG_RHI_BACKEND", "opengl"), std::pair("QT_QUICK_BACKEND", "software")}) {
        QProcess process;
        QProcessEnvironment environment = home.environment();
        display.enter(environment);
        environment.insert(QString::fromLatin1(variable), QString::fromLatin1(value));
        environment.insert(QString::fromLatin1(homeVariable), home.root());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0)
            return 1;
    }
    return 0;
}

QString backendName(const QQuickWindow &window)
{
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software ? u"raster"_s
                                                                                       : u"OpenGL"_s;
}

} // namespace cadorel
