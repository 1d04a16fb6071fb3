// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/CloudPlayback.h"

#include <QList>

namespace cadorel {

/// Remembers the addresses that it was to play.
class FakeCloudPlayback : public CloudPlayback
{
public:
    QList<QUrl> played;

    void playWebDAVURL(const QUrl &url) override { played.append(url); }
};

} // namespace cadorel
