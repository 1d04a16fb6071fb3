// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/OnlineMusicSource.h"

namespace cadorel {

/// Online platforms that find what a test has written down.
class FakeOnlineMusicSource : public OnlineMusicSource
{
public:
    QList<OnlineSong> results;
    QList<QPair<QString, MusicPlatform>> searches;

    QList<OnlineSong> searchResults() const override { return results; }
    using OnlineMusicSource::search;
    QCoro::Task<void> search(QString keyword, MusicPlatform platform, int /*limit*/) override
    {
        searches.append({keyword, platform});
        co_return;
    }
};

} // namespace cadorel
