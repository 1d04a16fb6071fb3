// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The root screen, from beneath to the front: the ground of the look, the tabs, the small player while there is a
/// song, and the Now Playing screen, which covers all of them.
FocusScope {
    id: root

    required property ScreenModels screens
    property AppTheme theme: ThemeEnvironment.theme
    property int selectedTab: ContentTabs.Tab.library
    property bool showNowPlaying: false
    /// Where a keyboard on the screen stands, in the window.
    // The input method's properties are unknown to the linter.
    property rect keyboardArea: Qt.inputMethod.keyboardRectangle // qmllint disable type

    readonly property CadorelViewModel viewModel: screens.viewModel
    /// The plain tab view is made anew with its tabs.
    readonly property string tabViewIdentity: theme.isKawaiiPink ? "" : viewModel.uiRefreshToken + "-" + screens.content.showWebDAVTab
    /// The pink look's own bar stays where it is.
    readonly property real keyboardHeight: theme.isKawaiiPink || keyboardArea.height <= 0 ? 0 : Math.max(0, height - keyboardArea.y)
    readonly property real barHeight: (tabView.item as TabView)?.barHeight ?? 0
    readonly property real bannerTop: showNowPlaying ? Metrics.touchTarget + 2 * Metrics.grid : Metrics.rowSpacing
    readonly property real bannerWidth: Math.min(width, Metrics.contentWidth) - 2 * Metrics.screenMargin
    /// Who gets the keyboard of what goes away in front of the screens.
    readonly property Item keyboardHeir: showNowPlaying ? cover : (tabView.item as TabView)?.content ?? null
    /// Where the keyboard was before the Now Playing screen came up.
    property Item keyboardBefore: null

    /// Shows a place. @param keepsKeyboard the keyboard stays where it is
    function showTab(tab: int, keepsKeyboard: bool): void {
        closeNowPlaying();
        selectedTab = tab;
        if (!keepsKeyboard)
            (tabView.item as TabView).takeKeyboard();
    }
    function openNowPlaying(): void {
        if (showNowPlaying)
            return;
        keyboardBefore = Window.activeFocusItem;
        showNowPlaying = true;
        cover.forceActiveFocus(Qt.OtherFocusReason);
    }
    function closeNowPlaying(): void {
        if (!showNowPlaying)
            return;
        showNowPlaying = false;
        if (keyboardBefore && keyboardBefore.visible && keyboardBefore.enabled)
            keyboardBefore.forceActiveFocus(Qt.OtherFocusReason);
        else
            (tabView.item as TabView).takeKeyboard();
        keyboardBefore = null;
    }
    /// The keys that the Now Playing screen itself has no use for.
    function steer(event: var): void {
        if (!showNowPlaying || !Press.isPlain(event))
            return;
        switch (event.key) {
        case Qt.Key_Left:
            screens.playback.seekBy(-Metrics.seekStep, event.isAutoRepeat);
            break;
        case Qt.Key_Right:
            screens.playback.seekBy(Metrics.seekStep, event.isAutoRepeat);
            break;
        case Qt.Key_Up:
            screens.playback.changeVolume(Metrics.volumeStep);
            break;
        case Qt.Key_Down:
            screens.playback.changeVolume(-Metrics.volumeStep);
            break;
        case Qt.Key_Escape:
        case Qt.Key_Back:
            // One that is held down has closed the sheet before it.
            if (!event.isAutoRepeat)
                closeNowPlaying();
            break;
        default:
            return;
        }
        event.accepted = true;
    }

    // A shortcut on Space would take it from the buttons; a key that none of them wants arrives here.
    Keys.onSpacePressed: event => {
        event.accepted = Press.isPlain(event);
        if (Press.isPlayPause(event))
            viewModel.togglePlayPause();
    }
    Keys.onPressed: event => steer(event)

    ThemedBackground {
        anchors.fill: parent
        visible: !cover.covers
        theme: root.theme
    }

    // Bound components could not be made by loaders that are of another file.
    // qmllint disable unqualified
    IdentityLoader {
        id: tabView

        objectName: "tabView"
        anchors.fill: parent
        anchors.bottomMargin: root.keyboardHeight
        visible: !cover.covers
        enabled: !root.showNowPlaying
        focus: true
        identity: root.tabViewIdentity
        sourceComponent: TabView {
            screens: root.screens
            selectedTab: root.selectedTab
            appearance: BarAppearances.setupAppearance(root.theme)
            theme: root.theme
            focus: true
            onTabRequested: (tab, byKeyboard) => root.showTab(tab, byKeyboard)
        }
    }
    IdentityLoader {
        objectName: "miniPlayerLayer"
        anchors.fill: parent
        visible: !cover.covers
        enabled: !root.showNowPlaying
        identity: root.viewModel.uiRefreshToken
        isPresent: root.viewModel.hasCurrentSong
        sourceComponent: MiniPlayerView {
            objectName: "miniPlayerView"
            miniPlayer: root.screens.miniPlayer
            // The disc stays above the bar of every look, and is not beneath what there is to say.
            topInset: deviceBanner.visible && !root.showNowPlaying ? deviceBanner.y + deviceBanner.height : 0
            bottomInset: root.barHeight + root.keyboardHeight + (errorBanner.visible ? errorBanner.height + Metrics.rowSpacing : 0)
            onOpenRequested: root.openNowPlaying()
        }
    }
    NowPlayingCover {
        id: cover

        objectName: "nowPlayingCover"
        width: parent.width
        height: parent.height
        isShown: root.showNowPlaying
        sourceComponent: NowPlayingView {
            objectName: "nowPlayingView"
            focus: true
            viewModel: root.viewModel
            nowPlaying: root.screens.nowPlaying
            queue: root.screens.queue
            equalizer: root.screens.equalizer
            devices: root.screens.devices
            appearance: root.screens.nowPlayingSettings
            onCloseRequested: root.closeNowPlaying()
        }
    }
    // qmllint enable unqualified
    Binding {
        target: MiniPlayerRoom
        property: "height"
        value: root.viewModel.hasCurrentSong ? MiniPlayerGeometry.startRoom : 0
    }
    // Banners lie in front of the disc and of the cover. Over the cover they leave its top bar and its controls free.
    HintBanner {
        id: deviceBanner

        objectName: "deviceBanner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.bannerTop
        width: root.bannerWidth
        visible: text !== ""
        keyboardHeir: root.keyboardHeir
        text: root.screens.devices.notice
        actionText: "好"
        onActionRequested: root.screens.devices.dismissNotice()
    }
    MessageBanner {
        id: errorBanner

        objectName: "playErrorBanner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.showNowPlaying ? root.bannerTop + (deviceBanner.visible ? deviceBanner.height + Metrics.rowSpacing : 0) : tabView.height - root.barHeight - Metrics.rowSpacing - height
        width: root.bannerWidth
        keyboardHeir: root.keyboardHeir
        text: root.viewModel.audioPlayer.playError
        onDismissed: root.screens.playback.dismissPlayError()
    }

    RootSheets {
        anchors.fill: parent
        screens: root.screens
    }
    RootKeys {
        screens: root.screens
        onTabRequested: tab => root.showTab(tab, false)
        onNowPlayingRequested: root.showNowPlaying ? root.closeNowPlaying() : root.openNowPlaying()
    }
    Connections {
        target: root.screens.content

        function onMiniPlayerLocateCurrentSong(songId: string, isWebDAV: bool): void {
            root.selectedTab = ContentTabs.Tab.library;
            (tabView.item as TabView).locate(songId, isWebDAV);
        }
    }
}
