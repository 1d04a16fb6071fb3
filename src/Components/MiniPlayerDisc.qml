// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// The cover of the running song as a disc in a ring. It turns while `spins`, and from its upright place when the
/// song is another one.
// A screen reader learns what a button is from its type alone.
T.AbstractButton {
    id: root

    required property string coverSource
    required property bool hasCover
    /// Of the song that is shown: its picture is no other song's, not even for a moment.
    required property string viewIdentity
    /// Another value begins the turning anew.
    required property var spinKey
    property bool spins: false
    /// It lies in somebody's hand.
    property bool isLifted: false
    property bool isPointedAt: false
    property AppTheme theme: ThemeEnvironment.theme

    readonly property alias angle: cover.rotation
    readonly property real ring: MiniPlayerGeometry.ringWidth
    /// From 0, at rest, to 1.
    property real lift: 0

    function turn(): void {
        turning.stop();
        turning.from = cover.rotation % 360;
        turning.to = turning.from + 360;
        if (spins)
            turning.start();
    }

    implicitWidth: MiniPlayerGeometry.discSize + 2 * ring
    implicitHeight: implicitWidth
    focusPolicy: Qt.TabFocus
    containmentMask: RoundTouchArea {
        diameter: root.width
    }
    onSpinsChanged: turn()
    onSpinKeyChanged: {
        turning.stop();
        cover.rotation = 0;
        turn();
    }
    Component.onCompleted: turn()

    // It comes up as a thing that is taken, and is put down softly.
    states: State {
        name: "lifted"
        when: root.isLifted

        PropertyChanges {
            root.lift: 1
        }
    }
    transitions: [
        Transition {
            to: "lifted"

            ResponseSpring {
                objectName: "liftSpring"
                target: root
                property: "lift"
                response: 0.25
                damping: 0.8
            }
        },
        Transition {
            from: "lifted"

            ResponseSpring {
                target: root
                property: "lift"
                easeOut: Metrics.putDownDuration
            }
        }
    ]

    NumberAnimation {
        id: turning

        target: cover
        property: "rotation"
        duration: Metrics.discTurn
        loops: Animation.Infinite
    }

    background: SurfaceImage {
        objectName: "ring"
        surface: Surfaces.playButton(root.theme, root.width)

        Rectangle {
            objectName: "halo"
            anchors.centerIn: parent
            width: parent.width + Metrics.discHalo * root.lift
            height: width
            radius: width / 2
            z: -1
            color: Qt.alpha(root.theme.primaryColor, Metrics.discHaloOpacity * root.lift)
            visible: root.lift > 0
        }
    }
    contentItem: Item { // qmllint disable deferred-property-id
        Item {
            id: cover

            objectName: "cover"
            anchors.centerIn: parent
            width: MiniPlayerGeometry.discSize
            height: width

            Rectangle {
                objectName: "placeholder"
                anchors.fill: parent
                radius: width / 2
                antialiasing: true
                gradient: Gradient {
                    GradientStop {
                        position: 0
                        color: Qt.lighter(root.theme.primaryColor, Metrics.discLightness)
                    }
                    GradientStop {
                        position: 1
                        color: root.theme.primaryColor
                    }
                }
            }
            SymbolIcon {
                objectName: "placeholderNote"
                anchors.centerIn: parent
                name: AppIcons.music.note
                size: Metrics.glyphOf(MiniPlayerGeometry.discSize)
                color: SystemColors.accentInk
                visible: (picture.item as Image)?.status !== Image.Ready
            }
            // A bound component could not be made by a loader that is of another file.
            // qmllint disable unqualified
            IdentityLoader {
                id: picture

                anchors.fill: parent
                identity: root.viewIdentity
                isPresent: root.hasCover
                sourceComponent: Image {
                    objectName: "picture"
                    asynchronous: true
                    smooth: true
                    // Turned, a picture of as many pixels as it is shown at would lose its edges.
                    sourceSize.width: 2 * MiniPlayerGeometry.discSize
                    sourceSize.height: 2 * MiniPlayerGeometry.discSize
                    source: root.coverSource + "?radius=0.5"
                }
            }
            // qmllint enable unqualified
        }
        ThemedHighlight {
            anchors.fill: parent
            radius: width / 2
            isHovered: root.isPointedAt
            isPressed: root.isLifted
            ink: SystemColors.accentInk
            theme: root.theme
        }
        ThemedFocusRing {
            objectName: "discFocusRing"
            controlRadius: root.width / 2
            theme: root.theme
            visible: root.visualFocus
        }
    }
}
