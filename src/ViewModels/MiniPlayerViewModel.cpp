// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Utils/OneLine.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/LyricsLoader.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlaybackViewModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

MiniPlayerViewModel::MiniPlayerViewModel(CadorelViewModel &viewModel, PlaybackViewModel &playback,
                                         PlaylistService &playlists, ThemeService &themeService)
    : m_viewModel(viewModel)
    , m_playback(playback)
    , m_fan(new MiniPlayerFanModel(this))
    , m_place(themeService)
    , m_favorite(viewModel, playlists)
{
    connect(&m_place, &MiniPlayerPlace::changed, this, &MiniPlayerViewModel::placeChanged);
    connect(&m_place, &MiniPlayerPlace::animatesChanged, this, &MiniPlayerViewModel::animatesPositionChanged);
    connect(&m_place, &MiniPlayerPlace::loaded, this, &MiniPlayerViewModel::hasLoadedPositionChanged);
    const AudioPlayerService *player = m_viewModel.audioPlayer();
    connect(player, &AudioPlayerService::isPlayingChanged, this, &MiniPlayerViewModel::isSpinningChanged);
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &MiniPlayerViewModel::currentChanged);
    connect(&m_playback, &PlaybackViewModel::coverSourceChanged, this,
            &MiniPlayerViewModel::coverSourceChanged);
    connect(&m_favorite, &CurrentFavorite::changed, this, &MiniPlayerViewModel::favoriteChanged);
    m_fan->setFavorite(m_favorite.isFavorite());
    m_songIdentity = songIdentity();
}

MiniPlayerViewModel::~MiniPlayerViewModel() = default;

// MARK: place

double MiniPlayerViewModel::fanShift() const
{
    return MiniPlayerGeometry::fanShift(effectivePosition(), m_place.screen());
}

void MiniPlayerViewModel::layOut(double width, double height, double topInset, double bottomInset,
                                 bool isMaximized)
{
    const bool isOther =
        m_place.setScreen({.width = width,
                           .height = height,
                           .safeTop = std::max(0.0, topInset),
                           .safeBottom = std::max(0.0, bottomInset - MiniPlayerGeometry::tabBarHeight),
                           .tabBar = MiniPlayerGeometry::tabBarHeight,
                           .isMaximized = isMaximized});
    // What is in somebody's hand goes where that hand goes.
    if (isOther && !m_isDragging)
        m_place.settle();
}

void MiniPlayerViewModel::updatePosition(const QPointF &translation, const QPointF &effectivePosition,
                                         const Screen &screen, bool animate, bool save)
{
    m_place.drop(effectivePosition + translation, screen, animate, save);
}

void MiniPlayerViewModel::placeChanged()
{
    if (!m_isControlMode || m_isFanPinned)
        m_fan->setSide(MiniPlayerGeometry::side(effectivePosition(), m_place.screen()));
    Q_EMIT positionChanged();
}

// MARK: gestures

void MiniPlayerViewModel::press(const QPointF &point, const QPointF &shownCentre)
{
    // What a tap on the disc of an open fan means is to close it: the finger means nothing else.
    if (m_isFanPinned) {
        resetControlMode();
        return;
    }
    m_pressPoint = point;
    m_shownAtPress = shownCentre;
}

void MiniPlayerViewModel::move(const QPointF &point)
{
    if (!m_pressPoint)
        return;
    const QPointF translation = point - *m_pressPoint;
    if (m_isControlMode) {
        // The fan stands a little aside of the disc's place where that is too near to an edge: the finger
        // means the button that is seen under it.
        const bool rests =
            std::hypot(translation.x(), translation.y()) < MiniPlayerGeometry::swipeTriggerDistance;
        const QPointF inFan = translation - QPointF(0, fanShift());
        setActiveAction(rests ? std::nullopt : MiniPlayerGeometry::determineAction(inFan, side()));
        return;
    }
    if (!m_isDragging) {
        if (std::hypot(translation.x(), translation.y()) < MiniPlayerGeometry::dragThreshold)
            return;
        m_dragStartPosition = m_shownAtPress;
        setIsDragging(true);
    }
    m_place.moveTo(m_dragStartPosition.value_or(effectivePosition()) + translation, false);
}

void MiniPlayerViewModel::longPress()
{
    // A slow drag is no long press.
    if (m_pressPoint && !m_isDragging && !m_isControlMode)
        enterControlMode(false);
}

