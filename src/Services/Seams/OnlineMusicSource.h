// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"

#include <QCoroTask>
#include <QList>
#include <QObject>

#include <utility>

namespace cadorel {

/// The online platforms. Main thread.
class OnlineMusicSource : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Songs that a search of one platform asks for when nobody says otherwise.
    static constexpr int defaultSearchLimit = 20;

    /// What the last search found.
    virtual QList<OnlineSong> searchResults() const = 0;
    /// Searches one platform; the outcome is published, failures too.
    virtual QCoro::Task<void> search(QString keyword, MusicPlatform platform, int limit) = 0;
    QCoro::Task<void> search(QString keyword, MusicPlatform platform)
    {
        return search(std::move(keyword), platform, defaultSearchLimit);
    }

Q_SIGNALS:
    void changed();
};

} // namespace cadorel
