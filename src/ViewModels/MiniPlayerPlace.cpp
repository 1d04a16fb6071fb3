// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerPlace.h"

#include "Services/ThemeService.h"

namespace cadorel {

MiniPlayerPlace::MiniPlayerPlace(ThemeService &themeService)
    : m_themeService(themeService)
{
    load();
    connect(&m_themeService, &ThemeService::miniPlayerPositionChanged, this, [this] {
        if (m_isSaving)
            return;
        load();
        settle();
    });
}

MiniPlayerPlace::~MiniPlayerPlace()
{
    // The right edge has gone elsewhere with the window since the disc was left there; the next start must
    // find it.
    const std::optional<QPointF> stored = m_themeService.miniPlayerPosition();
    if (m_keepsRight && stored && m_position && stored->x() != m_position->x())
        save({m_position->x(), stored->y()});
}

QPointF MiniPlayerPlace::effectivePosition() const
{
    return m_position.value_or(MiniPlayerGeometry::startPosition(m_screen));
}

bool MiniPlayerPlace::setScreen(const Screen &screen)
{
    if (screen == m_screen)
        return false;
    m_screen = screen;
    return true;
}

void MiniPlayerPlace::settle()
{
    if (!m_screen.isKnown())
        return;
    if (!m_home) {
        moveTo(MiniPlayerGeometry::startPosition(m_screen), false);
        return;
    }
    const double right = MiniPlayerGeometry::rightLimit(m_screen);
    // It was left at the edge of a window as wide as this one. Later that may be chance: the window is on its
    // way through all widths. One that fills the desktop has arrived: at the start it has its plain size
    // first.
    if ((!m_position || m_screen.isMaximized) && m_home->x() == right)
        m_keepsRight = true;
    moveTo(MiniPlayerGeometry::dropped({m_keepsRight ? right : m_home->x(), m_home->y()}, m_screen), false);
}

void MiniPlayerPlace::moveTo(const QPointF &centre, bool animate)
{
    if (m_position == centre)
        return;
    if (animate != m_animates) {
        m_animates = animate;
        Q_EMIT animatesChanged();
    }
    const bool isFirst = !m_position;
    m_position = centre;
    Q_EMIT changed();
    if (isFirst)
        Q_EMIT loaded();
}

void MiniPlayerPlace::drop(const QPointF &centre, const Screen &screen, bool animate, bool save)
{
    const QPointF place = MiniPlayerGeometry::dropped(centre, screen);
    moveTo(place, animate);
    m_home = place;
    m_keepsRight = place.x() >= MiniPlayerGeometry::rightLimit(screen);
    if (save)
        this->save(place);
}

void MiniPlayerPlace::load()
{
    m_home = m_themeService.miniPlayerPosition();
    m_keepsRight = false;
}

void MiniPlayerPlace::save(const QPointF &centre)
{
    m_isSaving = true;
    m_themeService.setMiniPlayerPosition(centre);
    m_isSaving = false;
}

} // namespace cadorel