void MiniPlayerViewModel::release(const QPointF &point)
{
    move(point);
    if (!m_pressPoint)
        return;
    const QPointF translation = point - *m_pressPoint;
    m_pressPoint.reset();
    if (m_isControlMode) {
        if (const auto action = activeAction())
            perform(*action);
        resetControlMode();
    } else if (m_isDragging) {
        updatePosition(translation, m_dragStartPosition.value_or(effectivePosition()), m_place.screen(), true,
                       true);
        m_dragStartPosition.reset();
        setIsDragging(false);
    } else {
        open();
    }
}

void MiniPlayerViewModel::cancel()
{
    m_pressPoint.reset();
    resetControlMode();
    if (!m_isDragging)
        return;
    updatePosition({}, effectivePosition(), m_place.screen(), true, true);
    m_dragStartPosition.reset();
    setIsDragging(false);
}

void MiniPlayerViewModel::setIsDragging(bool isDragging)
{
    if (isDragging == m_isDragging)
        return;
    m_isDragging = isDragging;
    Q_EMIT isDraggingChanged();
}

void MiniPlayerViewModel::open()
{
    if (m_isFanPinned)
        resetControlMode();
    else
        Q_EMIT openRequested();
}

// MARK: fan

QString MiniPlayerViewModel::activeLabel() const
{
    const auto action = activeAction();
    return action ? iconAndLabel(*action, isCurrentSongFavorite()).label : QString();
}

QPointF MiniPlayerViewModel::activeOffset() const
{
    const int row = m_fan->rowOf(activeAction());
    return row < 0 ? QPointF() : m_fan->index(row).data(MiniPlayerFanModel::OffsetRole).toPointF();
}

void MiniPlayerViewModel::setActiveAction(std::optional<ControlAction> action, bool isQueueChosen)
{
    if (action == activeAction() && isQueueChosen == m_isQueueChosen)
        return;
    m_isQueueChosen = isQueueChosen;
    m_fan->setActive(action);
    Q_EMIT activeActionChanged();
}

void MiniPlayerViewModel::enterControlMode(bool staysOpen)
{
    if (m_isControlMode)
        return;
    m_dragStartPosition = effectivePosition();
    m_fan->setSide(MiniPlayerGeometry::side(*m_dragStartPosition, m_place.screen()));
    if (staysOpen) {
        m_isFanPinned = true;
        Q_EMIT isFanPinnedChanged();
    }
    m_isControlMode = true;
    Q_EMIT isControlModeChanged();
}

void MiniPlayerViewModel::resetControlMode()
{
    if (!m_isControlMode)
        return;
    // A finger that is still down means nothing any more.
    m_pressPoint.reset();
    m_dragStartPosition.reset();
    m_isControlMode = false;
    if (std::exchange(m_isFanPinned, false))
        Q_EMIT isFanPinnedChanged();
    Q_EMIT isControlModeChanged();
    setActiveAction(std::nullopt);
}

void MiniPlayerViewModel::toggleFan()
{
    // A finger or the left button is busy with the disc.
    if (m_pressPoint)
        return;
    if (m_isControlMode)
        resetControlMode();
    else
        enterControlMode(true);
}

bool MiniPlayerViewModel::pressKey(int key, int modifiers, bool isAutoRepeat)
{
    const bool asksForFan =
        key == Qt::Key_Menu || (key == Qt::Key_F10 && (modifiers & int(Qt::ShiftModifier)) != 0);
    if (asksForFan) {
        if (!isAutoRepeat)
            toggleFan();
        if (m_isFanPinned)
            setActiveAction(ControlAction::playPause);
        return true;
    }
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    if (!m_isFanPinned) {
        if (isReturn && !isAutoRepeat)
            open();
        return isReturn;
    }
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Left:
        step(-1);
        return true;
    case Qt::Key_Down:
    case Qt::Key_Right:
        step(1);
        return true;
    case Qt::Key_Home:
    case Qt::Key_End:
        step(key == Qt::Key_Home ? -m_fan->rowCount() : m_fan->rowCount());
        return true;
    case Qt::Key_Escape:
    case Qt::Key_Back:
        resetControlMode();
        return true;
    default:
        if (isReturn && !isAutoRepeat) {
            if (m_isQueueChosen)
                chooseQueue();
            else
                choose(m_fan->rowOf(activeAction()));
        }
        return isReturn;
    }
}

