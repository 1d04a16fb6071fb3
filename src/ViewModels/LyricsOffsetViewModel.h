// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

class LyricsOffsetService;

/// The sheet that moves the lyrics of one song against its music. The service knows no limit; here the offset
/// stays within what the sheet's slider shows. Main thread.
class LyricsOffsetViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString songId READ songId NOTIFY songChanged)
    Q_PROPERTY(QString songTitle READ songTitle NOTIFY songChanged)
    Q_PROPERTY(int currentOffset READ currentOffset NOTIFY currentOffsetChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY currentOffsetChanged)
    Q_PROPERTY(int smallestOffset READ smallestOffset CONSTANT)
    Q_PROPERTY(int largestOffset READ largestOffset CONSTANT)
    Q_PROPERTY(int offsetStep READ offsetStep CONSTANT)

public:
    /// @param service outlives this object
    explicit LyricsOffsetViewModel(LyricsOffsetService &service, QObject *parent = nullptr);
    ~LyricsOffsetViewModel() override;
    Q_DISABLE_COPY_MOVE(LyricsOffsetViewModel)

    /// Whose lyrics are moved; an empty id is no song, and nothing is moved.
    void setSong(const QString &id, const QString &title);
    QString songId() const { return m_songId; }
    QString songTitle() const { return m_songTitle; }
    /// Milliseconds; above 0 the lyrics come earlier.
    int currentOffset() const { return m_currentOffset; }
    /// What the offset does, in words.
    QString statusText() const;
    /// Ends and step of the slider, in milliseconds.
    static int smallestOffset() { return -limit; }
    static int largestOffset() { return limit; }
    static int offsetStep() { return step; }

    /// Adds to the offset, as far as the slider goes.
    Q_INVOKABLE void adjust(int ms);
    /// Takes the slider's place, the nearest step of it.
    Q_INVOKABLE void setOffset(double ms);
    /// Forgets the offset of the song.
    Q_INVOKABLE void reset();

Q_SIGNALS:
    void songChanged();
    void currentOffsetChanged();

private:
    static constexpr int limit = 5000;
    static constexpr int step = 100;

    void refresh();

    LyricsOffsetService &m_service;
    QString m_songId;
    QString m_songTitle;
    int m_currentOffset = 0;
};

} // namespace cadorel
