// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/PlayerBench.h"
#include "Fixtures/Pixels.h"
#include "Theme/KawaiiScene.h"
#include "ViewModels/CoverRegistry.h"

#include <QBuffer>

#include <chrono>
#include <functional>

namespace cadorel {

/// One component of the Now Playing screen, with a player that plays when the test says so.
class BackdropScene
{
public:
    PlayerBench player;
    KawaiiScene kawaii;
    ThemedScene &scene = kawaii.scene;
    ThemeService &service = kawaii.themeService;

    BackdropScene() { player.start(); }

    /// A component that may ask for `player`.
    bool show(const QByteArray &qml, ThemeType type = ThemeType::classic,
              ColorScheme scheme = ColorScheme::light, bool wantsPlayer = true)
    {
        QVariantMap properties;
        if (wantsPlayer)
            properties.insert(QStringLiteral("player"), QVariant::fromValue(&player.player()));
        return scene.show(qml, type, scheme, properties);
    }

    /// Something plays, by a clock that the test turns; the levels of the bars are told at each tick.
    void play()
    {
        player.equalizer.enabled = true;
        player.player().playSong(fileSong(QStringLiteral("playing")), {});
    }
    void pause() { player.player().pause(); }
    void tick(int ticks = 1) { player.home.clock().advance(ticks * std::chrono::milliseconds(80)); }

    /// Address of the cover of another song with each call.
    static QString coverOf(const QByteArray &bytes)
    {
        static int number = 0;
        Song song = fileSong(QStringLiteral("backdrop %1").arg(++number));
        song.setArtworkData(ArtworkData(bytes));
        return CoverRegistry::shared().source(song);
    }
    static QString coverOf(const QImage &image)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return coverOf(bytes);
    }
    static QString coverOf(const QColor &color)
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(color);
        return coverOf(image);
    }
};

} // namespace cadorel
