// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

namespace cadorel {

/// Plays songs whose address carries a user and a password, from the cache or as a stream. Main thread.
class CloudPlayback
{
public:
    virtual ~CloudPlayback() = default;

    /// Starts the song at @p url, a server's address with credentials, which must reach no log.
    virtual void playWebDAVURL(const QUrl &url) = 0;
};

} // namespace cadorel
