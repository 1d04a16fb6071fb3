// SPDX-License-Identifier: GPL-3.0-or-later
// Reads any bytes as the stored text of all playlists. What is read is written and read again, to the same
// text; dates may be rounded the first time.
#include "Services/Playlists/PlaylistEncoder.h"
#include "Services/Playlists/PlaylistText.h"

#include <cstdlib>

using namespace cadorel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto playlists =
        playlistsFromText(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    if (!playlists)
        return 0;
    const QByteArray written = PlaylistEncoder().encode(*playlists);
    const auto again = playlistsFromText(written);
    if (!again || again->size() != playlists->size() || PlaylistEncoder().encode(*again) != written)
        std::abort();
    return 0;
}
