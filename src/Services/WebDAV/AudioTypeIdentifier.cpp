// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/AudioTypeIdentifier.h"

#include <QHash>

namespace cadorel {

using namespace Qt::StringLiterals;

QString audioTypeIdentifier(const QString &mimeType)
{
    static const QString mp3 = u"public.mp3"_s;
    static const QString mpeg4 = u"public.mpeg-4-audio"_s;
    static const QString m4a = u"com.apple.m4a-audio"_s;
    static const QString aac = u"public.aac-audio"_s;
    static const QString wave = u"com.microsoft.waveform-audio"_s;
    static const QString aiff = u"public.aiff-audio"_s;
    static const QString flac = u"org.xiph.flac"_s;
    static const QString ogg = u"org.xiph.ogg-audio"_s;
    static const QHash<QString, QString> identifiers{
        {u"audio/mpeg"_s, mp3},
        {u"audio/mp3"_s, mp3},
        {u"audio/mpeg3"_s, mp3},
        {u"audio/mpg"_s, mp3},
        {u"audio/x-mp3"_s, mp3},
        {u"audio/x-mpeg"_s, mp3},
        {u"audio/x-mpg"_s, mp3},
        {u"audio/mp4"_s, mpeg4},
        {u"audio/m4a"_s, m4a},
        {u"audio/x-m4a"_s, m4a},
        {u"audio/x-m4p"_s, u"com.apple.protected-mpeg-4-audio"_s},
        {u"audio/aac"_s, aac},
        {u"audio/aacp"_s, aac},
        {u"audio/x-aac"_s, aac},
        {u"audio/vnd.wave"_s, wave},
        {u"audio/wav"_s, wave},
        {u"audio/wave"_s, wave},
        {u"audio/x-wav"_s, wave},
        {u"audio/aiff"_s, aiff},
        {u"audio/x-aiff"_s, aiff},
        {u"audio/flac"_s, flac},
        {u"audio/x-flac"_s, flac},
        {u"audio/ogg"_s, ogg},
        {u"audio/x-ogg"_s, ogg},
        {u"audio/opus"_s, u"org.xiph.opus"_s},
        {u"audio/x-caf"_s, u"com.apple.coreaudio-format"_s},
        {u"audio/x-ms-wma"_s, u"com.microsoft.windows-media-wma"_s},
        {u"audio/basic"_s, u"public.au-audio"_s},
        {u"audio/ac3"_s, u"public.ac3-audio"_s},
        {u"audio/x-matroska"_s, u"org.matroska.mka"_s},
        {u"audio/vnd.rn-realaudio"_s, u"com.real.realaudio"_s},
    };
    return identifiers.value(mimeType, u"public.audio"_s);
}

} // namespace cadorel
