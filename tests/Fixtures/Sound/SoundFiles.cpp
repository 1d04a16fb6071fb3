// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/SoundFiles.h"

#include "Fixtures/Sound/RunProgram.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QString SoundFiles::make(const QString &name, const QList<Tone> &tones, const QStringList &encoding) const
{
    QStringList arguments{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
    QString graph;
    for (qsizetype i = 0; i < tones.size(); ++i) {
        arguments << u"-f"_s << u"lavfi"_s << u"-i"_s
                  << u"aevalsrc=0.5*sin(2*PI*%1*t):s=48000:d=%2"_s.arg(tones[i].hertz).arg(tones[i].seconds);
        graph += u"[%1:a]"_s.arg(i);
    }
    graph += u"concat=n=%1:v=0:a=1[out]"_s.arg(tones.size());
    const QString target = path(name);
    arguments << u"-filter_complex"_s << graph << u"-map"_s << u"[out]"_s << encoding << target;
    return runProgram(u"ffmpeg"_s, arguments) ? target : QString();
}

} // namespace cadorel
