// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/WebDAVSource.h"

#include <functional>

namespace cadorel {

/// Servers whose songs a test fills.
class FakeWebDAVSource : public WebDAVSource
{
public:
    QList<Song> songList;
    int scans = 0;
    /// Called by each scan.
    std::function<void()> onScan;

    QList<Song> webDAVSongs() const override { return songList; }
    QCoro::Task<void> scanAllConfigs() override
    {
        ++scans;
        if (onScan)
            onScan();
        co_return;
    }
};

} // namespace cadorel
