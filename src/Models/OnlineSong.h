// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QHashFunctions>
#include <QString>

namespace cadorel {

class JsonWriter;

/// A song of an online platform. It holds no address: each is rebuilt on demand from the API endpoint of the
/// moment. Equality and hashing use `id` and `platform` together, since ids of different platforms collide.
struct OnlineSong
{
    QString id;
    QString name;
    QString artist;
    QString album;
    MusicPlatform platform = MusicPlatform::netease;
    QString picUrl;
    QString lrcUrl;

    /// Writes the record as one JSON object.
    void writeJson(JsonWriter &writer) const;

    friend bool operator==(const OnlineSong &a, const OnlineSong &b)
    {
        return a.id == b.id && a.platform == b.platform;
    }
    friend size_t qHash(const OnlineSong &song, size_t seed = 0)
    {
        return qHashMulti(seed, song.id, static_cast<int>(song.platform));
    }
};

} // namespace cadorel
