// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Behind the Now Playing screen, in the style that the listener chose for the look, with the colours of texts that
/// can be read on it. Opaque.
Item {
    id: root

    /// Address of the cover of what plays, of the provider "cover".
    property string coverSource
    property AppTheme theme: ThemeEnvironment.theme
    /// There are many lines to read: the decorations step back.
    property bool isRead: false

    /// Of texts on the background.
    property color textColor: paint.textColor
    property color secondaryTextColor: paint.secondaryTextColor
    /// The listener's accent, as it can be told from the background.
    readonly property color accentColor: paint.accentColor
    /// Whether texts are light.
    readonly property bool isDark: paint.isDark

    readonly property int style: ThemeService.nowPlayingBackgroundStyle
    readonly property string coverPicture: paint.pictureAddress(coverSource, AppearanceOptions.backgroundBlurs.to)
    readonly property string customPicture: paint.pictureAddress(ThemeService.customBackgroundImageSource, ThemeService.customBackgroundBlur)
    readonly property string wantedPicture: {
        if (style === NowPlayingBackgroundStyles.Type.blur)
            return coverPicture;
        return style === NowPlayingBackgroundStyles.Type.customImage ? customPicture : "";
    }

    Accessible.ignored: true
    // Bars and dancer draw the whole screen anew many times a second: what stands still behind them, some of it
    // translucent, is then a single picture. The raster backend draws nothing but what has changed anyway.
    layer.enabled: GraphicsInfo.shaderType === GraphicsInfo.RhiShader

    BackdropPaint {
        id: paint

        theme: root.theme
        style: root.style
        opacity: ThemeService.nowPlayingBackgroundOpacity
        customColor: ThemeService.customBackgroundColor
        accent: ThemeColor.accent
        picture: pictures.shownSource
    }

    // The look's own screen, also beneath a picture that is not there.
    ThemedBackground {
        objectName: "ownBackground"
        anchors.fill: parent
        visible: root.style !== NowPlayingBackgroundStyles.Type.solid && root.style !== NowPlayingBackgroundStyles.Type.customColor && !pictures.isCovering
        theme: root.theme
        surface: root.style === NowPlayingBackgroundStyles.Type.gradient ? Surfaces.nowPlayingGradient(root.theme) : Surfaces.background(root.theme)
    }
    Rectangle {
        objectName: "plainBackground"
        anchors.fill: parent
        visible: root.style === NowPlayingBackgroundStyles.Type.solid || root.style === NowPlayingBackgroundStyles.Type.customColor
        color: root.style === NowPlayingBackgroundStyles.Type.customColor ? ThemeService.customBackgroundColor : root.theme.backgroundColor
    }
    CrossFadeImage {
        id: pictures

        objectName: "pictures"
        anchors.fill: parent
        source: root.wantedPicture
    }
    Rectangle {
        objectName: "veil"
        anchors.fill: parent
        visible: color.a > 0
        color: paint.veil

        Behavior on color {
            enabled: pictures.isFading

            ColorAnimation {
                duration: Metrics.fadeDuration
            }
        }
    }

    // These stand still: hearts that rise all the time would draw the whole screen anew sixty times a second.
    KawaiiFloatingDecorations {
        objectName: "decorations"
        anchors.fill: parent
        opacity: root.isRead ? Metrics.readDecorationOpacity : 1
        visible: root.theme.nowPlayingConfig.showDecorations
        theme: root.theme

        Behavior on opacity {
            NumberAnimation {
                duration: Metrics.fadeDuration
            }
        }
    }

    Behavior on textColor {
        enabled: pictures.isFading

        ColorAnimation {
            duration: Metrics.fadeDuration
        }
    }
    Behavior on secondaryTextColor {
        enabled: pictures.isFading

        ColorAnimation {
            duration: Metrics.fadeDuration
        }
    }
}
