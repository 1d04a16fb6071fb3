// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

class AudioPlayerService;
class CadorelViewModel;
class OnlineSongAddresses;

/// What every view of the running song shows: its time as a text, where its slider stands, the cover, and the
/// volume. It watches the fast state of the player and passes on only what a listener can see change, so that
/// a playing window draws little. Main thread.
class PlaybackViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString currentTimeText READ currentTimeText NOTIFY currentTimeTextChanged)
    Q_PROPERTY(double sliderPosition READ sliderPosition NOTIFY sliderPositionChanged)
    Q_PROPERTY(bool canSeek READ canSeek NOTIFY canSeekChanged)
    Q_PROPERTY(QString coverSource READ coverSource NOTIFY coverSourceChanged)
    Q_PROPERTY(double volume READ volume NOTIFY volumeChanged)

public:
    /// @param viewModel and @param onlineAddresses outlive this object; without the latter online songs have
    /// no cover
    explicit PlaybackViewModel(CadorelViewModel &viewModel,
                               const OnlineSongAddresses *onlineAddresses = nullptr);

    /// "1:05", without a limit to the minutes; "0:00" for what is no time.
    static QString timeText(double seconds);
    /// A slider that is let go there leaves next to nothing of a song of @p duration seconds: the song is
    /// over. Never so while the length is unknown.
    static bool isAtEnd(double fraction, double duration);

    /// "1:05"; "0:00" at the start.
    QString currentTimeText() const { return m_currentTimeText; }
    /// Fraction of the song, 0...1, in steps of 1/2000: finer than a slider's pixel.
    double sliderPosition() const { return m_sliderPosition; }
    bool canSeek() const { return m_canSeek; }
    /// Address of the cover for the cover image provider.
    QString coverSource() const { return m_coverSource; }
    /// Part of the whole, 0...1.
    double volume() const;

    /// Goes to a fraction of the song, 0...1; at its very end the song is over.
    Q_INVOKABLE void seek(double fraction);
    /// Goes that many seconds on, or back; not beyond the song's beginning and end.
    /// @param isRepeat a key that is held down asks for it: it stops short of the end, so that it does not go
    /// on through the songs that follow
    Q_INVOKABLE void seekBy(double seconds, bool isRepeat = false);
    /// @param step part of the whole, -1...1
    Q_INVOKABLE void changeVolume(double step);
    /// The volume's slider is being moved.
    Q_INVOKABLE void dragVolume(double volume);
    /// It was let go. What is silent then is made audible at the volume from before the drag.
    Q_INVOKABLE void endVolumeDrag();
    /// Silences, or goes back to the last volume that could be heard.
    Q_INVOKABLE void toggleMute();
    Q_INVOKABLE void dismissPlayError();

Q_SIGNALS:
    void currentTimeTextChanged();
    void sliderPositionChanged();
    void canSeekChanged();
    void coverSourceChanged();
    void volumeChanged();

private:
    void followVolume();
    void timeChanged();
    void durationChanged();
    void coverChanged();
    QString currentCover() const;
    AudioPlayerService &player() const;

    CadorelViewModel &m_viewModel;
    const OnlineSongAddresses *m_onlineAddresses;
    QString m_currentTimeText;
    double m_sliderPosition = 0;
    bool m_canSeek = false;
    QString m_coverSource;
    bool m_isDraggingVolume = false;
    /// What a silent player goes back to.
    float m_audibleVolume = 1;
};

} // namespace cadorel
