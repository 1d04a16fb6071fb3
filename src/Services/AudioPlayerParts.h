// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace cadorel {

class EqualizerEngine;
class MediaCenter;
class OnlineSongAddresses;
class Song;
class WebDAVStreamingService;

/// Parts of the player that are built elsewhere. A null one is not there: what it would do is left out.
struct AudioPlayerParts
{
    EqualizerEngine *equalizer = nullptr;
    /// Gives the bytes of songs on WebDAV servers.
    WebDAVStreamingService *streaming = nullptr;
    OnlineSongAddresses *onlineAddresses = nullptr;
    MediaCenter *mediaCenter = nullptr;
    /// Takes what the copy of a server's song told of it over to the list of such songs.
    std::function<void(const Song &)> updateSongMetadata = {};
};

} // namespace cadorel
