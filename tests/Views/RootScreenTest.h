// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/ThemeManager.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/ContentViewModel.h"
#include "Views/ScreenTest.h"

#include <QPointer>

namespace cadorel {

/// What the tests of the root screen have in common.
class RootScreenTest : public ScreenTest
{
    Q_OBJECT
protected:
    /// The root screen that is there now.
    QQuickItem *contentView() const { return t->item(QStringLiteral("contentView")); }
    ContentTab selectedTab() const
    {
        return static_cast<ContentTab>(contentView()->property("selectedTab").toInt());
    }
    /// How far behind the window's front an item's layer is: larger is in front.
    qsizetype layerOf(const QString &name) const
    {
        const QQuickItem *item = t->item(name);
        while (item && item->parentItem() != contentView())
            item = item->parentItem();
        return item ? contentView()->childItems().indexOf(item) : -1;
    }
    bool showsNowPlaying() const { return contentView()->property("showNowPlaying").toBool(); }

    /// Changes the look and waits for the root screen that comes of it. @return whether it is there
    [[nodiscard]] bool switchTo(ThemeType type)
    {
        const QPointer<QQuickItem> before = contentView();
        const bool isOther = t->themeManager->currentThemeType() != type;
        t->themeManager->switchTo(type);
        constexpr int limitMs = 10'000;
        const auto isThere = [&] {
            return t->themeManager->currentThemeType() == type && contentView() &&
                   (!isOther || contentView() != before);
        };
        return QTest::qWaitFor(isThere, limitMs);
    }
    /// Opens the Now Playing screen by its key, and waits until it covers the window. @return whether it does
    [[nodiscard]] bool openNowPlaying()
    {
        QTest::keyClick(t->window, Qt::Key_P, Qt::ControlModifier);
        const auto covers = [this] {
            const QQuickItem *cover = t->item(QStringLiteral("nowPlayingCover"));
            return cover && cover->property("covers").toBool();
        };
        return QTest::qWaitFor(covers) && t->shows(QStringLiteral("nowPlayingView"));
    }

    /// Rows of test data: every look.
    static void addThemes()
    {
        QTest::addColumn<ThemeType>("type");
        for (const ThemeType type : allThemeTypes())
            QTest::newRow(qPrintable(rawValue(type))) << type;
    }
};

} // namespace cadorel
