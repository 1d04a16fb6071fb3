// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Models/WebDAVConfig.h"
#include "Platform/Preferences.h"

#include <QList>

namespace cadorel {

/// A WebDAV server that nobody runs; the same at each call.
WebDAVConfig madeServer();

/// Songs as a walk over that server would have made them, in directories of a dozen.
/// @param covers so many of them, spread evenly, have lyrics and a cover of about 20 kB
QList<Song> madeServerSongs(int count, int covers);

/// Leaves the server and its songs for the next start of the player.
void storeServer(Preferences &preferences, const QList<Song> &songs);

} // namespace cadorel
