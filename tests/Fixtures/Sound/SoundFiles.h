// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace cadorel {

/// Sounds in a directory of its own, made by ffmpeg when a test asks for them.
class SoundFiles
{
public:
    struct Tone
    {
        double hertz;
        double seconds;
    };

    /// Path of a file in the directory, which need not exist.
    QString path(const QString &name) const { return m_directory.filePath(name); }

    /// Tones one after the other, with an amplitude of 0.5 on one channel.
    /// @param name ends in what ffmpeg chooses the format by
    /// @param encoding more arguments for ffmpeg, before the file's name
    /// @return the path; empty when ffmpeg failed
    QString make(const QString &name, const QList<Tone> &tones, const QStringList &encoding = {}) const;

private:
    QTemporaryDir m_directory;
};

} // namespace cadorel
