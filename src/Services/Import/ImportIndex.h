// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

/// What an index file gave.
struct LoadedIndex
{
    QList<Song> songs;
    /// A song was stored under another id than it has now: the file is to be written anew.
    bool idsChanged = false;
    /// What the conversion of ids says, in order, for print().
    QStringList log;
};

/// Reads the songs of "index.json". A file that is missing, torn or no array of objects gives nothing; a
/// record that lacks a value or whose audio file is gone is dropped. Opens no picture. Any thread; uses all
/// processors.
/// @param metadataDirectory where covers lie beside the index
/// @param now the date of records that have none
std::optional<LoadedIndex> loadIndex(const QString &indexPath, const QString &metadataDirectory,
                                     const QDateTime &now);

/// The records of some songs, one JSON object each with commas between: what stands inside the index's
/// brackets.
QByteArray indexRecords(const QList<Song> &songs);

} // namespace cadorel
