// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/CurrentFavorite.h"
#include "ViewModels/LyricsOffsetViewModel.h"
#include "ViewModels/SleepTimerViewModel.h"

#include <QObject>
#include <QString>

namespace cadorel {

class AudioPlayerService;
class CadorelViewModel;
class EqualizerService;
class LyricsOffsetService;
class LyricsViewModel;
class PlaybackViewModel;
class PlaylistService;

/// The full-screen player: what it shows of the running song, its slider, and the state that it has for as
/// long as it is on the screen. Main thread.
class NowPlayingViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/LyricsViewModel.h")
    Q_MOC_INCLUDE("ViewModels/PlaybackViewModel.h")
    Q_PROPERTY(cadorel::PlaybackViewModel *playback READ playback CONSTANT)
    Q_PROPERTY(cadorel::LyricsViewModel *lyrics READ lyrics CONSTANT)
    Q_PROPERTY(cadorel::LyricsOffsetViewModel *offset READ offset CONSTANT)
    Q_PROPERTY(cadorel::SleepTimerViewModel *sleep READ sleep CONSTANT)
    Q_PROPERTY(QString currentSongId READ currentSongId NOTIFY currentSongIdChanged)
    Q_PROPERTY(bool hasSong READ hasSong NOTIFY currentSongIdChanged)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString artist READ artist NOTIFY artistChanged)
    Q_PROPERTY(QString currentQualityDisplay READ currentQualityDisplay NOTIFY currentQualityDisplayChanged)
    Q_PROPERTY(QString coverSource READ coverSource NOTIFY coverSourceChanged)
    Q_PROPERTY(double sliderPosition READ sliderPosition NOTIFY sliderPositionChanged)
    Q_PROPERTY(bool isDragging READ isDragging NOTIFY isDraggingChanged)
    Q_PROPERTY(QString displayTimeText READ displayTimeText NOTIFY displayTimeTextChanged)
    Q_PROPERTY(QString durationText READ durationText NOTIFY durationTextChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString playModeSymbol READ playModeSymbol NOTIFY playModeChanged)
    Q_PROPERTY(QString playModeLabel READ playModeLabel NOTIFY playModeChanged)
    Q_PROPERTY(QString playModeKawaiiName READ playModeKawaiiName NOTIFY playModeChanged)
    Q_PROPERTY(bool isFavorite READ isFavorite NOTIFY isFavoriteChanged)
    Q_PROPERTY(QString equalizerText READ equalizerText NOTIFY equalizerChanged)
    Q_PROPERTY(QString equalizerButtonText READ equalizerButtonText NOTIFY equalizerChanged)
    Q_PROPERTY(QString equalizerDetail READ equalizerDetail NOTIFY equalizerChanged)
    Q_PROPERTY(bool needsReplay READ needsReplay NOTIFY needsReplayChanged)
    Q_PROPERTY(QString lyricsOffsetText READ lyricsOffsetText NOTIFY lyricsOffsetTextChanged)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
    // The sheets that are open over the screen.
    Q_PROPERTY(bool showSleepTimer MEMBER m_showSleepTimer NOTIFY showSleepTimerChanged)
    Q_PROPERTY(bool showLyricsOffset MEMBER m_showLyricsOffset NOTIFY showLyricsOffsetChanged)
    Q_PROPERTY(
        bool showNowPlayingSettings MEMBER m_showNowPlayingSettings NOTIFY showNowPlayingSettingsChanged)
    Q_PROPERTY(bool showMoreOptions MEMBER m_showMoreOptions NOTIFY showMoreOptionsChanged)

