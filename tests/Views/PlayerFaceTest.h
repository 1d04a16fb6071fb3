// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Components/Pointer.h"
#include "Fixtures/Pixels.h"
#include "Services/LyricsOffsetService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "ViewModels/MiniPlayerViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/QueueViewModel.h"
#include "Views/SourceSongsTest.h"

namespace cadorel {

/// What the tests of the player's face have in common: the disc and the screen that plays, as a listener uses
/// them.
class PlayerFaceTest : public SourceSongsTest
{
    Q_OBJECT
protected:
    QQuickItem *disc() const { return t->item(QStringLiteral("miniPlayerDisc")); }
    MiniPlayerViewModel &mini() const { return *t->screens->miniPlayer(); }
    QQuickItem *fanButton(int row) const { return t->item(QStringLiteral("fanButton%1").arg(row)); }
    /// Whether the disc is there and has come to rest.
    bool discRests() const
    {
        if (!disc() || !disc()->isVisible())
            return false;
        const QPointF centre = disc()->mapToScene(QPointF(disc()->width() / 2, disc()->height() / 2));
        return (centre - mini().effectivePosition()).manhattanLength() < 1e-6;
    }
    [[nodiscard]] bool openFromDisc()
    {
        if (!QTest::qWaitFor([this] { return discRests(); }))
            return false;
        t->click(disc());
        const auto covers = [this] {
            return t->item(QStringLiteral("nowPlayingCover"))->property("covers").toBool();
        };
        return QTest::qWaitFor(covers) && showsNowPlaying();
    }
    [[nodiscard]] bool openLyrics()
    {
        t->click(QStringLiteral("lyricsButton"));
        return QTest::qWaitFor([this] {
            const QQuickItem *pages = t->item(QStringLiteral("pageList"));
            return lyricLine(0) && t->item(QStringLiteral("lyricList"))->isVisible() &&
                   pages->property("contentX").toReal() == pages->width();
        });
    }
    QQuickItem *lyricLine(int line) const { return t->item(QStringLiteral("lyricLine%1").arg(line)); }
    /// The line that is shown as the current one; -1 when none or several are.
    int shownLine() const
    {
        int found = -1;
        for (int line = 0; line < lyrics().count(); ++line) {
            const QQuickItem *item = lyricLine(line);
            if (!item || !item->property("isActive").toBool())
                continue;
            if (found >= 0)
                return -1;
            found = line;
        }
        return found;
    }
    /// Whether the line stands in the middle of the page.
    bool isCentred(int line) const
    {
        const QQuickItem *list = t->item(QStringLiteral("lyricList"));
        const QQuickItem *item = lyricLine(line);
        return item &&
               qAbs(item->mapToItem(list, QPointF(0, item->height() / 2)).y() - list->height() / 2) < 4;
    }
    /// The slider of the song of the moment.
    QQuickItem *slider() const
    {
        return t->item(QStringLiteral("progress_slider_") + t->screens->nowPlaying()->currentSongId());
    }
    /// Drags the slider from its middle to that many pixels from its left end.
    void dragSlider(double x) const
    {
        const auto place = [this](double across) {
            return slider()->mapToScene(QPointF(across, slider()->height() / 2)).toPoint();
        };
        QTest::mousePress(t->window, Qt::LeftButton, {}, place(slider()->width() / 2));
        QTest::mouseMove(t->window, place((slider()->width() + x) / 2));
        QTest::mouseMove(t->window, place(x));
        QTest::mouseRelease(t->window, Qt::LeftButton, {}, place(x));
    }
    QString shownTitle() const
    {
        return t->item(QStringLiteral("nowPlayingTitle"))->property("text").toString();
    }
    /// Whether a colour is another one after a JPEG has been decoded and scaled.
    static bool isLike(const QColor &a, const QColor &b)
    {
        constexpr int tolerance = 23;
        return isNear(a, b, tolerance);
    }
};

} // namespace cadorel
