// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsViewModel.h"

#include "Services/AppearanceOptions.h"
#include "Services/AudioPlayerService.h"
#include "Services/LyricsOffsetService.h"
#include "Services/ThemeService.h"
#include "Utils/OneLine.h"

#include <algorithm>
#include <optional>

namespace cadorel {

namespace {

constexpr double msPerSecond = 1000;

} // namespace

LyricsViewModel::LyricsViewModel(const LyricsServices &services)
    : m_player(services.audioPlayer)
    , m_offsets(services.offsets)
    , m_appearance(services.appearance)
    , m_position(services.audioPlayer, services.clock)
    , m_loader(services.audioPlayer, services.sources)
{
    connect(&m_lines, &LyricLineModel::countChanged, this, &LyricsViewModel::countChanged);
    connect(&m_loader, &LyricsLoader::linesChanged, this, &LyricsViewModel::linesChanged);
    connect(&m_loader, &LyricsLoader::isLoadingChanged, this, &LyricsViewModel::isLoadingChanged);
    connect(&m_position, &PlaybackPosition::changed, this, &LyricsViewModel::follow);
    connect(&m_player, &AudioPlayerService::isLoadingChanged, this, &LyricsViewModel::follow);
    connect(&m_offsets, &LyricsOffsetService::offsetChanged, this, &LyricsViewModel::follow);
    connect(&m_appearance, &ThemeService::lyricsFontSizeChanged, this, &LyricsViewModel::lookChanged);
    connect(&m_appearance, &ThemeService::lyricsBlurEnabledChanged, this, &LyricsViewModel::lookChanged);
    lookChanged();
}

void LyricsViewModel::load()
{
    m_loader.load();
}

void LyricsViewModel::clear()
{
    m_loader.clear();
}

void LyricsViewModel::seekToLine(int index)
{
    const QList<LyricLine> &lines = m_lines.lines();
    if (index < 0 || index >= lines.size() || !m_player.isCurrentLoaded())
        return;
    m_player.seek(m_offsets.reverseOffset(lines.at(index).timeMs, m_loader.lastSongId()) / msPerSecond);
}

void LyricsViewModel::linesChanged()
{
    const bool hadLyrics = hasLyrics();
    const int indexBefore = currentLineIndex();
    const qsizetype begun = lastBegun();
    // The new lines come with their current one: nothing scrolls from the old one's place.
    m_lines.setLines(m_loader.lines(), static_cast<int>(std::max<qsizetype>(begun, 0)));
    if (hadLyrics != hasLyrics())
        Q_EMIT hasLyricsChanged();
    if (indexBefore != currentLineIndex())
        Q_EMIT currentLineIndexChanged();
    show(begun);
    awaitNextLine(begun);
}

void LyricsViewModel::lookChanged()
{
    // What is stored may be anything.
    m_lines.setLook(AppearanceOptions::lyricsFontSizes.clamped(m_appearance.lyricsFontSize()),
                    m_appearance.lyricsBlurEnabled());
}

int LyricsViewModel::adjustedTime() const
{
    // The lyrics may be here before the song itself, while the one before is heard.
    const int position = m_player.isCurrentLoaded() ? m_position.milliseconds() : 0;
    return m_offsets.applyOffset(position, m_loader.lastSongId());
}

qsizetype LyricsViewModel::lastBegun() const
{
    return LyricLine::lastBegun(m_loader.lines(), adjustedTime());
}

void LyricsViewModel::follow()
{
    if (m_loader.lines().isEmpty())
        return;
    const qsizetype begun = lastBegun();
    show(begun);
    awaitNextLine(begun);
}

void LyricsViewModel::show(qsizetype lastBegun)
{
    const int index = static_cast<int>(std::max<qsizetype>(lastBegun, 0));
    if (index != currentLineIndex()) {
        m_lines.setCurrentLine(index);
        Q_EMIT currentLineIndexChanged();
    }
    const LyricLine currentLyric = m_lines.lines().value(lastBegun);
    const QString text = oneLine(currentLyric.text);
    if (text != m_currentText) {
        m_currentText = text;
        Q_EMIT currentTextChanged();
    }
}

void LyricsViewModel::awaitNextLine(qsizetype lastBegun)
{
    const QList<LyricLine> &lines = m_lines.lines();
    std::optional<int> next;
    if (lastBegun + 1 < lines.size() && m_player.isCurrentLoaded())
        next = m_offsets.reverseOffset(lines.at(lastBegun + 1).timeMs, m_loader.lastSongId());
    m_position.waitFor(next);
}

} // namespace cadorel
