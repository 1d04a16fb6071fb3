// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

namespace cadorel {

class ResourceLoader;

/// What a stream player is asked to play.
struct MediaAsset
{
    QUrl url;
    /// The duration is counted exactly, by scanning the file's packets when its header does not tell it,
    /// instead of being estimated. For files and for bytes of a loader.
    bool prefersPreciseDuration = false;
    /// Gives the bytes in the player's place, which then never looks at the address itself. It lives at least
    /// until an item is made of the asset; an item that needs it later fails. Null: the player reads the
    /// address.
    ResourceLoader *resourceLoader = nullptr;
};

} // namespace cadorel
