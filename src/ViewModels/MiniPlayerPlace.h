// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/MiniPlayerGeometry.h"

#include <QObject>
#include <QPointF>

#include <optional>

namespace cadorel {

class ThemeService;

/// Where the disc of the mini player is, and where it belongs: a window that becomes small for a while does
/// not move it for good, and the next start finds it where it was left. Places are those of
/// MiniPlayerGeometry. Main thread.
class MiniPlayerPlace : public QObject
{
    Q_OBJECT
public:
    using Screen = MiniPlayerGeometry::Screen;

    /// @param themeService keeps the place; it outlives this object
    explicit MiniPlayerPlace(ThemeService &themeService);
    ~MiniPlayerPlace() override;
    Q_DISABLE_COPY_MOVE(MiniPlayerPlace)

    /// Centre of the disc; nothing until the first layout.
    const std::optional<QPointF> &position() const { return m_position; }
    /// Where the disc is shown.
    QPointF effectivePosition() const;
    const Screen &screen() const { return m_screen; }
    /// A change of place that is about to be told is one to be seen.
    bool animates() const { return m_animates; }

    /// The room that there is. @return whether it is another than before
    bool setScreen(const Screen &screen);
    /// Takes the disc to where it belongs in the room of the moment.
    void settle();
    /// Moves the disc, as a finger does. @param animate let it be seen
    void moveTo(const QPointF &centre, bool animate);
    /// Lets it go there: that is where it belongs from now on. @param save also at the next start
    void drop(const QPointF &centre, const Screen &screen, bool animate, bool save);

Q_SIGNALS:
    void changed();
    void animatesChanged();
    /// The disc has its first place.
    void loaded();

private:
    void load();
    void save(const QPointF &centre);

    ThemeService &m_themeService;
    Screen m_screen;
    std::optional<QPointF> m_position;
    /// Where the listener left it, in whatever room there was; nothing if it was never moved.
    std::optional<QPointF> m_home;
    /// It was left at the right side, and stays there in a window of another width.
    bool m_keepsRight = false;
    bool m_isSaving = false;
    bool m_animates = false;
};

} // namespace cadorel
