// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/SymbolFiles.h"

#include <QHash>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto folder = ":/icons/"_L1;
constexpr auto unknownSymbol = "phosphor/regular/circle.svg"_L1;

/// By the names of the design that the screens follow. "phosphor" is the vendored set, "cadorel" what it
/// lacks.
const QHash<QString, QString> &files()
{
    static const QHash<QString, QString> table = {
        {u"1.circle.fill"_s, u"phosphor/fill/number-circle-one-fill.svg"_s},
        {u"2.circle.fill"_s, u"phosphor/fill/number-circle-two-fill.svg"_s},
        {u"3.circle.fill"_s, u"phosphor/fill/number-circle-three-fill.svg"_s},
        {u"airplayaudio"_s, u"cadorel/airplayaudio.svg"_s},
        {u"alarm.fill"_s, u"phosphor/fill/alarm-fill.svg"_s},
        {u"app.fill"_s, u"cadorel/app.fill.svg"_s},
        {u"arrow.backward"_s, u"phosphor/regular/arrow-left.svg"_s},
        {u"arrow.clockwise"_s, u"phosphor/regular/arrow-clockwise.svg"_s},
        {u"arrow.clockwise.circle.fill"_s, u"cadorel/arrow.clockwise.circle.fill.svg"_s},
        {u"arrow.counterclockwise"_s, u"phosphor/regular/arrow-counter-clockwise.svg"_s},
        {u"arrow.down"_s, u"phosphor/regular/arrow-down.svg"_s},
        {u"arrow.down.circle.fill"_s, u"phosphor/fill/arrow-circle-down-fill.svg"_s},
        {u"arrow.forward"_s, u"phosphor/regular/arrow-right.svg"_s},
        {u"arrow.left.arrow.right"_s, u"phosphor/regular/arrows-left-right.svg"_s},
        {u"arrow.triangle.2.circlepath"_s, u"phosphor/regular/arrows-clockwise.svg"_s},
        {u"arrow.up"_s, u"phosphor/regular/arrow-up.svg"_s},
        {u"arrow.up.arrow.down"_s, u"phosphor/regular/arrows-down-up.svg"_s},
        {u"arrow.up.circle.fill"_s, u"phosphor/fill/arrow-circle-up-fill.svg"_s},
        {u"arrow.up.left.and.arrow.down.right"_s, u"cadorel/arrow.up.left.and.arrow.down.right.svg"_s},
        {u"backward.fill"_s, u"phosphor/fill/skip-back-fill.svg"_s},
        {u"bell.fill"_s, u"phosphor/fill/bell-fill.svg"_s},
        {u"bell.slash"_s, u"phosphor/regular/bell-slash.svg"_s},
        {u"bolt.fill"_s, u"phosphor/fill/lightning-fill.svg"_s},
        {u"bolt.horizontal.circle"_s, u"cadorel/bolt.horizontal.circle.svg"_s},
        {u"bolt.horizontal.circle.fill"_s, u"cadorel/bolt.horizontal.circle.fill.svg"_s},
        {u"bookmark"_s, u"phosphor/regular/bookmark-simple.svg"_s},
        {u"bookmark.fill"_s, u"phosphor/fill/bookmark-simple-fill.svg"_s},
        {u"chart.bar"_s, u"phosphor/regular/chart-bar.svg"_s},
        {u"checkmark"_s, u"phosphor/regular/check.svg"_s},
        {u"checkmark.circle"_s, u"phosphor/regular/check-circle.svg"_s},
        {u"checkmark.circle.fill"_s, u"phosphor/fill/check-circle-fill.svg"_s},
        {u"chevron.down"_s, u"phosphor/regular/caret-down.svg"_s},
        {u"chevron.left"_s, u"phosphor/regular/caret-left.svg"_s},
        {u"chevron.right"_s, u"phosphor/regular/caret-right.svg"_s},
        {u"chevron.up"_s, u"phosphor/regular/caret-up.svg"_s},
        {u"circle"_s, u"phosphor/regular/circle.svg"_s},
        {u"circle.fill"_s, u"phosphor/fill/circle-fill.svg"_s},
        {u"circle.lefthalf.filled"_s, u"cadorel/circle.lefthalf.filled.svg"_s},
        {u"clock"_s, u"phosphor/regular/clock.svg"_s},
        {u"clock.arrow.2.circlepath"_s, u"cadorel/clock.arrow.2.circlepath.svg"_s},
        {u"clock.arrow.circlepath"_s, u"phosphor/regular/clock-counter-clockwise.svg"_s},
        {u"clock.fill"_s, u"phosphor/fill/clock-fill.svg"_s},
        {u"cloud"_s, u"phosphor/regular/cloud.svg"_s},
        {u"cloud.fill"_s, u"phosphor/fill/cloud-fill.svg"_s},
        {u"cube.fill"_s, u"cadorel/cube.fill.svg"_s},
        {u"doc.badge.plus"_s, u"phosphor/regular/file-plus.svg"_s},
        {u"doc.fill"_s, u"phosphor/fill/file-fill.svg"_s},
        {u"doc.on.doc"_s, u"phosphor/regular/files.svg"_s},
        {u"drop.fill"_s, u"phosphor/fill/drop-fill.svg"_s},
        {u"ellipsis"_s, u"cadorel/ellipsis.svg"_s},
        {u"ellipsis.circle"_s, u"phosphor/regular/dots-three-circle.svg"_s},
        {u"exclamationmark.triangle"_s, u"phosphor/regular/warning.svg"_s},
        {u"exclamationmark.triangle.fill"_s, u"phosphor/fill/warning-fill.svg"_s},
        {u"externaldrive"_s, u"phosphor/regular/hard-drive.svg"_s},
        {u"externaldrive.connected.to.line.below"_s, u"cadorel/externaldrive.connected.to.line.below.svg"_s},
        {u"externaldrive.fill"_s, u"phosphor/fill/hard-drive-fill.svg"_s},
        {u"externaldrive.fill.badge.wifi"_s, u"cadorel/externaldrive.fill.badge.wifi.svg"_s},
        {u"eye"_s, u"phosphor/regular/eye.svg"_s},
        {u"eye.slash"_s, u"phosphor/regular/eye-slash.svg"_s},
        {u"folder"_s, u"phosphor/regular/folder.svg"_s},
        {u"folder.badge.plus"_s, u"phosphor/regular/folder-plus.svg"_s},
        {u"folder.fill"_s, u"phosphor/fill/folder-fill.svg"_s},
        {u"forward.fill"_s, u"phosphor/fill/skip-forward-fill.svg"_s},
        {u"gear"_s, u"phosphor/regular/gear.svg"_s},
        {u"gearshape"_s, u"phosphor/regular/gear-six.svg"_s},
        {u"gearshape.fill"_s, u"phosphor/fill/gear-six-fill.svg"_s},
        {u"gift.fill"_s, u"phosphor/fill/gift-fill.svg"_s},
        {u"globe"_s, u"phosphor/regular/globe.svg"_s},
        {u"globe.fill"_s, u"cadorel/globe.fill.svg"_s},
        {u"gobackward.10"_s, u"cadorel/gobackward.10.svg"_s},
        {u"goforward.10"_s, u"cadorel/goforward.10.svg"_s},
        {u"guitars"_s, u"phosphor/regular/guitar.svg"_s},
        {u"hand.raised.fill"_s, u"phosphor/fill/hand-palm-fill.svg"_s},
        {u"headphones"_s, u"phosphor/regular/headphones.svg"_s},
        {u"heart"_s, u"phosphor/regular/heart.svg"_s},
        {u"heart.fill"_s, u"phosphor/fill/heart-fill.svg"_s},
        {u"heart.slash"_s, u"cadorel/heart.slash.svg"_s},
        {u"house"_s, u"phosphor/regular/house.svg"_s},
        {u"info.circle"_s, u"phosphor/regular/info.svg"_s},
        {u"info.circle.fill"_s, u"phosphor/fill/info-fill.svg"_s},
        {u"internaldrive.fill"_s, u"phosphor/fill/hard-drive-fill.svg"_s},
        {u"line.3.horizontal.decrease"_s, u"phosphor/regular/funnel-simple.svg"_s},
        {u"link"_s, u"phosphor/regular/link.svg"_s},
        {u"list.bullet"_s, u"phosphor/regular/list-bullets.svg"_s},
        {u"list.number"_s, u"phosphor/regular/list-numbers.svg"_s},
        {u"location.fill"_s, u"cadorel/location.fill.svg"_s},
        {u"lock.open"_s, u"phosphor/regular/lock-open.svg"_s},
        {u"magnifyingglass"_s, u"phosphor/regular/magnifying-glass.svg"_s},
        {u"minus"_s, u"phosphor/regular/minus.svg"_s},
        {u"minus.circle.fill"_s, u"phosphor/fill/minus-circle-fill.svg"_s},
        {u"moon.fill"_s, u"phosphor/fill/moon-fill.svg"_s},
        {u"music.mic"_s, u"phosphor/regular/microphone-stage.svg"_s},
        {u"music.note"_s, u"phosphor/regular/music-note.svg"_s},
        {u"music.note.house"_s, u"cadorel/music.note.house.svg"_s},
        {u"music.note.house.fill"_s, u"cadorel/music.note.house.fill.svg"_s},
        {u"music.note.list"_s, u"phosphor/regular/playlist.svg"_s},
        {u"music.note.list.fill"_s, u"cadorel/music.note.list.fill.svg"_s},
        {u"music.quarternote.3"_s, u"cadorel/music.quarternote.3.svg"_s},
        {u"opticaldisc.fill"_s, u"phosphor/fill/vinyl-record-fill.svg"_s},
        {u"paintbrush.fill"_s, u"phosphor/fill/paint-brush-fill.svg"_s},
        {u"paintpalette.fill"_s, u"phosphor/fill/palette-fill.svg"_s},
        {u"pause.circle.fill"_s, u"phosphor/fill/pause-circle-fill.svg"_s},
        {u"pause.fill"_s, u"phosphor/fill/pause-fill.svg"_s},
        {u"pencil"_s, u"phosphor/regular/pencil-simple.svg"_s},
        {u"person.2"_s, u"phosphor/regular/users.svg"_s},
        {u"person.2.fill"_s, u"phosphor/fill/users-fill.svg"_s},
        {u"person.circle.fill"_s, u"phosphor/fill/user-circle-fill.svg"_s},
        {u"person.fill"_s, u"phosphor/fill/user-fill.svg"_s},
        {u"person.wave.2"_s, u"phosphor/regular/user-sound.svg"_s},
        {u"photo"_s, u"phosphor/regular/image.svg"_s},
        {u"photo.badge.plus"_s, u"cadorel/photo.badge.plus.svg"_s},
        {u"photo.fill"_s, u"phosphor/fill/image-fill.svg"_s},
        {u"photo.on.rectangle"_s, u"phosphor/regular/images.svg"_s},
        {u"pianokeys"_s, u"phosphor/regular/piano-keys.svg"_s},
        {u"play"_s, u"phosphor/regular/play.svg"_s},
        {u"play.circle.fill"_s, u"phosphor/fill/play-circle-fill.svg"_s},
        {u"play.fill"_s, u"phosphor/fill/play-fill.svg"_s},
        {u"playpause.fill"_s, u"phosphor/fill/play-pause-fill.svg"_s},
        {u"plus"_s, u"phosphor/regular/plus.svg"_s},
        {u"plus.circle.fill"_s, u"phosphor/fill/plus-circle-fill.svg"_s},
        {u"qrcode"_s, u"phosphor/regular/qr-code.svg"_s},
        {u"questionmark.circle"_s, u"phosphor/regular/question.svg"_s},
        {u"questionmark.circle.fill"_s, u"phosphor/fill/question-fill.svg"_s},
        {u"rectangle.fill"_s, u"phosphor/fill/rectangle-fill.svg"_s},
        {u"repeat"_s, u"phosphor/regular/repeat.svg"_s},
        {u"repeat.1"_s, u"phosphor/regular/repeat-once.svg"_s},
        {u"server.rack"_s, u"phosphor/regular/hard-drives.svg"_s},
        {u"shuffle"_s, u"phosphor/regular/shuffle.svg"_s},
        {u"slider.horizontal.3"_s, u"phosphor/regular/sliders-horizontal.svg"_s},
        {u"slider.vertical.3"_s, u"phosphor/regular/sliders.svg"_s},
        {u"sparkles"_s, u"phosphor/regular/sparkle.svg"_s},
        {u"speaker.slash.fill"_s, u"phosphor/fill/speaker-slash-fill.svg"_s},
        {u"speaker.wave.1.fill"_s, u"phosphor/fill/speaker-low-fill.svg"_s},
        {u"speaker.wave.2.fill"_s, u"phosphor/fill/speaker-high-fill.svg"_s},
        {u"speaker.wave.3.fill"_s, u"cadorel/speaker.wave.3.fill.svg"_s},
        {u"square"_s, u"phosphor/regular/square.svg"_s},
        {u"square.and.arrow.down"_s, u"cadorel/square.and.arrow.down.svg"_s},
        {u"square.and.arrow.up"_s, u"phosphor/regular/export.svg"_s},
        {u"square.dashed"_s, u"phosphor/regular/selection.svg"_s},
        {u"square.fill"_s, u"phosphor/fill/square-fill.svg"_s},
        {u"square.on.circle"_s, u"cadorel/square.on.circle.svg"_s},
        {u"square.on.square"_s, u"phosphor/regular/copy.svg"_s},
        {u"square.stack"_s, u"phosphor/regular/cards-three.svg"_s},
        {u"square.stack.3d.up.fill"_s, u"phosphor/fill/stack-fill.svg"_s},
        {u"star"_s, u"phosphor/regular/star.svg"_s},
        {u"star.fill"_s, u"phosphor/fill/star-fill.svg"_s},
        {u"stop.fill"_s, u"phosphor/fill/stop-fill.svg"_s},
        {u"sun.max.fill"_s, u"phosphor/fill/sun-fill.svg"_s},
        {u"text.badge.plus"_s, u"phosphor/regular/list-plus.svg"_s},
        {u"text.bubble"_s, u"phosphor/regular/chat-text.svg"_s},
        {u"text.bubble.fill"_s, u"phosphor/fill/chat-text-fill.svg"_s},
        {u"text.insert"_s, u"cadorel/text.insert.svg"_s},
        {u"timer"_s, u"phosphor/regular/timer.svg"_s},
        {u"trash"_s, u"phosphor/regular/trash.svg"_s},
        {u"trash.fill"_s, u"phosphor/fill/trash-fill.svg"_s},
        {u"waveform"_s, u"phosphor/regular/waveform.svg"_s},
        {u"waveform.path.ecg"_s, u"phosphor/regular/pulse.svg"_s},
        {u"xmark"_s, u"phosphor/regular/x.svg"_s},
        {u"xmark.circle.fill"_s, u"phosphor/fill/x-circle-fill.svg"_s},
        {u"xmark.octagon.fill"_s, u"cadorel/xmark.octagon.fill.svg"_s},
    };
    return table;
}

} // namespace

QString symbolFile(const QString &name)
{
    return folder + files().value(name, unknownSymbol);
}

bool hasSymbol(const QString &name)
{
    return files().contains(name);
}

QStringList symbolNames()
{
    return files().keys();
}

} // namespace cadorel
