// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace cadorel {

/// What brings the last song back at the next start: which file, and where it stood.
struct PlaybackSnapshot
{
    QString songId;
    QString title;
    QString artist;
    QString album;
    QString filePath;
    double position = 0; ///< seconds
    double duration = 0; ///< seconds
    QDateTime date;      ///< time of writing

    /// One JSON object. A position or duration that is no finite number has no JSON form: nothing.
    std::optional<QByteArray> encoded() const;
    /// Reads such an object; nothing when it is torn or lacks a key.
    static std::optional<PlaybackSnapshot> decoded(const QByteArray &json);
};

} // namespace cadorel
