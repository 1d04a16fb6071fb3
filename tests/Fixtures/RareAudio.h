// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace cadorel {

/// Files of formats that ffmpeg decodes but does not encode.

/// One-bit stereo at 2.8224 MHz with a sine tone: DSF and DSDIFF.
QByteArray makeDsf(double seconds, int frequency);
QByteArray makeDff(double seconds, int frequency);
/// Puts an ID3v2 tag into such a file.
QByteArray withId3(const QByteArray &dsfOrDff, const QByteArray &id3);

/// Silence: Monkey's Audio 3.99, 44.1 kHz stereo.
QByteArray makeApe(double seconds);
/// Silence: TAK, 44.1 kHz mono.
QByteArray makeTak(double seconds);

} // namespace cadorel
