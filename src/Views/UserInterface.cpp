// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/UserInterface.h"

#include "Components/BackdropImageProvider.h"
#include "Components/CoverImageProvider.h"
#include "Components/CustomImageProvider.h"
#include "Components/LyricImageProvider.h"
#include "Components/RoundedImageProvider.h"
#include "Components/SymbolImageProvider.h"
#include "Platform/PaletteAppearance.h"
#include "Services/ThemeService.h"
#include "Theme/SurfaceImageProvider.h"
#include "Theme/ThemeEnvironment.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/CoverRegistry.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>

// Generated with the modules; the library is static, so nothing else calls them.
void qml_register_types_Cadorel();
void qml_register_types_Cadorel_Desktop();

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Keeps an engine's parts for as long as the engine lives.
class PartsHolder : public QObject
{
    Q_OBJECT
public:
    PartsHolder(QQmlEngine &engine, const InterfaceParts &parts)
        : QObject(&engine)
        , m_parts(parts)
    {
    }
    const InterfaceParts &parts() const { return m_parts; }

private:
    const InterfaceParts m_parts;
};

} // namespace

const InterfaceParts &interfaceParts(const QQmlEngine &engine)
{
    static const InterfaceParts none;
    const auto *holder = engine.findChild<PartsHolder *>(QString(), Qt::FindDirectChildrenOnly);
    return holder ? holder->parts() : none;
}

void installUserInterface(QQmlEngine &engine, const InterfaceParts &parts)
{
    static const bool registered = [] {
        qml_register_types_Cadorel_Desktop();
        qml_register_types_Cadorel();
        return true;
    }();
    Q_UNUSED(registered)
    engine.addImportPath(u"qrc:/qt/qml"_s);
    InterfaceParts kept = parts;
    if (!kept.desktopAppearance)
        kept.desktopAppearance = new PaletteAppearance(&engine);
    new PartsHolder(engine, kept);
    if (parts.themeManager)
        withThemeManager(engine, *parts.themeManager);
    // The engine owns its providers.
    engine.addImageProvider(QLatin1StringView(CoverImageProvider::id),
                            new CoverImageProvider(CoverRegistry::shared(), parts.remoteCovers));
    const auto customPictures = parts.themeService ? parts.themeService->customPictures() : nullptr;
    engine.addImageProvider(
        QLatin1StringView(BackdropImageProvider::id),
        new BackdropImageProvider(CoverRegistry::shared(), parts.remoteCovers, customPictures));
    engine.addImageProvider(QLatin1StringView(LyricImageProvider::id), new LyricImageProvider);
    engine.addImageProvider(QLatin1StringView(RoundedImageProvider::id), new RoundedImageProvider);
    engine.addImageProvider(QLatin1StringView(SymbolImageProvider::id), new SymbolImageProvider);
    engine.addImageProvider(QLatin1StringView(SurfaceImageProvider::id), new SurfaceImageProvider);
    if (customPictures)
        engine.addImageProvider(QLatin1StringView(CustomImageProvider::id),
                                new CustomImageProvider(customPictures));
}

void installFonts()
{
    QFont font = QGuiApplication::font();
    font.setFamilies({u"Noto Sans CJK SC"_s, u"Noto Color Emoji"_s});
    QGuiApplication::setFont(font);
}

} // namespace cadorel

#include "UserInterface.moc"
