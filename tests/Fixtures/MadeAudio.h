// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace cadorel {

/// The endings of all files that makeAudio() can make.
QStringList madeFormats();

/// An untagged audio file as bytes: a sine tone at -20 dB, silence for "ape" and "tak". The same call gives
/// the same bytes without another run of ffmpeg. Any thread.
/// @param format file ending, one of madeFormats()
/// @param encoder further arguments for ffmpeg, for instance {"-write_xing", "0"}
/// @return no bytes when ffmpeg is missing or fails; it says why on standard error
QByteArray makeAudio(const QString &format, double seconds = 1, int frequency = 440,
                     const QStringList &encoder = {});

/// Runs ffmpeg with these arguments. @return whether it succeeded
bool runFfmpeg(const QStringList &arguments);

} // namespace cadorel
