// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// Which of the pages is shown, and a way to each of them.
Row {
    id: root

    /// Names of the pages, for screen readers.
    property var names: []
    property int currentPage: 0
    property color ink: ThemeEnvironment.theme.primaryTextColor

    signal pageRequested(int page)

    height: Metrics.touchTarget
    Accessible.role: Accessible.PageTabList
    Accessible.name: "页面"

    Repeater {
        model: root.names

        // A screen reader learns what a button is from its type alone.
        delegate: T.TabButton {
            id: tab

            required property int index
            required property string modelData

            readonly property bool isCurrent: index === root.currentPage
            /// Dots lie closer together than fingers are thick: those at the sides are not in the middle of their room.
            readonly property real dotShift: ((root.names.length - 1) / 2 - index) * (width - Metrics.pageDotRoom)

            objectName: "pageDot" + index
            implicitWidth: Metrics.touchTarget
            implicitHeight: root.height
            checkable: false
            autoExclusive: false
            hoverEnabled: true
            // A click leaves the keyboard where it was.
            focusPolicy: Qt.TabFocus
            text: modelData
            Accessible.role: Accessible.PageTab
            Accessible.name: text
            Accessible.selectable: true
            Accessible.selected: isCurrent
            Accessible.onPressAction: Press.byAction(tab)
            Keys.onPressed: event => Press.holdBack(event)
            Keys.onReleased: event => Press.holdBack(event)
            Keys.onReturnPressed: event => Press.byKey(tab, event)
            Keys.onEnterPressed: event => Press.byKey(tab, event)
            onClicked: root.pageRequested(index)

            contentItem: Item {
                Rectangle {
                    objectName: "dot"
                    anchors.centerIn: parent
                    anchors.horizontalCenterOffset: tab.dotShift
                    width: tab.isCurrent ? Metrics.currentPageDot : Metrics.pageDot
                    height: width
                    radius: width / 2
                    color: root.ink
                    opacity: tab.isCurrent || tab.hovered ? 1 : Metrics.otherPageDotOpacity

                    Behavior on width {
                        NumberAnimation {
                            duration: Metrics.pageDotDuration
                            easing.type: Easing.BezierSpline
                            easing.bezierCurve: Motion.easeInOut
                        }
                    }
                    Behavior on opacity {
                        NumberAnimation {
                            duration: Metrics.pageDotDuration
                        }
                    }
                }
            }
            background: Item {
                Item {
                    anchors.centerIn: parent
                    anchors.horizontalCenterOffset: tab.dotShift
                    width: Metrics.pageDotRoom
                    height: parent.height

                    FocusRing {
                        radius: Metrics.coverRadius
                        border.color: root.ink
                        visible: tab.visualFocus
                    }
                }
            }
        }
    }
}
