// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Gallery/GalleryStage.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QQuickItem>
#include <QTest>

#include <functional>

namespace cadorel {

/// A page as it is seen on a phone, or in a window of another width.
inline GalleryOptions pageIn(ThemeType look, int page, int width = 390)
{
    GalleryOptions options;
    options.look = look;
    options.page = page;
    options.size = {width, 844};
    return options;
}

/// Calls @p visit for @p item and all that lies in it.
inline void visitItems(QQuickItem *item, const std::function<void(QQuickItem *)> &visit)
{
    visit(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        visitItems(child, visit);
}

/// What a person sees of the window.
inline QList<QQuickItem *> visibleItems(const GalleryStage &stage)
{
    QList<QQuickItem *> items;
    visitItems(stage.window()->contentItem(), [&items](QQuickItem *item) {
        if (item->isVisible())
            items.append(item);
    });
    return items;
}

/// Rows of test data: each page in each look.
inline void addPages()
{
    QTest::addColumn<ThemeType>("look");
    QTest::addColumn<int>("page");
    for (const ThemeType look : allThemeTypes()) {
        for (int page = 0; page < GalleryOptions::pageCount; ++page)
            QTest::addRow("%s, page %d", qPrintable(rawValue(look)), page + 1) << look << page;
    }
}

} // namespace cadorel
