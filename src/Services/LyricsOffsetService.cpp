// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/LyricsOffsetService.h"

#include "Platform/SharedServices.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

int clamped(qint64 ms)
{
    return static_cast<int>(
        std::clamp<qint64>(ms, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// With one decimal, as the C library prints it: a number exactly between two goes to the even digit, and the
/// sign stays before a zero.
QString secondsText(qint64 ms)
{
    constexpr double msPerSecond = 1000.0;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(ms) / msPerSecond,
                                      std::chars_format::fixed, 1);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

} // namespace

LyricsOffsetService::LyricsOffsetService(Platform &platform)
    : m_platform(platform)
{
}

LyricsOffsetService &LyricsOffsetService::shared()
{
    return sharedService<LyricsOffsetService>(
        [] { return std::make_unique<LyricsOffsetService>(processPlatform()); });
}

int LyricsOffsetService::getOffset(const QString &songId) const
{
    return clamped(m_platform.preferences->intValue(offsetKeyPrefix + songId).value_or(0));
}

void LyricsOffsetService::setOffset(int ms, const QString &songId)
{
    m_platform.preferences->setInt(offsetKeyPrefix + songId, ms);
    Q_EMIT offsetChanged();
}

void LyricsOffsetService::adjustOffset(int delta, const QString &songId)
{
    setOffset(clamped(qint64(getOffset(songId)) + delta), songId);
}

void LyricsOffsetService::resetOffset(const QString &songId)
{
    m_platform.preferences->remove(offsetKeyPrefix + songId);
    Q_EMIT offsetChanged();
}

int LyricsOffsetService::applyOffset(int timeMs, const QString &songId) const
{
    return clamped(qint64(timeMs) + getOffset(songId));
}

int LyricsOffsetService::reverseOffset(int timeMs, const QString &songId) const
{
    return clamped(qint64(timeMs) - getOffset(songId));
}

QString LyricsOffsetService::formatOffset(int ms)
{
    return (ms < 0 ? QString() : u"+"_s) + secondsText(ms) + u's';
}

QString LyricsOffsetService::statusText(int ms)
{
    if (ms == 0)
        return u"歌词与音乐同步"_s;
    const qint64 amount = std::abs(qint64(ms));
    return (ms > 0 ? u"歌词提前 "_s : u"歌词延后 "_s) + secondsText(amount) + u" 秒"_s;
}

} // namespace cadorel
