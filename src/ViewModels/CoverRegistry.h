// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QCache>
#include <QString>

#include <mutex>

namespace cadorel {

class Song;

/// Where the image provider of covers finds the bytes behind a picture address. Views name a cover by a key
/// in the address; whoever hands out such an address leaves the cover here first. Any thread.
class CoverRegistry
{
public:
    /// Covers remembered by default: far more than rows that a window shows or that wait to be decoded.
    static constexpr int defaultCapacity = 4096;

    explicit CoverRegistry(int capacity = defaultCapacity);

    /// The registry of the process.
    static CoverRegistry &shared();

    /// Address for the `source` of an Image, and the cover is remembered under it. The address changes with
    /// Song::uiIdentity(), so a replaced cover is drawn anew. All songs without a cover share one address.
    QString source(const Song &song);

    /// The cover of a key that source() gave; absent when the song has none or the key was forgotten.
    ArtworkData artwork(const QString &key) const;

private:
    mutable std::mutex m_mutex;
    mutable QCache<QString, ArtworkData> m_covers;
};

} // namespace cadorel
