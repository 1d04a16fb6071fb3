// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// How the test of a connection goes or went. Keeps its line while there is nothing to say, so that nothing jumps.
RowLayout {
    id: root

    property bool isTesting: false
    property string message
    property bool succeeded: false

    spacing: Metrics.rowSpacing
    Accessible.role: Accessible.StaticText
    Accessible.name: text.text

    Item {
        Layout.preferredWidth: Metrics.symbolSmall
        Layout.preferredHeight: Metrics.symbolSmall
        Layout.alignment: Qt.AlignTop

        Spinner {
            visible: root.isTesting
        }
        SymbolIcon {
            visible: !root.isTesting && root.message !== ""
            name: root.succeeded ? AppIcons.status.checkmarkCircle : AppIcons.status.xmarkCircle
            size: Metrics.symbolSmall
            color: Surfaces.ink(ThemeEnvironment.theme, root.succeeded ? SystemColors.green : SystemColors.red)
        }
    }
    StyledText {
        id: text

        objectName: "testMessage"
        Layout.fillWidth: true
        Layout.minimumHeight: style.line
        text: root.isTesting ? "正在测试…" : root.message
        style: TextStyles.subheadline
        color: Surfaces.ink(ThemeEnvironment.theme, root.isTesting ? ThemeEnvironment.theme.secondaryTextColor : root.succeeded ? ThemeEnvironment.theme.primaryTextColor : SystemColors.red)
        wrapMode: Text.Wrap
    }
}
