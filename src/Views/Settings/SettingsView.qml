// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The settings, group by group, and the pages that they lead to.
FocusScope {
    id: root

    required property ContentViewModel content
    required property EqualizerViewModel equalizer
    required property APISettingsViewModel apiSettings

    required property NowPlayingSettingsViewModel nowPlayingSettings

    readonly property string version: Qt.application.version !== "" ? Qt.application.version : "1.0"
    readonly property int sideMargin: Math.max(Metrics.screenMargin, Math.round((width - Metrics.formWidth) / 2))
    readonly property bool isCovered: appearancePage.covers || aboutPage.covers
    readonly property bool isLeft: appearancePage.isShown || aboutPage.isShown

    FocusScope {
        id: overview

        anchors.fill: parent
        visible: !root.isCovered
        enabled: !root.isLeft
        focus: true

        SettingsForm {
            objectName: "settingsForm"
            anchors.fill: parent
            focus: true
            sideMargin: root.sideMargin
            title: "设置"
            hasBack: false

            ThemedSettingsSection {
                width: parent.width
                title: "外观"

                ThemedSettingsItem {
                    objectName: "appearanceRow"
                    width: parent.width
                    focus: true
                    icon: AppIcons.settings.theme
                    iconColor: SystemColors.purple
                    title: "外观与主题"
                    onClicked: appearancePage.isShown = true
                }
                ThemedSettingsItem {
                    objectName: "nowPlayingRow"
                    width: parent.width
                    icon: AppIcons.playback.playCircle
                    iconColor: SystemColors.pink
                    title: "播放界面"
                    onClicked: playerSheet.isWanted = true
                }
                SwitchRow {
                    objectName: "showWebDAVSwitch"
                    width: parent.width
                    isInCard: true
                    symbol: AppIcons.file.cloud
                    squareColor: SystemColors.blue
                    text: "显示网盘功能"
                    checked: root.content.showWebDAVTab
                    onToggled: root.content.showWebDAVTab = checked
                }
            }
            ThemedSettingsSection {
                width: parent.width
                title: "播放与资料库"

                ThemedSettingsItem {
                    objectName: "equalizerRow"
                    width: parent.width
                    icon: AppIcons.audio.equalizer
                    iconColor: SystemColors.orange
                    title: "均衡器"
                    subtitle: root.equalizer.isEnabled ? "" : "已关闭"
                    onClicked: root.equalizer.open()
                }
            }
            ThemedSettingsSection {
                width: parent.width
                title: "在线音乐服务"

                ThemedSettingsItem {
                    objectName: "apiServerRow"
                    width: parent.width
                    icon: AppIcons.file.server
                    iconColor: SystemColors.green
                    title: "API 服务器"
                    subtitle: root.apiSettings.usesDefault ? "默认" : "自定义"
                    onClicked: root.apiSettings.open()
                }
            }
            ThemedSettingsSection {
                width: parent.width
                title: "关于"

                ThemedSettingsItem {
                    objectName: "aboutRow"
                    width: parent.width
                    icon: AppIcons.settings.info
                    iconColor: SystemColors.gray
                    title: "关于"
                    subtitle: "v" + root.version
                    onClicked: aboutPage.isShown = true
                }
            }
        }
    }

    Loader {
        id: playerSheet

        property bool isWanted: false

        active: false
        onIsWantedChanged: active = true
        // A bound component could not be made by a loader that is of another file.
        // qmllint disable unqualified
        sourceComponent: NowPlayingSettingsView {
            objectName: "playerSettings"
            settings: root.nowPlayingSettings
            visible: playerSheet.isWanted
            onClosed: playerSheet.isWanted = false
        }
        // qmllint enable unqualified
    }
    ThemeSettingsView {
        id: appearancePage

        objectName: "themeSettingsView"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        onCloseRequested: isShown = false
        onIsShownChanged: {
            if (!isShown)
                overview.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
    AboutView {
        id: aboutPage

        objectName: "aboutView"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        version: root.version
        onCloseRequested: isShown = false
        onIsShownChanged: {
            if (!isShown)
                overview.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}
