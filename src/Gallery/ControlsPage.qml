// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Grounds, buttons, bars, fields, rows and covers.
GalleryPage {
    title: "控件"
    summary: "界面由这些零件拼成。每个零件都以它的几种状态出现。"

    SurfaceSections {
        width: parent.width
    }
    ButtonSections {
        width: parent.width
    }
    BarSections {
        width: parent.width
    }
    RowSections {
        width: parent.width
    }
    MenuSections {
        width: parent.width
    }
    SettingsSections {
        width: parent.width
    }
    CoverSections {
        width: parent.width
    }
    NowPlayingSections {
        width: parent.width
    }
    ThemeSections {
        width: parent.width
    }
}
