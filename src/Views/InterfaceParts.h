// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQmlEngine>

namespace cadorel {

class AppIconService;
class DesktopAppearance;
class KawaiiDecorations;
class RemoteCovers;
class ThemeManager;
class ThemeService;

/// What screens meet of the program beside what the window is given. All of it outlives the engine.
struct InterfaceParts
{
    /// Fetches the covers that lie on servers; without it they are not shown.
    RemoteCovers *remoteCovers = nullptr;
    /// Without one the palette of the application tells light from dark.
    DesktopAppearance *desktopAppearance = nullptr;
    /// Without one everything is drawn in the plain look.
    ThemeManager *themeManager = nullptr;
    /// What the pink look decorates with; nothing else asks for it.
    KawaiiDecorations *kawaiiDecorations = nullptr;
    /// Without these two nothing of the appearance can be chosen.
    ThemeService *themeService = nullptr;
    AppIconService *appIconService = nullptr;
};

/// What installUserInterface() was given for that engine. Main thread.
const InterfaceParts &interfaceParts(const QQmlEngine &engine);

/// For the create() of a singleton that the program owns: the part of that engine, kept from its collector.
template <typename Part>
Part *partOf(const QQmlEngine *engine, Part *InterfaceParts::*part)
{
    Part *const object = interfaceParts(*engine).*part;
    if (object)
        QJSEngine::setObjectOwnership(object, QJSEngine::CppOwnership);
    return object;
}

} // namespace cadorel
