// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/CurrentFavorite.h"
#include "ViewModels/MiniPlayerFanModel.h"
#include "ViewModels/MiniPlayerPlace.h"

#include <QObject>
#include <QPointF>
#include <QUuid>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class PlaybackViewModel;
class PlaylistService;
class ThemeService;

/// The floating disc of the running song: where it is, what the finger on it means, and the fan of actions
/// that a long press, the right button or a key opens about it. Places are those of MiniPlayerGeometry. A
/// finger or the left button is told by press(), move(), longPress() and release(). Main thread.
class MiniPlayerViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/MiniPlayerFanModel.h")
    Q_PROPERTY(QPointF effectivePosition READ effectivePosition NOTIFY positionChanged)
    Q_PROPERTY(double fanShift READ fanShift NOTIFY positionChanged)
    Q_PROPERTY(bool animatesPosition READ animatesPosition NOTIFY animatesPositionChanged)
    Q_PROPERTY(bool isDragging READ isDragging NOTIFY isDraggingChanged)
    Q_PROPERTY(bool isControlMode READ isControlMode NOTIFY isControlModeChanged)
    Q_PROPERTY(bool isFanPinned READ isFanPinned NOTIFY isFanPinnedChanged)
    Q_PROPERTY(QString activeLabel READ activeLabel NOTIFY activeActionChanged)
    Q_PROPERTY(QPointF activeOffset READ activeOffset NOTIFY activeActionChanged)
    Q_PROPERTY(bool isQueueChosen READ isQueueChosen NOTIFY activeActionChanged)
    Q_PROPERTY(bool isQueueBeneath READ isQueueBeneath NOTIFY positionChanged)
    Q_PROPERTY(cadorel::MiniPlayerFanModel *fan READ fan CONSTANT)
    Q_PROPERTY(bool isSpinning READ isSpinning NOTIFY isSpinningChanged)
    Q_PROPERTY(QUuid spinKey READ spinKey NOTIFY spinKeyChanged)
    Q_PROPERTY(QString coverSource READ coverSource NOTIFY coverSourceChanged)
    Q_PROPERTY(bool hasCover READ hasCover NOTIFY coverSourceChanged)
    Q_PROPERTY(QString name READ name NOTIFY songChanged)
    Q_PROPERTY(QString viewIdentity READ viewIdentity NOTIFY songChanged)

