// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"

#include <QObject>
#include <QString>

namespace cadorel {

/// Corrects lyrics that run early or late, per song, in milliseconds; a positive offset makes them appear
/// earlier. Kept in the preferences for good, without a limit of its own: results that no int holds stop at
/// its ends. Main thread.
class LyricsOffsetService : public QObject
{
    Q_OBJECT
public:
    /// The key of a song's offset is this and the song's id.
    static constexpr QLatin1StringView offsetKeyPrefix{"lyricsOffset_"};

    /// @param platform outlives the service
    explicit LyricsOffsetService(Platform &platform);

    static LyricsOffsetService &shared();

    /// 0 when none is stored.
    int getOffset(const QString &songId) const;
    /// Stores 0 too.
    void setOffset(int ms, const QString &songId);
    /// Adds to what is stored.
    void adjustOffset(int delta, const QString &songId);
    /// Forgets the offset.
    void resetOffset(const QString &songId);
    /// From a playback position to a lyric position.
    int applyOffset(int timeMs, const QString &songId) const;
    /// From a lyric position to a playback position.
    int reverseOffset(int timeMs, const QString &songId) const;
    /// "+0.5s", "-1.5s", and "+0.0s" for none.
    static QString formatOffset(int ms);
    /// What an offset does to the lyrics, in words.
    static QString statusText(int ms);

Q_SIGNALS:
    /// Some song's offset was set or forgotten, be it to what it was: what shows lyrics computes anew.
    void offsetChanged();

private:
    Platform &m_platform;
};

} // namespace cadorel
