// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/MediaLibrarySource.h"

#include <functional>

namespace cadorel {

/// A system library whose lists a test fills.
class FakeMediaLibrarySource : public MediaLibrarySource
{
public:
    QList<Song> songList;
    QList<Album> albumList;
    QList<Artist> artistList;
    int loads = 0;
    /// Called by each load.
    std::function<void()> onLoad;

    QList<Song> songs() const override { return songList; }
    QList<Album> albums() const override { return albumList; }
    QList<Artist> artists() const override { return artistList; }
    QCoro::Task<void> loadLibrary() override
    {
        ++loads;
        if (onLoad)
            onLoad();
        co_return;
    }
};

} // namespace cadorel
