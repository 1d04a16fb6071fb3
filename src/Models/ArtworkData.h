// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSharedData>
#include <QString>

namespace cadorel {

/// The encoded bytes of a cover. They are either held in memory or stay in a file until somebody draws them,
/// so that a library of 30,000 covers costs kilobytes. A value type: copies share. Any thread.
class ArtworkData
{
public:
    /// No cover.
    ArtworkData() = default;

    /// A cover whose bytes are held in memory. Empty bytes are still a present cover.
    explicit ArtworkData(const QByteArray &bytes);

    /// A cover that lies in a file. @p size is the file's length in bytes as it was found.
    static ArtworkData inFile(const QByteArray &utf8Path, qint64 size);

    bool isPresent() const { return d != nullptr; }

    /// Number of bytes; 0 when absent. Never reads the file.
    qint64 size() const { return d ? d->size : 0; }

    /// The bytes, read from the file when they lie in one; empty when absent or when the file is gone.
    QByteArray bytes() const;

    /// Path of the file that holds the bytes; empty when they are in memory.
    QByteArray filePath() const { return d ? d->path : QByteArray(); }

    /// True when both share one value, or the same file and size, or equal bytes in memory. Reads no file.
    friend bool operator==(const ArtworkData &a, const ArtworkData &b);

private:
    struct Data : QSharedData
    {
        QByteArray bytes;
        QByteArray path;
        qint64 size = 0;
    };
    QExplicitlySharedDataPointer<Data> d;
};

} // namespace cadorel
