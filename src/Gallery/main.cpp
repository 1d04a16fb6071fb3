// SPDX-License-Identifier: GPL-3.0-or-later
// Shows all components of the player in all their states, for whoever works on them. It is not installed.
#include "Gallery/GalleryOptions.h"
#include "Gallery/GalleryStage.h"
#include "Utils/Tasks.h"
#include "Views/UserInterface.h"

#include <QGuiApplication>
#include <QImage>
#include <QSGRendererInterface>

#include <cstdio>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// @param stage outlives the event loop
QCoro::Task<void> saveAndQuit(GalleryStage *stage, QString file)
{
    const QImage picture = co_await stage->picture();
    // At the highest compression.
    const bool isSaved = picture.save(file, "PNG", 0);
    if (picture.isNull())
        qWarning("the page does not come to rest");
    else if (!isSaved)
        qWarning("the picture cannot be written to %ls", qUtf16Printable(file));
    QGuiApplication::exit(isSaved ? 0 : 1);
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto options = GalleryOptions::parse(arguments);
    if (!options) {
        std::fprintf(stderr, "%s\n", qPrintable(options.error()));
        return 2;
    }
    // The same picture on every machine, and none of it on a screen.
    if (!options->file.isEmpty()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"cadorel-gallery"_s);
    installFonts();

    GalleryStage stage(*options);
    if (!stage.load())
        return 1;
    if (options->file.isEmpty())
        stage.window()->show();
    else
        detach(saveAndQuit(&stage, options->file));
    return QGuiApplication::exec();
}
