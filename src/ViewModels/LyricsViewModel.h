// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/LyricLineModel.h"
#include "ViewModels/LyricsLoader.h"
#include "ViewModels/PlaybackPosition.h"

#include <QObject>
#include <QString>

namespace cadorel {

class Clock;
class LyricsOffsetService;
class ThemeService;

/// What lyrics are made of. All of it outlives the view model.
struct LyricsServices
{
    AudioPlayerService &audioPlayer;
    LyricsSources sources;
    LyricsOffsetService &offsets;
    ThemeService &appearance;
    Clock &clock;
};

/// The lyrics of what plays, and which line is current by the position of the playback and the song's offset.
/// A line becomes current at its time and not at the player's next word. Main thread.
class LyricsViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(cadorel::LyricLineModel *lines READ lines CONSTANT)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool hasLyrics READ hasLyrics NOTIFY hasLyricsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(int currentLineIndex READ currentLineIndex NOTIFY currentLineIndexChanged)
    Q_PROPERTY(QString currentText READ currentText NOTIFY currentTextChanged)
public:
    explicit LyricsViewModel(const LyricsServices &services);

    LyricLineModel *lines() { return &m_lines; }
    int count() const { return m_lines.count(); }
    bool hasLyrics() const { return m_lines.count() > 0; }
    /// They are asked for, and it is not known yet whether there are any.
    bool isLoading() const { return m_loader.isLoading(); }
    /// The last line that has begun. Before the first one it is the first, also without any line.
    int currentLineIndex() const { return m_lines.currentLine(); }
    /// Text of the last line that has begun, for where there is room for one only; empty before the first.
    const QString &currentText() const { return m_currentText; }

    /// Shows the current song's lyrics, and those of each that follows.
    Q_INVOKABLE void load();
    /// Shows none, until load(). What is not on the screen costs nothing then.
    Q_INVOKABLE void clear();
    /// Plays on from that line, the song's offset taken back.
    Q_INVOKABLE void seekToLine(int index);

Q_SIGNALS:
    void countChanged();
    void hasLyricsChanged();
    void isLoadingChanged();
    void currentLineIndexChanged();
    void currentTextChanged();

private:
    void linesChanged();
    void lookChanged();
    void follow();
    /// Where the song is in its lyrics, in milliseconds.
    int adjustedTime() const;
    /// Index of the last line that has begun, -1 before the first.
    qsizetype lastBegun() const;
    void show(qsizetype lastBegun);
    void awaitNextLine(qsizetype lastBegun);

    AudioPlayerService &m_player;
    LyricsOffsetService &m_offsets;
    ThemeService &m_appearance;
    LyricLineModel m_lines;
    QString m_currentText;
    PlaybackPosition m_position;
    LyricsLoader m_loader;
};

} // namespace cadorel