public:
    using Screen = MiniPlayerGeometry::Screen;

    /// All outlive this object.
    MiniPlayerViewModel(CadorelViewModel &viewModel, PlaybackViewModel &playback, PlaylistService &playlists,
                        ThemeService &themeService);
    ~MiniPlayerViewModel() override;
    Q_DISABLE_COPY_MOVE(MiniPlayerViewModel)

    /// Centre of the disc; nothing until the first layout.
    const std::optional<QPointF> &position() const { return m_place.position(); }
    /// Where the disc is shown.
    QPointF effectivePosition() const { return m_place.effectivePosition(); }
    /// How far it goes downwards while the fan is open.
    double fanShift() const;
    /// A change of place that is about to be told is one to be seen.
    bool animatesPosition() const { return m_place.animates(); }
    bool hasLoadedPosition() const { return position().has_value(); }
    bool isDragging() const { return m_isDragging; }
    /// Where the disc was when the finger began to mean something.
    const std::optional<QPointF> &dragStartPosition() const { return m_dragStartPosition; }
    /// The fan is open.
    bool isControlMode() const { return m_isControlMode; }
    /// The fan stays open without a finger, and its buttons are pressed one by one.
    bool isFanPinned() const { return m_isFanPinned; }
    std::optional<ControlAction> activeAction() const { return m_fan->active(); }
    /// Of the chosen action; empty for none.
    QString activeLabel() const;
    QPointF activeOffset() const;
    /// Beside the five actions, a fan that stays open leads to the queue: that is what is meant.
    bool isQueueChosen() const { return m_isQueueChosen; }
    /// Its button stands beneath the fan, not above it.
    bool isQueueBeneath() const;
    OverlaySide side() const { return m_fan->side(); }
    MiniPlayerFanModel *fan() const { return m_fan; }
    /// The song plays.
    bool isSpinning() const;
    /// Another one whenever the disc begins to spin anew.
    QUuid spinKey() const { return m_spinKey; }
    bool isCurrentSongFavorite() const { return m_fan->isFavorite(); }
    QString coverSource() const;
    bool hasCover() const;
    /// For screen readers.
    QString name() const;
    /// Tells the disc of one song from that of another.
    QString viewIdentity() const;

    /// The room that the disc has; loads its place at the first call. @param topInset what a desktop takes at
    /// the top, @param bottomInset what the tab bar takes, at least MiniPlayerGeometry::tabBarHeight
    /// @param isMaximized the window fills the desktop
    Q_INVOKABLE void layOut(double width, double height, double topInset, double bottomInset,
                            bool isMaximized = false);
    /// Takes the disc from @p effectivePosition by @p translation to where it may rest.
    /// @param animate let it be seen, @param save remember it for the next start
    void updatePosition(const QPointF &translation, const QPointF &effectivePosition, const Screen &screen,
                        bool animate, bool save);

    void press(const QPointF &point) { press(point, effectivePosition()); }
    /// @param shownCentre where the disc is seen, which is not yet at its place while it flies there
    Q_INVOKABLE void press(const QPointF &point, const QPointF &shownCentre);
    Q_INVOKABLE void move(const QPointF &point);
    Q_INVOKABLE void longPress();
    Q_INVOKABLE void release(const QPointF &point);
    /// The finger is taken away by something else: a drag ends here, a fan closes and nothing is chosen.
    Q_INVOKABLE void cancel();

    /// What the right button asks for: the fan comes and stays, or goes.
    Q_INVOKABLE void toggleFan();
    /// A key of the disc or its fan. @return whether it meant something
    Q_INVOKABLE bool pressKey(int key, int modifiers, bool isAutoRepeat);
    /// The mouse or the keyboard is on a button of a fan that stays open.
    Q_INVOKABLE void highlight(int row);
    /// A button of the fan is pressed: does what it is for, and the fan closes.
    Q_INVOKABLE void choose(int row);
    /// The same for the button that leads to the queue.
    Q_INVOKABLE void highlightQueue();
    Q_INVOKABLE void chooseQueue();
    /// Closes the fan.
    Q_INVOKABLE void resetControlMode();
    /// What a tap does: it asks for the Now Playing screen, or closes a fan that stays open.
    Q_INVOKABLE void open();

    void perform(ControlAction action);

Q_SIGNALS:
    void positionChanged();
    void animatesPositionChanged();
    void hasLoadedPositionChanged();
    void isDraggingChanged();
    void isControlModeChanged();
    void isFanPinnedChanged();
    void activeActionChanged();
    void isSpinningChanged();
    void spinKeyChanged();
    void isCurrentSongFavoriteChanged();
    void coverSourceChanged();
    void songChanged();
    /// The Now Playing screen is wanted.
    void openRequested();
    /// The queue is wanted.
    void queueRequested();
    /// The library shall show the current song.
    void miniPlayerLocateCurrentSong(const QString &songId, bool isWebDAV);

private:
    void placeChanged();
    void setIsDragging(bool isDragging);
    void setActiveAction(std::optional<ControlAction> action, bool isQueueChosen = false);
    void enterControlMode(bool staysOpen);
    void step(int downwards);
    void restartSpin();
    void currentChanged();
    void favoriteChanged();
    QString songIdentity() const;

    CadorelViewModel &m_viewModel;
    PlaybackViewModel &m_playback;
    MiniPlayerFanModel *m_fan;

    MiniPlayerPlace m_place;
    CurrentFavorite m_favorite;

    /// Of a finger that is down and means something.
    std::optional<QPointF> m_pressPoint;
    QPointF m_shownAtPress;
    std::optional<QPointF> m_dragStartPosition;
    bool m_isDragging = false;
    bool m_isControlMode = false;
    bool m_isFanPinned = false;
    bool m_isQueueChosen = false;

    QUuid m_spinKey = QUuid::createUuid();
    QString m_songIdentity;
};

} // namespace cadorel
