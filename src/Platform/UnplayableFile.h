// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Why a file cannot be played, for a listener to read; the same words from both engines. None of them quotes
/// a path. Any thread.

/// A local file that could not be opened; looks at the disk for the reason.
QString unreadableFileText(const QString &path);
/// Bytes that are no sound, or too damaged.
QString unrecognisedFileText();
/// A film without sound, for instance.
QString silentFileText();
/// A format that is recognised and cannot be decoded.
QString unsupportedFileText();

} // namespace cadorel
