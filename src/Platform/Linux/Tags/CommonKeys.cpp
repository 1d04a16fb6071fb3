// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/CommonKeys.h"

#include <QHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

struct Row
{
    QLatin1StringView name;
    FieldRole role;
};

/// In the order of ranks. Upper case; © is Latin-1 0xa9.
constexpr std::array rows{
    // titles: ID3v2, MP4, Vorbis and others, RIFF INFO, AIFF, DSDIFF, Matroska with a target
    Row{"TIT2"_L1, FieldRole::title},
    Row{"\xa9NAM"_L1, FieldRole::title},
    Row{"TITLE"_L1, FieldRole::title},
    Row{"INAM"_L1, FieldRole::title},
    Row{"NAME"_L1, FieldRole::title},
    Row{"DITI"_L1, FieldRole::title},
    Row{"TRACK/TITLE"_L1, FieldRole::title},
    // artists
    Row{"TPE1"_L1, FieldRole::artist},
    Row{"\xa9"
        "ART"_L1,
        FieldRole::artist},
    Row{"ARTIST"_L1, FieldRole::artist},
    Row{"AUTHOR"_L1, FieldRole::artist},
    Row{"IART"_L1, FieldRole::artist},
    Row{"AUTH"_L1, FieldRole::artist},
    Row{"DIAR"_L1, FieldRole::artist},
    Row{"TRACK/ARTIST"_L1, FieldRole::artist},
    // album artists
    Row{"TPE2"_L1, FieldRole::albumArtist},
    Row{"AART"_L1, FieldRole::albumArtist},
    Row{"ALBUMARTIST"_L1, FieldRole::albumArtist},
    Row{"ALBUM ARTIST"_L1, FieldRole::albumArtist},
    Row{"ALBUM_ARTIST"_L1, FieldRole::albumArtist},
    Row{"ALBUM/ARTIST"_L1, FieldRole::albumArtist},
    Row{"WM/ALBUMARTIST"_L1, FieldRole::albumArtist},
    // composers
    Row{"TCOM"_L1, FieldRole::composer},
    Row{"\xa9WRT"_L1, FieldRole::composer},
    Row{"COMPOSER"_L1, FieldRole::composer},
    Row{"WM/COMPOSER"_L1, FieldRole::composer},
    // albums
    Row{"TALB"_L1, FieldRole::album},
    Row{"\xa9"
        "ALB"_L1,
        FieldRole::album},
    Row{"ALBUM"_L1, FieldRole::album},
    Row{"IPRD"_L1, FieldRole::album},
    Row{"ALBUM/TITLE"_L1, FieldRole::album},
    Row{"WM/ALBUMTITLE"_L1, FieldRole::album},
    // track numbers
    Row{"TRCK"_L1, FieldRole::track},
    Row{"TRKN"_L1, FieldRole::track},
    Row{"TRACKNUMBER"_L1, FieldRole::track},
    Row{"TRACK"_L1, FieldRole::track},
    Row{"ITRK"_L1, FieldRole::track},
    Row{"IPRT"_L1, FieldRole::track},
    Row{"TRACK/PART_NUMBER"_L1, FieldRole::track},
    Row{"WM/TRACKNUMBER"_L1, FieldRole::track},
    // lyrics: those with times before plain ones
    Row{"SYLT"_L1, FieldRole::lyrics},
    Row{"SYNCEDLYRICS"_L1, FieldRole::lyrics},
    Row{"USLT"_L1, FieldRole::lyrics},
    Row{"\xa9LYR"_L1, FieldRole::lyrics},
    Row{"LYRICS"_L1, FieldRole::lyrics},
    Row{"UNSYNCEDLYRICS"_L1, FieldRole::lyrics},
    Row{"UNSYNCED LYRICS"_L1, FieldRole::lyrics},
    Row{"WM/LYRICS"_L1, FieldRole::lyrics},
    Row{"TEXT"_L1, FieldRole::lyricist},
    Row{"LYRICIST"_L1, FieldRole::lyricist},
    // pictures
    Row{"APIC"_L1, FieldRole::artwork},
    Row{"COVR"_L1, FieldRole::artwork},
    Row{"METADATA_BLOCK_PICTURE"_L1, FieldRole::artwork},
    Row{"COVER ART (FRONT)"_L1, FieldRole::artwork},
    Row{"WM/PICTURE"_L1, FieldRole::artwork},
};

/// Beginnings of the names of machine values.
constexpr std::array machineFamilies{"REPLAYGAIN"_L1, "MUSICBRAINZ"_L1, "R128"_L1, "ACOUSTID"_L1};

/// Short names of the roles whose names in words mislead.
constexpr auto shortName(FieldRole role)
{
    switch (role) {
    case FieldRole::track:
        return "trkn"_L1;
    case FieldRole::albumArtist:
        return "aART"_L1;
    case FieldRole::lyricist:
        return "TEXT"_L1;
    default:
        return QLatin1StringView();
    }
}

QHash<QString, CommonKeys::Field> makeIndex()
{
    QHash<QString, CommonKeys::Field> index;
    for (size_t i = 0; i < rows.size(); ++i)
        index.insert(QString(rows[i].name), {rows[i].role, int(i)});
    return index;
}

QString machineFamily(const QString &name)
{
    const auto family = std::ranges::find_if(machineFamilies, [&name](QLatin1StringView start) {
        return name.startsWith(start, Qt::CaseInsensitive);
    });
    return family == machineFamilies.end() ? QString() : QString(*family);
}

} // namespace

CommonKeys::Field CommonKeys::field(const QString &name)
{
    static const QHash<QString, Field> index = makeIndex();
    const auto found = index.constFind(name.toUpper());
    if (found != index.cend())
        return *found;
    return {machineFamily(name).isEmpty() ? FieldRole::other : FieldRole::machine, int(rows.size())};
}

CommonKeys::Field CommonKeys::freeField(const QString &name)
{
    const Field known = field(name);
    return known.role == FieldRole::lyrics ? known : Field{FieldRole::other, int(rows.size())};
}

std::optional<CommonKey> CommonKeys::commonKey(FieldRole role)
{
    switch (role) {
    case FieldRole::title:
        return CommonKey::title;
    case FieldRole::artist:
        return CommonKey::artist;
    case FieldRole::composer:
        return CommonKey::creator;
    case FieldRole::album:
        return CommonKey::albumName;
    case FieldRole::artwork:
        return CommonKey::artwork;
    default:
        return std::nullopt;
    }
}

QString CommonKeys::identifierName(const QString &name, FieldRole role)
{
    if (role == FieldRole::machine)
        return machineFamily(name);
    const QLatin1StringView other = shortName(role);
    return other.isEmpty() ? name : QString(other);
}

} // namespace cadorel
