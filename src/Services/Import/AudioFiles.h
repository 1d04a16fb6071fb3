// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <expected>
#include <functional>

namespace cadorel {

/// Endings of the files that count as audio, lower case, in the order of the product's documentation.
const QStringList &supportedExtensions();

/// True when the last path component ends in one of them, whatever its case.
bool hasSupportedExtension(const QByteArray &nativeName);

/// MIME types for a system's file dialog: the five fixed audio types first, then for each further ending the
/// type that the system knows for it.
QStringList supportedTypes();

/// What a walk does with a link whose file is gone.
enum class BrokenLinks { include, leaveOut };

/// Walks a directory deeply, hidden entries left out, and calls @p visit with the native path of every audio
/// file, in the order of names, a folder's own files before those of its subfolders. Links to folders are not
/// followed, so no loop of links can trap the walk; a folder that cannot be read is passed over. Any thread.
void visitAudioFiles(const QByteArray &nativeDirectory, BrokenLinks brokenLinks,
                     const std::function<void(const QByteArray &path)> &visit);

/// The same as a list, broken links included: the copy of one fails with a message.
QList<QByteArray> findAudioFiles(const QByteArray &nativeDirectory);

/// Last component of a native path as text; bytes that are not UTF-8 become replacement characters.
QString displayName(const QByteArray &nativePath);

/// Why a file could not be copied.
struct CopyError
{
    bool targetExists = false;
    /// For a listener to read.
    QString description;
};

/// Copies a file under a new name: complete or not at all, never over an existing one. The copy has the
/// source's time of change. Only regular files and links to them are copied. Any thread.
std::expected<void, CopyError> copyAudioFile(const QByteArray &nativeSource, const QByteArray &nativeTarget);

/// Removes the unfinished copies that a player which was killed in the middle left in a directory: hidden
/// files of copyAudioFile() that have not been touched since @p before. Any thread.
void removeAbandonedCopies(const QByteArray &nativeDirectory, const QDateTime &before);

} // namespace cadorel
