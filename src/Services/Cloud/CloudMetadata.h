// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

/// What the copy of a server's song says of itself.
struct CloudMetadata
{
    /// The file could be read; if not, nothing below but the log is filled.
    bool isRead = false;
    QString title;
    QString artist;
    QString album;
    QString lyrics;
    /// Encoded, as it stands in the file.
    std::optional<QByteArray> cover;
    /// The same decoded; null when there is none or when its bytes are no image.
    QImage coverImage;
    /// Seconds, as the file tells it; may be no number.
    double duration = 0;
    /// What the reading says, in order, for print().
    QStringList log;
};

/// Reads the tags of one file. The common keys come first, the format's own tags fill what they left empty.
/// Any thread.
/// @param path the file
CloudMetadata readCloudMetadata(const AssetReader &reader, const QString &path);

} // namespace cadorel
