// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/NowPlayingScene.h"

namespace cadorel {

/// What the tests of the full-screen player have in common: a fresh screen for each function, and no warning
/// may come up.
class NowPlayingScreenTest : public QObject
{
    Q_OBJECT
protected:
    std::unique_ptr<NowPlayingScene> s;
    const Song m_song = NowPlayingScene::song(QStringLiteral("first"), QStringLiteral("潮汐与灯塔"));

    /// The song on the screen, ready and that long. @return whether it is there
    [[nodiscard]] bool showSong(double seconds = 200, QSize size = {390, 844})
    {
        s->bench.playSong(m_song, seconds);
        return s->show(size) && QTest::qWaitFor([this] { return s->slider() && s->slider()->isEnabled(); });
    }
    /// Where the knob of the slider stands.
    double shownProgress() const { return s->slider()->property("shown").toDouble(); }
    /// The symbol or picture on a button.
    QQuickItem *glyph(const QString &button) const
    {
        return s->item(button)->findChild<QQuickItem *>(QStringLiteral("glyph"));
    }

private Q_SLOTS:
    void init() { s = std::make_unique<NowPlayingScene>(); }
    void cleanup()
    {
        s->close();
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }
};

} // namespace cadorel
