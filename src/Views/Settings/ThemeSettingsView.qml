// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The page of the looks, and the way to the application's icons.
SlidingPage {
    id: root

    property int sideMargin: Metrics.screenMargin

    SettingsForm {
        anchors.fill: parent
        visible: !iconPage.covers
        enabled: !iconPage.isShown
        focus: true
        sideMargin: root.sideMargin
        title: "外观与主题"
        onBackRequested: root.closeRequested()

        ThemePickerView {
            objectName: "themePickerView"
            width: parent.width
            focus: true
        }
        QuietText {
            width: parent.width
            leftPadding: Metrics.cardPadding
            rightPadding: Metrics.cardPadding
            text: "拟态风格采用经典的凸起阴影效果，可爱粉粉风格使用柔和的粉色渐变。"
            wrapMode: Text.Wrap
        }
        ThemedSettingsSection {
            width: parent.width
            title: "图标"

            ThemedSettingsItem {
                id: iconRow

                objectName: "appIconRow"
                width: parent.width
                icon: AppIcons.misc.app
                iconColor: SystemColors.indigo
                title: "应用图标"
                onClicked: iconPage.isShown = true
            }
        }
    }
    SlidingPage {
        id: iconPage

        property bool isVisited: false

        objectName: "appIconPage"
        width: parent.width
        height: parent.height
        onCloseRequested: isShown = false
        onIsShownChanged: {
            if (isShown)
                isVisited = true;
            else
                iconRow.forceActiveFocus(Qt.OtherFocusReason);
        }

        Loader {
            anchors.fill: parent
            active: iconPage.isVisited
            focus: true
            // A bound component could not be made by a loader that is of another file.
            // qmllint disable unqualified
            sourceComponent: AppIconPickerView {
                objectName: "appIconPickerView"
                focus: true
                sideMargin: root.sideMargin
                onBackRequested: iconPage.isShown = false
            }
            // qmllint enable unqualified
        }
    }
}
