// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <expected>

namespace cadorel {

/// The playlists of a stored text, all or none: an array of records as Playlist::writeJson() writes them.
/// Keys that are not known are passed over. @return what is wrong, where the text is no such array or a
/// required value is missing or mistyped. Any thread.
std::expected<QList<Playlist>, QString> playlistsFromText(QByteArray text);

} // namespace cadorel
