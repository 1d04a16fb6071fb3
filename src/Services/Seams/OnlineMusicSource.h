// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"

#include <QCoroTask>
#include <QList>
#include <QObject>

namespace cadorel {

/// The online platforms. Main thread.
class OnlineMusicSource : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// What the last search found.
    virtual QList<OnlineSong> searchResults() const = 0;
    /// Searches one platform with the source's own default limit; the outcome is published, failures too.
    virtual QCoro::Task<void> search(QString keyword, MusicPlatform platform) = 0;

Q_SIGNALS:
    void changed();
};

} // namespace cadorel
