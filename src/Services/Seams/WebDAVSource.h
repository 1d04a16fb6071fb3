// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QCoroTask>
#include <QList>
#include <QObject>

namespace cadorel {

/// The songs on WebDAV servers. Main thread.
class WebDAVSource : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual QList<Song> webDAVSongs() const = 0;
    /// Walks every configured server anew.
    virtual QCoro::Task<void> scanAllConfigs() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace cadorel
