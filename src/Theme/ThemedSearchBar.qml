// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A field for what to look for. Return submits it, Escape and the button at its end empty it, the arrow down
/// leaves it for what was found.
FocusScope {
    id: root

    property alias text: field.text
    property string placeholder
    property AppTheme theme: ThemeEnvironment.theme

    /// Somebody has changed the text, also by emptying it.
    signal edited(string text)
    signal submitted
    signal leftDownwards

    implicitWidth: Metrics.menuWidth
    implicitHeight: Math.max(TextStyles.body.line, Metrics.symbolSmall) + 2 * Metrics.cardPadding
    opacity: enabled ? 1 : Metrics.disabledOpacity

    function clear(): void {
        // An assignment would undo what the text is bound to.
        field.clear();
        edited("");
    }

    SurfaceImage {
        objectName: "ground"
        anchors.fill: parent
        surface: Surfaces.searchBar(root.theme)
    }
    ThemedFocusRing {
        objectName: "focusRing"
        controlRadius: Metrics.controlRadius
        outset: 0
        theme: root.theme
        visible: field.activeFocus
    }
    SymbolIcon {
        id: lens

        objectName: "lens"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        name: AppIcons.action.search
        size: Metrics.symbolSmall
        color: root.theme.secondaryTextColor
    }
    T.TextField {
        id: field

        objectName: root.objectName + "Text"
        anchors.left: lens.right
        anchors.leftMargin: Metrics.rowSpacing
        anchors.right: clearButton.visible ? clearButton.left : parent.right
        anchors.rightMargin: clearButton.visible ? 0 : Metrics.cardPadding
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        verticalAlignment: TextInput.AlignVCenter
        clip: contentWidth > width
        focus: true
        color: root.theme.primaryTextColor
        font.pixelSize: TextStyles.body.size
        selectionColor: Contrast.groundFor(SystemColors.accentInk, root.theme.primaryColor)
        selectedTextColor: SystemColors.accentInk
        selectByMouse: true
        inputMethodHints: Qt.ImhNoAutoUppercase
        Accessible.role: Accessible.EditableText
        Accessible.name: root.placeholder
        Accessible.searchEdit: true
        // A long text that nobody edits shows its beginning.
        onTextChanged: if (!activeFocus) cursorPosition = 0
        onActiveFocusChanged: if (!activeFocus) cursorPosition = 0
        onTextEdited: root.edited(text)
        onAccepted: root.submitted()
        // Once, however long the key is held down, also where it was pressed on the button.
        Keys.onReturnPressed: event => event.accepted = event.isAutoRepeat
        Keys.onEnterPressed: event => event.accepted = event.isAutoRepeat
        Keys.onDownPressed: root.leftDownwards()
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            if (event.accepted)
                root.clear();
        }

        StyledText {
            objectName: "placeholder"
            anchors.fill: parent
            text: root.placeholder
            color: Surfaces.textOn(root.theme, Surfaces.searchBar(root.theme), root.theme.secondaryTextColor)
            visible: field.length === 0 && field.preeditText === ""
            Accessible.ignored: true
        }
    }
    ThemedIconButton {
        id: clearButton

        objectName: root.objectName + "Clear"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text !== ""
        symbol: AppIcons.status.xmarkCircle
        symbolSize: Metrics.symbolSmall
        theme: root.theme
        text: "清空输入"
        onClicked: {
            root.clear();
            field.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}
