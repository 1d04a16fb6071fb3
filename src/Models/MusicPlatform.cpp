// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/MusicPlatform.h"

#include <array>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array platforms{MusicPlatform::netease, MusicPlatform::kuwo, MusicPlatform::qq};

} // namespace

QList<MusicPlatform> allMusicPlatforms()
{
    return {platforms.cbegin(), platforms.cend()};
}

QString rawValue(MusicPlatform platform)
{
    switch (platform) {
    case MusicPlatform::netease:
        return u"netease"_s;
    case MusicPlatform::kuwo:
        return u"kuwo"_s;
    case MusicPlatform::qq:
        return u"qq"_s;
    }
    Q_UNREACHABLE();
}

std::optional<MusicPlatform> musicPlatform(const QString &text)
{
    for (const MusicPlatform platform : platforms) {
        if (rawValue(platform) == text)
            return platform;
    }
    return std::nullopt;
}

QString displayName(MusicPlatform platform)
{
    switch (platform) {
    case MusicPlatform::netease:
        return u"网易云"_s;
    case MusicPlatform::kuwo:
        return u"酷我"_s;
    case MusicPlatform::qq:
        return u"QQ音乐"_s;
    }
    Q_UNREACHABLE();
}

MusicPlatform nextPlatform(MusicPlatform platform)
{
    const QList<MusicPlatform> all = allMusicPlatforms();
    return all[(all.indexOf(platform) + 1) % all.size()];
}

} // namespace cadorel
