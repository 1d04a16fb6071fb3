// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Components/Pointer.h"
#include "Theme/ThemedScene.h"
#include "ViewModels/MiniPlayerBench.h"

#include <QBuffer>

namespace cadorel {

/// The mini player over something that can be clicked, as large as a phone, over real services on fakes.
class MiniPlayerScene
{
public:
    static constexpr QSize phone{390, 700};

    MiniPlayerScene()
    {
        bench.startMiniPlayer();
        scene = std::make_unique<ThemedScene>(InterfaceParts{.desktopAppearance = &bench.desktop,
                                                             .themeManager = bench.themeManager.get(),
                                                             .themeService = bench.themeService.get()});
    }

    MiniPlayerBench bench;
    std::unique_ptr<ThemedScene> scene;

    /// Shows it with song "b" of three.
    bool show(ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        bench.desktop.setColorScheme(scheme);
        bench.player().playSong(songWithCover(QStringLiteral("b")),
                                {fileSong(QStringLiteral("a")), songWithCover(QStringLiteral("b")),
                                 fileSong(QStringLiteral("c"))});
        bench.answerDuration(100);
        scene->window()->resize(phone);
        const bool isShown =
            scene->show(R"(FocusScope {
            id: stage
            required property MiniPlayerViewModel miniPlayer
            property int clicksBeneath: 0
            property int timesOpened: 0
            width: 390; height: 700
            focus: true
            ThemedBackground { anchors.fill: parent }
            MouseArea {
                anchors.fill: parent
                onClicked: ++stage.clicksBeneath
            }
            MiniPlayerView {
                objectName: "view"
                anchors.fill: parent
                focus: true
                miniPlayer: stage.miniPlayer
                onOpenRequested: ++stage.timesOpened
            }
        })",
                        type, scheme, {{QStringLiteral("miniPlayer"), QVariant::fromValue(&mini())}});
        scene->root()->setPosition({0, 0});
        return isShown;
    }
    MiniPlayerViewModel &mini() { return bench.miniPlayer(); }
    QQuickItem *view() const { return scene->item(QStringLiteral("view")); }
    QQuickItem *disc() const { return scene->item(QStringLiteral("miniPlayerDisc")); }
    QQuickItem *button(int row) const { return scene->item(QStringLiteral("fanButton%1").arg(row)); }
    int clicksBeneath() const { return scene->root()->property("clicksBeneath").toInt(); }
    int timesOpened() const { return scene->root()->property("timesOpened").toInt(); }
    /// Centre of the disc on the screen.
    QPointF shownAt() const { return disc()->mapToScene(QPointF(disc()->width() / 2, disc()->height() / 2)); }
    bool isAt(const QPointF &place) const
    {
        const QPointF away = shownAt() - place;
        return qAbs(away.x()) < 0.5 && qAbs(away.y()) < 0.5;
    }
    /// Puts the disc there, without a movement.
    void put(const QPointF &place)
    {
        mini().updatePosition({}, place, {.width = qreal(phone.width()), .height = qreal(phone.height())},
                              false, false);
    }

    static Song songWithCover(const QString &id)
    {
        Song song = fileSong(id);
        QImage picture(200, 200, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixelColor(x, y, QColor::fromHsv((x + y) * 359 / 400, 180, 255 - y / 2));
        }
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, "PNG");
        song.setArtworkData(ArtworkData(bytes));
        return song;
    }
};

} // namespace cadorel
