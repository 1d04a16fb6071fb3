// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Album.h"
#include "Models/Artist.h"
#include "Models/Song.h"

#include <QCoroTask>
#include <QList>
#include <QObject>

namespace cadorel {

/// The system's own music library, read only. Main thread.
class MediaLibrarySource : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual QList<Song> songs() const = 0;
    virtual QList<Album> albums() const = 0;
    virtual QList<Artist> artists() const = 0;
    /// Reads the library anew; ends when the three lists stand.
    virtual QCoro::Task<void> loadLibrary() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace cadorel
