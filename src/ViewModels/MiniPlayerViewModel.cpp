// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
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
    , m_playlists(playlists)
    , m_themeService(themeService)
    , m_fan(new MiniPlayerFanModel(this))
{
    loadStoredPosition();
    const AudioPlayerService *player = m_viewModel.audioPlayer();
    connect(player, &AudioPlayerService::isPlayingChanged, this, &MiniPlayerViewModel::isSpinningChanged);
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &MiniPlayerViewModel::currentChanged);
    connect(&m_playback, &PlaybackViewModel::coverSourceChanged, this,
            &MiniPlayerViewModel::coverSourceChanged);
    connect(&m_playlists, &PlaylistStore::changed, this, &MiniPlayerViewModel::updateFavorite);
    connect(&m_themeService, &ThemeService::miniPlayerPositionChanged, this, [this] {
        if (m_isSaving)
            return;
        loadStoredPosition();
        place();
    });
    m_songIdentity = songIdentity();
    updateFavorite();
}

MiniPlayerViewModel::~MiniPlayerViewModel()
{
    // The right edge has gone elsewhere with the window since the disc was left there; the next start must
    // find it.
    const std::optional<QPointF> stored = m_themeService.miniPlayerPosition();
    if (m_keepsRight && stored && m_position && stored->x() != m_position->x())
        save({m_position->x(), stored->y()});
}

// MARK: place

QPointF MiniPlayerViewModel::effectivePosition() const
{
    return m_position.value_or(MiniPlayerGeometry::startPosition(m_screen));
}

double MiniPlayerViewModel::fanShift() const
{
    return MiniPlayerGeometry::fanShift(effectivePosition(), m_screen);
}

void MiniPlayerViewModel::layOut(double width, double height, double topInset, double bottomInset)
{
    const Screen screen{.width = width,
                        .height = height,
                        .safeTop = std::max(0.0, topInset),
                        .safeBottom = std::max(0.0, bottomInset - MiniPlayerGeometry::tabBarHeight),
                        .tabBar = MiniPlayerGeometry::tabBarHeight};
    if (screen == m_screen)
        return;
    m_screen = screen;
    // What is in somebody's hand goes where that hand goes.
    if (!m_isDragging)
        place();
}

/// Takes the disc to where it belongs in the room of the moment. Where the listener left it is kept: a window
/// that becomes small for a while does not move the disc for good.
void MiniPlayerViewModel::place()
{
    if (!m_screen.isKnown())
        return;
    if (!m_home) {
        setPosition(MiniPlayerGeometry::startPosition(m_screen), false);
        return;
    }
    const double right = MiniPlayerGeometry::rightLimit(m_screen);
    // It was left at the edge of a window as wide as this one. Later that may be chance: the window is on its
    // way through all widths.
    if (!m_position && m_home->x() == right)
        m_keepsRight = true;
    setPosition(MiniPlayerGeometry::dropped({m_keepsRight ? right : m_home->x(), m_home->y()}, m_screen),
                false);
}

void MiniPlayerViewModel::loadStoredPosition()
{
    m_home = m_themeService.miniPlayerPosition();
    m_keepsRight = false;
}

void MiniPlayerViewModel::updatePosition(const QPointF &translation, const QPointF &effectivePosition,
                                         const Screen &screen, bool animate, bool save)
{
    const QPointF centre = MiniPlayerGeometry::dropped(effectivePosition + translation, screen);
    setPosition(centre, animate);
    m_home = centre;
    m_keepsRight = centre.x() >= MiniPlayerGeometry::rightLimit(screen);
    if (save)
        this->save(centre);
}

void MiniPlayerViewModel::save(const QPointF &centre)
{
    m_isSaving = true;
    m_themeService.setMiniPlayerPosition(centre);
    m_isSaving = false;
}

void MiniPlayerViewModel::setPosition(const QPointF &centre, bool animate)
{
    if (m_position == centre)
        return;
    if (animate != m_animatesPosition) {
        m_animatesPosition = animate;
        Q_EMIT animatesPositionChanged();
    }
    const bool isFirst = !m_position;
    m_position = centre;
    if (!m_isControlMode || m_isFanPinned)
        m_fan->setSide(MiniPlayerGeometry::side(centre, m_screen));
    Q_EMIT positionChanged();
    if (isFirst)
        Q_EMIT hasLoadedPositionChanged();
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
    setPosition(m_dragStartPosition.value_or(effectivePosition()) + translation, false);
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
        updatePosition(translation, m_dragStartPosition.value_or(effectivePosition()), m_screen, true, true);
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
    updatePosition({}, effectivePosition(), m_screen, true, true);
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
    m_fan->setSide(MiniPlayerGeometry::side(*m_dragStartPosition, m_screen));
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
    return MiniPlayerGeometry::isQueueBeneath(effectivePosition() + QPointF(0, fanShift()), m_screen);
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
        if (const std::optional<Song> song = player.currentSong())
            m_playlists.toggleFavorite(*song);
        else if (const std::optional<OnlineSong> online = player.currentOnlineSong())
            m_playlists.toggleFavorite(*online);
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
    updateFavorite();
    Q_EMIT songChanged();
}

void MiniPlayerViewModel::restartSpin()
{
    m_spinKey = QUuid::createUuid();
    Q_EMIT spinKeyChanged();
}

void MiniPlayerViewModel::updateFavorite()
{
    const auto &song = m_viewModel.audioPlayer()->currentSong();
    const auto &online = m_viewModel.audioPlayer()->currentOnlineSong();
    const bool isFavorite = song     ? m_playlists.isFavorite(*song)
                            : online ? m_playlists.isFavorite(*online)
                                     : false;
    if (isFavorite == isCurrentSongFavorite())
        return;
    m_fan->setFavorite(isFavorite);
    Q_EMIT isCurrentSongFavoriteChanged();
    if (activeAction() == ControlAction::favorite)
        Q_EMIT activeActionChanged();
}

} // namespace cadorel
