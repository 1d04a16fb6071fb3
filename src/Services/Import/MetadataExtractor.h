// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Platform/AssetReader.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace cadorel {

/// What a stored file became.
struct Extraction
{
    Song song;
    /// What the extraction says, in order, for print().
    QStringList log;
};

/// Title that a file's name gives: without ending, early UUID prefix, leading track number and outer white
/// space. May be empty. Any thread.
QString cleanFileName(const QString &name);

/// Where the cover and the lyrics of a song are kept beside the index.
QString artworkFilePath(const QString &metadataDirectory, const QString &id);
QString lyricsFilePath(const QString &metadataDirectory, const QString &id);

/// Turns a stored audio file into a Song and writes its cover and lyrics beside the index. Every failure ends
/// in a default and a log line: a file that cannot be read at all still becomes a song named after the file.
/// Any thread.
/// @param path where the file lies now
/// @param originalName its name as the listener knows it, with its ending
/// @param now the moment of extraction
Extraction extractMetadata(const AssetReader &reader, const QString &path, const QString &originalName,
                           const QString &metadataDirectory, const QDateTime &now);

} // namespace cadorel