public:
    /// The pages, from the left.
    enum Page { CoverPage, LyricsPage, QueuePage, PageCount };
    Q_ENUM(Page)

    /// All of them outlive this object.
    NowPlayingViewModel(CadorelViewModel &viewModel, PlaybackViewModel &playback, PlaylistService &playlists,
                        EqualizerService &equalizer, LyricsOffsetService &lyricsOffset,
                        LyricsViewModel &lyrics);
    ~NowPlayingViewModel() override;
    Q_DISABLE_COPY_MOVE(NowPlayingViewModel)

    PlaybackViewModel *playback() const { return &m_playback; }
    /// Lyrics are there while the screen is shown.
    LyricsViewModel *lyrics() const { return &m_lyrics; }
    LyricsOffsetViewModel *offset() { return &m_offset; }
    /// Its minutes are forgotten with the screen.
    SleepTimerViewModel *sleep() { return &m_sleep; }
    /// Id of the song or of the online song; "none" without one.
    QString currentSongId() const { return m_currentSongId; }
    bool hasSong() const;
    /// Never empty: a song without a title has a name all the same.
    QString title() const { return m_title; }
    QString artist() const { return m_artist; }
    /// What is asked of the online platforms, as a badge; read anew when the screen comes up and with each
    /// song.
    QString currentQualityDisplay() const { return m_currentQualityDisplay; }
    /// Address of the cover for the cover image provider.
    QString coverSource() const;

    /// Where the slider stands, 0...1, and that time, "1:05": under the finger during a drag, else where the
    /// song is.
    double sliderPosition() const;
    QString displayTimeText() const;
    bool isDragging() const { return m_isDragging; }
    /// "4:20"; "0:00" while unknown or endless.
    QString durationText() const;

    bool isPlaying() const;
    bool isLoading() const;
    QString playModeSymbol() const;
    QString playModeLabel() const;
    /// Name of the drawn picture that stands for the mode.
    QString playModeKawaiiName() const;
    bool isFavorite() const { return m_favorite.isFavorite(); }
    QString equalizerText() const;
    QString equalizerButtonText() const;
    /// Name of the preset, or that it is off.
    QString equalizerDetail() const;
    /// The equalizer is on, but this song does not play through it.
    bool needsReplay() const { return m_needsReplay; }
    /// "+0.5s", by how much the lyrics of this song come earlier.
    QString lyricsOffsetText() const;

    int currentPage() const { return m_currentPage; }
    /// A number that is no Page changes nothing.
    void setCurrentPage(int page);
    /// The screen has come up, on its first page and with nothing open.
    Q_INVOKABLE void appear();
    /// It has gone, and with it all that it alone knew. Once for each appear().
    Q_INVOKABLE void disappear();

    /// The slider is being moved.
    Q_INVOKABLE void beginDrag();
    /// To a fraction of the song; one beyond 0...1 stands at its end, what is no number changes nothing.
    Q_INVOKABLE void dragTo(double fraction);
    /// The slider was let go: seeks there, or ends the song where next to nothing of it is left. Without a
    /// drag, and after the song changed under it, nothing happens.
    Q_INVOKABLE void endDrag();
    /// The drag came to nothing: the slider is back where the song is.
    Q_INVOKABLE void cancelDrag();

    Q_INVOKABLE void togglePlayPause();
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    Q_INVOKABLE void togglePlayMode();
    /// Of the song or of the online song.
    Q_INVOKABLE void toggleFavorite();

Q_SIGNALS:
    void currentSongIdChanged();
    void titleChanged();
    void artistChanged();
    void currentQualityDisplayChanged();
    void coverSourceChanged();
    void sliderPositionChanged();
    void isDraggingChanged();
    void displayTimeTextChanged();
    void durationTextChanged();
    void isPlayingChanged();
    void isLoadingChanged();
    void playModeChanged();
    void isFavoriteChanged();
    void equalizerChanged();
    void needsReplayChanged();
    void lyricsOffsetTextChanged();
    void currentPageChanged();
    void showSleepTimerChanged();
    void showLyricsOffsetChanged();
    void showNowPlayingSettingsChanged();
    void showMoreOptionsChanged();

private:
    void followPlayer();
    void songChanged();
    void updateQuality();
    void updateNeedsReplay();
    void forget();
    AudioPlayerService &player() const;
    template <typename T>
    void publish(T &member, const T &value, void (NowPlayingViewModel::*signal)());

    CadorelViewModel &m_viewModel;
    PlaybackViewModel &m_playback;
    EqualizerService &m_equalizer;
    LyricsOffsetService &m_lyricsOffset;
    LyricsViewModel &m_lyrics;
    LyricsOffsetViewModel m_offset;
    SleepTimerViewModel m_sleep;
    CurrentFavorite m_favorite;

    QString m_currentSongId;
    QString m_title;
    QString m_artist;
    QString m_currentQualityDisplay;
    bool m_needsReplay = false;
    /// How many are shown: two, while one takes the place of another.
    int m_screens = 0;
    int m_currentPage = CoverPage;
    bool m_isDragging = false;
    double m_dragProgress = 0;
    bool m_showSleepTimer = false;
    bool m_showLyricsOffset = false;
    bool m_showNowPlayingSettings = false;
    bool m_showMoreOptions = false;
};

} // namespace cadorel
