// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/UserInterface.h"

#include "Components/CoverImageProvider.h"
#include "Components/SymbolImageProvider.h"
#include "Theme/SurfaceImageProvider.h"
#include "ViewModels/CoverRegistry.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>

// Generated with the module; the library is static, so nothing else calls it.
void qml_register_types_Cadorel();

namespace cadorel {

using namespace Qt::StringLiterals;

void installUserInterface(QQmlEngine &engine, RemoteCovers *remoteCovers)
{
    static const bool registered = [] {
        qml_register_types_Cadorel();
        return true;
    }();
    Q_UNUSED(registered)
    engine.addImportPath(u"qrc:/qt/qml"_s);
    // The engine owns its providers.
    engine.addImageProvider(QLatin1StringView(CoverImageProvider::id),
                            new CoverImageProvider(CoverRegistry::shared(), remoteCovers));
    engine.addImageProvider(QLatin1StringView(SymbolImageProvider::id), new SymbolImageProvider);
    engine.addImageProvider(QLatin1StringView(SurfaceImageProvider::id), new SurfaceImageProvider);
}

void installFonts()
{
    QFont font = QGuiApplication::font();
    font.setFamilies({u"Noto Sans CJK SC"_s, u"Noto Color Emoji"_s});
    QGuiApplication::setFont(font);
}

} // namespace cadorel
