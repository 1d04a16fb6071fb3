// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistStorage.h"

#include "Models/EncodingError.h"
#include "Platform/Preferences.h"
#include "Services/Playlists/PlaylistEncoder.h"
#include "Services/Playlists/PlaylistText.h"
#include "Utils/Console.h"

#include <memory>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString userDefaultsKey = u"playlists"_s;

/// About the length of the stored text.
qsizetype estimatedBytes(const QList<Playlist> &playlists)
{
    constexpr qsizetype perPlaylist = 400;
    constexpr qsizetype perSongId = 40;
    constexpr qsizetype perOnlineSong = 250;
    qsizetype bytes = 0;
    for (const Playlist &playlist : playlists) {
        const qsizetype cover = playlist.coverImageData ? playlist.coverImageData->size() : 0;
        bytes += perPlaylist + cover * 4 / 3 + playlist.songIds.size() * perSongId +
                 playlist.onlineSongs.size() * perOnlineSong;
    }
    return bytes;
}

} // namespace

PlaylistStorage::PlaylistStorage(Preferences &preferences, std::function<QList<Playlist>()> source)
    : m_preferences(preferences)
    , m_saver(preferences, userDefaultsKey,
              [source = std::move(source), encoder = std::make_shared<PlaylistEncoder>()] {
                  // Encoded within a millisecond or two.
                  constexpr qsizetype quickBytes = qsizetype{256} * 1024;
                  const QList<Playlist> playlists = source();
                  const auto encode = [playlists, encoder]() -> std::optional<QByteArray> {
                      try {
                          return encoder->encode(playlists);
                      } catch (const EncodingError &error) {
                          print(u"Failed to save playlists: "_s + QString::fromUtf8(error.what()));
                          return std::nullopt;
                      }
                  };
                  return PreferenceSaver::Job{.encode = encode,
                                              .isQuick = estimatedBytes(playlists) < quickBytes};
              })
{
}

QList<Playlist> PlaylistStorage::loadPlaylists() const
{
    std::optional<QByteArray> text = m_preferences.dataValue(userDefaultsKey);
    if (!text)
        return {};
    auto playlists = playlistsFromText(*std::move(text));
    if (!playlists) {
        print(u"Failed to load playlists: "_s + playlists.error());
        return {};
    }
    return *std::move(playlists);
}

} // namespace cadorel
