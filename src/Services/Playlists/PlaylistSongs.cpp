// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistSongs.h"

#include <QHash>

#include <bit>
#include <vector>

namespace cadorel {

QList<Song> songsWithIds(const QStringList &ids, std::initializer_list<QList<Song>> sources)
{
    QHash<QString, const Song *> found;
    found.reserve(ids.size());
    // Most songs of a library are in no playlist: a bit for each id, sparsely set, tells so at once.
    constexpr size_t bitsPerId = 32;
    const size_t bits = std::bit_ceil(static_cast<size_t>(ids.size()) * bitsPerId);
    std::vector<bool> isWanted(bits);
    for (const QString &id : ids) {
        found.insert(id, nullptr);
        isWanted[qHash(id) & (bits - 1)] = true;
    }
    qsizetype missing = found.size();
    constexpr qsizetype ahead = 8;
    for (const QList<Song> &songs : sources) {
        for (qsizetype i = 0; i < songs.size() && missing > 0; ++i) {
            // Records and their ids lie all over the memory, and most of the time would be waiting for it.
            if (i + 2 * ahead < songs.size()) {
                __builtin_prefetch(&songs[i + 2 * ahead].id());
                __builtin_prefetch(songs[i + ahead].id().constData());
            }
            const Song &song = songs[i];
            if (!isWanted[qHash(song.id()) & (bits - 1)])
                continue;
            const auto wanted = found.find(song.id());
            if (wanted != found.end() && !*wanted) {
                *wanted = &song;
                --missing;
            }
        }
    }
    QList<Song> result;
    result.reserve(ids.size());
    for (const QString &id : ids) {
        if (const Song *song = found.value(id))
            result.append(*song);
    }
    return result;
}

} // namespace cadorel
