// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/MiniPlayerBench.h"

#include <QTest>

namespace cadorel {

/// What the tests of the mini player have in common: a fresh machine for each function, and its disc in a
/// window as large as a phone.
class MiniPlayerTest : public QObject
{
    Q_OBJECT
protected:
    static constexpr QPointF atRight{349, 400};
    static constexpr QPointF atLeft{41, 400};

    std::unique_ptr<MiniPlayerBench> b;

    MiniPlayerViewModel &mini() { return b->miniPlayer(); }
    /// Starts with the disc at that place, and song "b" of three under way.
    void startAt(const QPointF &place)
    {
        b.reset();
        b = std::make_unique<MiniPlayerBench>();
        b->startMiniPlayer();
        mini().layOut(390, 844, 0, 49);
        mini().updatePosition({}, place, {.width = 390, .height = 844}, false, false);
        b->player().playSong(fileSong(QStringLiteral("b")),
                             fileSongs({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        b->answerDuration(100);
    }
    std::optional<QPointF> stored()
    {
        const auto x = b->home.preferences().doubleValue(QStringLiteral("miniPlayerPositionX"));
        const auto y = b->home.preferences().doubleValue(QStringLiteral("miniPlayerPositionY"));
        return x && y ? std::optional(QPointF(*x, *y)) : std::nullopt;
    }
    void store(const QPointF &place)
    {
        b->home.preferences().setDouble(QStringLiteral("miniPlayerPositionX"), place.x());
        b->home.preferences().setDouble(QStringLiteral("miniPlayerPositionY"), place.y());
    }

private Q_SLOTS:
    void init() { b = std::make_unique<MiniPlayerBench>(); }
    void cleanup() { b.reset(); }
};

} // namespace cadorel
