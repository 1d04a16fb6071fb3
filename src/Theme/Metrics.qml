// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick
import Cadorel

/// Lengths in device-independent pixels and times in milliseconds that several screens share.
QtObject {
    readonly property int grid: 4
    readonly property int screenMargin: 16
    readonly property int rowSpacing: 8
    readonly property int cardPadding: 12
    readonly property int sectionGap: 24
    readonly property int hairline: 1

    /// By how much a title and the line beneath it are higher than usual on a desktop of large texts: what holds them
    /// grows by as much.
    readonly property int textGrowth: Math.max(0, TextStyles.body.line - TextStyles.body.usualLine + TextStyles.subheadline.line - TextStyles.subheadline.usualLine)
    /// The same of what holds words beside each other, no wider than the narrowest window has room for.
    function wordWidth(usual: int): int {
        return Math.min(minimumWidth - 2 * screenMargin, Math.round(usual * Math.max(1, TextStyles.body.line / TextStyles.body.usualLine)));
    }
    /// A word that has to fit becomes no smaller than this, and a number no smaller than that.
    readonly property int smallLabel: 11
    readonly property int smallestText: 9
    readonly property int rowHeight: 64 + textGrowth
    readonly property int compactRowHeight: 52 + textGrowth
    readonly property int tallRowHeight: 80 + textGrowth
    readonly property int rowCover: 48
    readonly property int cardHeight: 112 + textGrowth
    /// Cards of a grid are at least this wide.
    readonly property int cardWidth: 168
    readonly property int playlistCover: 96
    readonly property int albumCover: 280
    /// Of the note in place of a cover, in sides of it.
    readonly property real coverNoteShare: 0.3
    /// Corner of what surrounds a cassette, in sides of it.
    readonly property real cassetteCornerShare: 0.18
    readonly property int coverRadius: 8
    readonly property int touchTarget: 44
    readonly property int tabBarHeight: 49
    readonly property int tabWidth: 160
    readonly property int kawaiiTabIcon: 28
    readonly property real idleTabOpacity: 0.5
    readonly property int kawaiiTabBarPadding: 20
    readonly property real kawaiiHairline: 0.5
    readonly property real kawaiiHairlineOpacity: 0.2
    readonly property int buttonHeight: 44
    /// The ground of a button in a page's header, which answers on touchTarget.
    readonly property int headerButton: 36
    /// The round ground of the symbol of an empty screen, and the height from which on there is room for it.
    readonly property int emblem: 88
    readonly property int emptyStateRoom: 320
    readonly property int controlRadius: 10
    readonly property int cardRadius: 12
    readonly property int sheetRadius: 16
    /// A sheet that is drawn down by more than this goes.
    readonly property int sheetReach: 96
    readonly property int grabberWidth: 36
    readonly property int wheelWidth: 72
    readonly property int wheelHeight: 200 + 5 * textGrowth
    /// From this width on, six short buttons stand in one line.
    readonly property int wideOffsetButtons: 400
    readonly property int focusRing: 2

    readonly property int segmentWidth: 88
    readonly property int segmentRadius: 6
    readonly property int settingsItemHeight: 48
    readonly property int settingsSquare: 30
    /// Font size whose symbol stands on the square.
    readonly property int settingsGlyph: 15
    readonly property int segmentDuration: 200
    readonly property int statusDot: 8

    readonly property int stickerSize: 60
    /// Stickers are drawn at sizes this far apart, and shown a little smaller where needed.
    readonly property int stickerStep: 16
    readonly property int titleStickerSize: 32
    readonly property int largeStickerSize: 120
    readonly property real cornerStickerOpacity: 0.8
    /// A heart of scale 1.
    readonly property int floatingHeart: 20
    readonly property int cassetteSize: 300
    /// Of the settings: a card of a cassette, the cassette on it, and the large one beneath the cards.
    readonly property int cassetteCard: 96
    readonly property int cassetteThumbnail: 72
    readonly property int cassettePreview: 200
    readonly property int emojiButton: 52
    readonly property int emojiPreview: 64
    readonly property int colorPreview: 96
    readonly property int swatch: 40
    readonly property int appIconSize: 80
    readonly property int aboutEmblem: 72
    readonly property int previewWidth: 104
    readonly property int previewHeight: 48
    readonly property int previewDot: 16
    readonly property int previewBar: 2
    readonly property int selectionStroke: 2
    readonly property real pressedScale: 0.97

    readonly property int symbolTiny: 14
    readonly property int symbolSmall: 18
    readonly property int symbolHeader: 20
    readonly property int symbol: 24
    readonly property int symbolLarge: 30
    readonly property int heartSymbol: 28
    readonly property real heartJump: 1.3
    readonly property int heartJumpDuration: 300
    readonly property int symbolHuge: 56

    readonly property int trackHeight: 4
    readonly property int progressKnob: 12
    readonly property int draggedProgressKnob: 16
    readonly property int playButton: 64
    readonly property int playGlyphShift: 2
    readonly property int controlButton: 44
    readonly property int handleSize: 16
    readonly property int volumeWidth: 144
    /// Font size of its symbol, as of the others on the full-screen player.
    readonly property int volumeSymbol: 16
    readonly property int gainHandleSize: 20
    readonly property int gainLength: 208
    readonly property int shortGainLength: 128
    /// A sheet with less room than this takes short sliders.
    readonly property int equalizerRoom: 600
    readonly property int levelBarWidth: 3
    readonly property int levelBarGap: 2
    readonly property int levelBarHeight: 20
    /// Of the bars about the large cover: how far from it they begin and from each other, and how long the longest is.
    readonly property int waveBarWidth: 3
    readonly property int waveBarLength: 16
    readonly property int waveGap: 6
    readonly property int waveSpacing: 11
    readonly property int waveReach: waveGap + waveBarLength
    readonly property int dancingEmoji: 48
    /// Font size of an emoji in such a square.
    readonly property int dancingEmojiFont: 38
    readonly property int dancingJump: 18
    readonly property int dancingTilt: 12
    /// The part of its jump that goes up, of its square that lies on the cover, and of that its round corners.
    readonly property real dancingRise: 0.4
    readonly property real dancingOverlap: 0.75
    readonly property real dancingCornerShare: 0.2
    readonly property int scrollBarWidth: 6
    /// Of the bar's length, however long the list is.
    readonly property real scrollBarShare: 0.06
    readonly property real scrollBarOpacity: 0.3
    readonly property real scrollBarHeldOpacity: 0.6
    readonly property int switchWidth: 46
    readonly property int switchHeight: 28

    // Of the Now Playing screen: font sizes of its symbols, sides of the pictures drawn in their place, and lengths.
    readonly property int nowPlayingSymbol: 20
    readonly property int skipSymbol: 32
    readonly property int playSymbol: 72
    readonly property int drawnHeart: 36
    readonly property int drawnSkip: 40
    readonly property int playFrame: 80
    readonly property int loadingSpinner: 30
    readonly property real heartSquash: 0.95
    readonly property real modeSquash: 0.7
    readonly property int pageDot: 6
    readonly property int currentPageDot: 8
    readonly property int pageDotRoom: 28
    readonly property int pageDotDuration: Motion.scaled(200)
    readonly property real otherPageDotOpacity: 0.5
    readonly property real idleTimerOpacity: 0.5
    readonly property int miniLyricTop: 12
    readonly property int miniLyricBottom: 16
    /// The first of the stickers at the cover's corners.
    readonly property int coverSticker: 2
    readonly property int leastCover: 120
    /// A cover in less room than this has no ring about it.
    readonly property int leastRing: 180
    readonly property real readDecorationOpacity: 0.35
    readonly property int largestCover: 520
    readonly property int nowPlayingSliderHeight: 32
    readonly property real grooveOpacity: 0.3
    readonly property real darkGrooveOpacity: 0.5
    readonly property int statusLineHeight: 28
    readonly property int statusButtonHeight: 24
    /// How much stronger its ground is than that of what is pressed elsewhere, under the mouse and under a finger.
    readonly property real statusButtonHover: 1.5
    readonly property real statusButtonPress: 2
    readonly property int controlsWidth: 420
    readonly property int wideControlsWidth: 332
    readonly property int queueWidth: 720
    /// From this width on the lyrics stand beside the cover, within the next one.
    readonly property int sideBySideWidth: 900
    readonly property int sideBySideContent: 1280
    /// Below the first height its lines stand close, from the second on far apart.
    readonly property int lowNowPlaying: 560
    readonly property int highNowPlaying: 760
    /// Between two lines of lyrics, above the first and below the last.
    readonly property int lyricSpacing: 20
    /// Columns of blurred lines differ by that much at least: each of them is a picture.
    readonly property int lyricColumnStep: 16
    readonly property int lyricHeadroom: 100
    readonly property int lyricFootroom: 200
    /// A line of lyrics is wrapped into as many at most.
    readonly property int lyricMostRows: 24
    /// Lines fade over this much of the page's upper and lower end.
    readonly property int lyricEdge: 40
    /// From as far a line slides or falls into its place.
    readonly property int lyricEntrance: 28
    readonly property int lyricEntranceDuration: 350
    /// How much smaller it begins where it grows, and where it springs.
    readonly property real lyricGrowth: 0.4
    readonly property real lyricBounce: 0.16
    readonly property real lyricEntranceResponse: 0.4
    readonly property real lyricBounceDamping: 0.4
    readonly property real lyricEntranceDamping: 0.65
    /// Part of the page's height that is scrolled on the way to a line that is farther.
    readonly property real lyricFarthestWay: 0.4
    readonly property int lyricStyleDuration: 250
    readonly property int lyricScrollDuration: 300
    readonly property int lyricScrollDelay: 100
    readonly property int miniLyricHeight: 50
    readonly property int miniLyricFadeOut: 100

    readonly property int phoneWidth: 390
    readonly property int phoneHeight: 844
    readonly property int minimumWidth: 320
    readonly property int minimumHeight: 480
    readonly property int contentWidth: 1000
    readonly property int sheetWidth: 560
    /// As small a part of its size the title of a sheet gets before it takes a second line.
    readonly property real smallestTitle: 0.8
    readonly property int formWidth: 640
    readonly property int dialogWidth: 320
    readonly property int menuWidth: wordWidth(208)
    readonly property int textBlockWidth: wordWidth(224)

    readonly property real disabledOpacity: 0.35
    /// Of a mark that says no more than that a row leads somewhere.
    readonly property real quietMarkOpacity: 0.6
    /// Of the edge of a field that is only sunk, and of that about a badge.
    readonly property real fieldEdgeOpacity: 0.6
    readonly property real badgeEdgeOpacity: 0.4
    /// Of a text colour that is laid over what the mouse is on, and over what is pressed.
    readonly property real hoverOpacity: Surfaces.hoverOpacity
    readonly property real pressedOpacity: 0.12
    /// A press is seen at least this long.
    readonly property int pressDuration: 100
    /// Between two drawings of a large picture whose size changes.
    readonly property int redrawInterval: 100
    /// A cover stays that long for the next one to come.
    readonly property int coverPatience: 300
    /// One turn of the mini player's disc.
    readonly property int discTurn: 12000
    readonly property real liftedScale: 1.1
    readonly property real chosenScale: 1.15
    readonly property int putDownDuration: 150
    /// Of a disc that lies in somebody's hand: how much larger its halo is, and how much of the accent it has.
    readonly property int discHalo: 8
    readonly property real discHaloOpacity: 0.3
    /// Of the screen's own colour over what lies beneath an open fan, and how far from the disc's centre it goes.
    readonly property real fanVeilOpacity: 0.7
    readonly property int fanVeilReach: 240
    /// By how much a disc without a cover is lighter at its top than the accent.
    readonly property real discLightness: 1.35
    readonly property int sheetDuration: Motion.scaled(300)
    /// From one picture to the next.
    readonly property int fadeDuration: Motion.scaled(300)
    /// Until bars lie flat when the music stops.
    readonly property int restDuration: Motion.scaled(300)
    /// Up and down again.
    readonly property int jumpDuration: Motion.scaled(200)
    readonly property int toolTipDelay: 700
    readonly property int spinnerTurn: 1200
    readonly property int locateDelay: 150
    /// Seconds that an arrow key goes on, or back; and its part of the whole volume.
    readonly property int seekStep: 5
    readonly property real volumeStep: 0.05
    /// One notch of a mouse's wheel.
    readonly property int wheelNotch: 120

    /// Size of a symbol that stands where a text of that font size would: its box is a fifth larger.
    function symbolOf(fontSize: real): int {
        return Math.round(1.2 * fontSize);
    }

    /// Size of the symbol on a round button: 0.4 of its diameter, with whole pixels at each side.
    function glyphOf(diameter: real): int {
        return Math.max(0, diameter - 2 * Math.round(0.3 * diameter));
    }
}