/// Chooses the button that is so many lower on the screen; none lies beyond the last.
void MiniPlayerViewModel::step(int downwards)
{
    const int count = m_fan->rowCount();
    const int row = m_fan->rowOf(activeAction());
    if (row < 0 && !m_isQueueChosen) {
        highlight(m_fan->rowOf(ControlAction::playPause));
        return;
    }
    // The places from the top to the bottom: five of the fan, and that of the queue after or before them.
    const bool isDownwards = side() == OverlaySide::right;
    const int queuePlace = isQueueBeneath() ? count : -1;
    const int place = m_isQueueChosen ? queuePlace : isDownwards ? row : count - 1 - row;
    const int wanted =
        std::clamp(place + downwards, std::min(0, queuePlace), std::max(count - 1, queuePlace));
    if (wanted == queuePlace)
        highlightQueue();
    else
        highlight(isDownwards ? wanted : count - 1 - wanted);
}

bool MiniPlayerViewModel::isQueueBeneath() const
{
    return MiniPlayerGeometry::isQueueBeneath(effectivePosition() + QPointF(0, fanShift()), m_place.screen());
}

void MiniPlayerViewModel::highlightQueue()
{
    if (m_isFanPinned)
        setActiveAction(std::nullopt, true);
}

void MiniPlayerViewModel::chooseQueue()
{
    if (!m_isFanPinned)
        return;
    resetControlMode();
    Q_EMIT queueRequested();
}

void MiniPlayerViewModel::highlight(int row)
{
    if (m_isFanPinned)
        setActiveAction(m_fan->actionAt(row));
}

void MiniPlayerViewModel::choose(int row)
{
    if (!m_isFanPinned)
        return;
    if (const auto action = m_fan->actionAt(row))
        perform(*action);
    resetControlMode();
}

void MiniPlayerViewModel::perform(ControlAction action)
{
    const AudioPlayerService &player = *m_viewModel.audioPlayer();
    switch (action) {
    case ControlAction::playPause:
        m_viewModel.togglePlayPause();
        break;
    case ControlAction::next:
        m_viewModel.next();
        break;
    case ControlAction::previous:
        m_viewModel.previous();
        break;
    case ControlAction::locate:
        if (const std::optional<Song> song = player.currentSong())
            Q_EMIT miniPlayerLocateCurrentSong(song->id(), song->isWebDAV());
        break;
    case ControlAction::favorite:
        m_favorite.toggle();
        break;
    }
}

// MARK: song

bool MiniPlayerViewModel::isSpinning() const
{
    return m_viewModel.audioPlayer()->isPlaying();
}

QString MiniPlayerViewModel::coverSource() const
{
    return m_playback.coverSource();
}

bool MiniPlayerViewModel::hasCover() const
{
    return coverSource() != CoverRegistry::shared().source(Song());
}

QString MiniPlayerViewModel::name() const
{
    if (!m_viewModel.hasCurrentSong())
        return u"迷你播放器"_s;
    const QString title = oneLine(m_viewModel.currentSongTitle());
    const QString artist = oneLine(m_viewModel.currentArtist());
    return u"迷你播放器："_s + (title.isEmpty() ? u"未知歌曲"_s : title) +
           (artist.isEmpty() ? QString() : u"，"_s + artist);
}

QString MiniPlayerViewModel::viewIdentity() const
{
    return u"mini_player_"_s + LyricsLoader::currentSongId(*m_viewModel.audioPlayer());
}

QString MiniPlayerViewModel::songIdentity() const
{
    const AudioPlayerService &player = *m_viewModel.audioPlayer();
    if (const auto &song = player.currentSong())
        return u"song "_s + song->uiIdentity();
    if (const auto &online = player.currentOnlineSong())
        return u"online "_s + OnlineSongListModel::key(*online);
    return {};
}

void MiniPlayerViewModel::currentChanged()
{
    if (!m_viewModel.hasCurrentSong())
        cancel();
    const QString identity = songIdentity();
    if (std::exchange(m_songIdentity, identity) != identity)
        restartSpin();
    Q_EMIT songChanged();
}

void MiniPlayerViewModel::restartSpin()
{
    m_spinKey = QUuid::createUuid();
    Q_EMIT spinKeyChanged();
}

void MiniPlayerViewModel::favoriteChanged()
{
    m_fan->setFavorite(m_favorite.isFavorite());
    Q_EMIT isCurrentSongFavoriteChanged();
    if (activeAction() == ControlAction::favorite)
        Q_EMIT activeActionChanged();
}

} // namespace cadorel
