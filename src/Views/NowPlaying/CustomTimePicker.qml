// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Hours and minutes on two wheels.
ThemedSheet {
    id: root

    required property SleepTimerViewModel sleep

    title: "设置定时关闭时间"
    cancelName: "customTimeCancel"
    cancelText: "取消"
    acceptName: "customTimeAccept"
    acceptText: "确定"
    visible: sleep.showsCustomPicker
    firstFocus: hours
    closesOnAccept: false
    onAccepted: sleep.confirmCustom()
    onClosed: sleep.cancelCustom()

    ThemedCard {
        width: parent.width
        height: Metrics.wheelHeight
        theme: root.theme

        Rectangle {
            objectName: "wheelBand"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            height: hours.rowHeight
            radius: Metrics.coverRadius
            color: Qt.alpha(root.theme.primaryColor, Metrics.pressedOpacity)
        }
        Row {
            id: wheels

            readonly property real wheelWidth: Math.min(Metrics.wheelWidth, (parent.width - 2 * Metrics.screenMargin - hourUnit.implicitWidth - minuteUnit.implicitWidth - 3 * spacing) / 2)

            anchors.horizontalCenter: parent.horizontalCenter
            height: parent.height
            spacing: Metrics.rowSpacing

            TimeWheel {
                id: hours

                objectName: "hoursWheel"
                width: wheels.wheelWidth
                height: parent.height
                name: hourUnit.text
                model: root.sleep.hourCount
                place: root.sleep.customHours
                theme: root.theme
                onPlaced: place => root.sleep.customHours = place
            }
            StyledText {
                id: hourUnit

                anchors.verticalCenter: parent.verticalCenter
                text: "小时"
                color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            }
            TimeWheel {
                objectName: "minutesWheel"
                width: wheels.wheelWidth
                height: parent.height
                name: minuteUnit.text
                model: root.sleep.minuteCount
                place: root.sleep.customMinutes
                theme: root.theme
                onPlaced: place => root.sleep.customMinutes = place
            }
            StyledText {
                id: minuteUnit

                anchors.verticalCenter: parent.verticalCenter
                text: "分钟"
                color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            }
        }
    }
    StyledText {
        objectName: "customTimeText"
        width: parent.width
        text: root.sleep.customTimeText
        style: TextStyles.headline
        color: Surfaces.accentOn(root.theme, Surfaces.background(root.theme))
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    TextButton {
        objectName: "customTimeReset"
        width: parent.width
        symbol: AppIcons.action.reset
        text: "重置为 0"
        onClicked: root.sleep.resetCustom()
    }
}
