// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeClock.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/FakeSystem.h"
#include "Services/AppIconService.h"
#include "Services/ThemeService.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"
#include "Theme/ThemedScene.h"

namespace cadorel {

/// A scene whose decorations, choice of looks and choice of icons stand on fakes.
class KawaiiScene
{
public:
    FakeClock clock;
    FakeRandom random;
    FakePreferences preferences;
    FakeDesktopAppearance desktop;
    FakeSystem system;
    KawaiiDecorations decorations{clock, random};
    ThemeManager themeManager{preferences, desktop};
    ThemeService themeService{preferences, themeManager, desktop};
    AppIconService appIconService{system};
    ThemedScene scene{InterfaceParts{.desktopAppearance = &desktop,
                                     .themeManager = &themeManager,
                                     .kawaiiDecorations = &decorations,
                                     .themeService = &themeService,
                                     .appIconService = &appIconService}};

    /// Number of items that a screen reader finds in the window.
    int accessibleItems() { return countBelow(QAccessible::queryAccessibleInterface(scene.window())); }

    /// Whether the two pictures show the same.
    static bool isSame(const QImage &a, const QImage &b)
    {
        return a.convertToFormat(QImage::Format_RGB32) == b.convertToFormat(QImage::Format_RGB32);
    }

    /// Whether the pictures within the component have been loaded, each from a file.
    bool arePicturesReady() const
    {
        constexpr int ready = 1;
        const QList<QQuickItem *> pictures = scene.items(QStringLiteral("picture"));
        return std::ranges::all_of(pictures, [](const QQuickItem *picture) {
            return !picture->isVisible() || picture->property("status").toInt() == ready;
        });
    }

private:
    static int countBelow(const QAccessibleInterface *interface)
    {
        int count = 0;
        for (int i = 0; interface && i < interface->childCount(); ++i)
            count += 1 + countBelow(interface->child(i));
        return count;
    }
};

} // namespace cadorel
