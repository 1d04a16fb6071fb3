// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

// Positioned, not laid out: a layout in a layout keeps the height of a note that had no width yet.
/// One text field of a form: its name above, and beneath it what is wrong with it or worth knowing.
Column {
    id: root

    required property FormTextInput input
    required property string label
    property string placeholder
    property string footer
    property bool isSecret: false
    /// What belongs into the field is being fetched.
    property bool isWaiting: false
    property int inputMethodHints: Qt.ImhNone
    /// Scrolls to the field when the keyboard comes to it, its name and its note as well.
    property FormFlickable viewport: null

    property bool isRevealed: false
    /// The listener is done with the field: the key for it was pressed.
    signal accepted

    readonly property string note: input.error !== "" ? input.error : input.hint !== "" ? input.hint : footer

    property AppTheme theme: ThemeEnvironment.theme

    spacing: Metrics.grid
    // The toolkit tells nobody the name of a field that hides what is typed, and of every field its placeholder for a
    // description.
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Accessible.description: note
    // A note that comes up makes it higher, and those above move it.
    onHeightChanged: scrollTo()
    onYChanged: scrollTo()

    /// The keyboard belongs here now.
    function takeFocus(): void {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    Connections {
        target: root.input

        function onFocusRequested(): void {
            root.takeFocus();
        }
    }

    QuietText {
        width: parent.width
        text: root.label
        Accessible.ignored: true
    }
    SurfaceImage {
        width: parent.width
        height: Math.max(Metrics.touchTarget, TextStyles.body.line + 2 * Metrics.rowSpacing)
        surface: Surfaces.themedButton(root.theme, true, Metrics.controlRadius)

        Rectangle {
            objectName: "errorEdge"
            anchors.fill: parent
            radius: Metrics.controlRadius
            color: "transparent"
            border.width: Metrics.hairline
            border.color: root.input.error !== "" ? SystemColors.red : Qt.alpha(root.theme.secondaryTextColor, Metrics.fieldEdgeOpacity)
            // What is sunk alone cannot be told from its ground where the look has one colour for both.
            visible: root.input.error !== "" || root.theme.useNeumorphism
        }
        FocusRing {
            radius: Metrics.controlRadius
            visible: field.activeFocus
        }
        TextField {
            id: field

            objectName: root.objectName + "Text"
            anchors.left: parent.left
            anchors.right: trailing.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            leftPadding: Metrics.cardPadding
            rightPadding: Metrics.grid
            background: null
            text: root.input.text
            color: Surfaces.ink(root.theme, root.theme.primaryTextColor)
            font.pixelSize: TextStyles.body.size
            placeholderText: root.isWaiting && text === "" ? "正在读取已保存的密码…" : root.placeholder
            placeholderTextColor: Surfaces.ink(root.theme, root.theme.secondaryTextColor)
            selectionColor: Contrast.groundFor(SystemColors.accentInk, root.theme.primaryColor)
            selectedTextColor: SystemColors.accentInk
            selectByMouse: true
            echoMode: root.isSecret && !root.isRevealed ? TextInput.Password : TextInput.Normal
            passwordMaskDelay: 0
            inputMethodHints: root.isSecret ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase : root.inputMethodHints
            Accessible.name: root.label
            onTextEdited: root.input.edit(text)
            onEditingFinished: root.input.finish()
            onAccepted: root.accepted()
            // Once, however long the key is held down.
            Keys.onReturnPressed: event => event.accepted = event.isAutoRepeat
            Keys.onEnterPressed: event => event.accepted = event.isAutoRepeat
        }
        Item {
            id: trailing

            anchors.right: parent.right
            width: root.isSecret ? Metrics.touchTarget : Metrics.rowSpacing
            height: parent.height

            Spinner {
                objectName: "waitingMark"
                anchors.centerIn: parent
                visible: root.isWaiting
            }
            ThemedIconButton {
                objectName: "revealButton"
                anchors.centerIn: parent
                visible: root.isSecret && !root.isWaiting
                symbol: root.isRevealed ? AppIcons.action.hide : AppIcons.action.reveal
                text: root.isRevealed ? "隐藏密码" : "显示密码"
                onClicked: root.isRevealed = !root.isRevealed
            }
        }
    }
    StyledText {
        objectName: root.objectName + "Note"
        width: parent.width
        visible: text !== ""
        text: root.note
        style: TextStyles.footnote
        color: Surfaces.ink(root.theme, root.input.error !== "" ? SystemColors.red : root.theme.secondaryTextColor)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Connections {
        target: root.viewport

        function onReached(item: Item): void {
            if (item === field)
                root.scrollTo();
        }
    }

    /// Gives the field the keyboard, its text ready to be replaced.
    function takeKeyboard(): void {
        field.forceActiveFocus(Qt.PopupFocusReason);
        field.selectAll();
    }
    function scrollTo(): void {
        if (viewport && field.activeFocus)
            viewport.reveal(root);
    }
}
