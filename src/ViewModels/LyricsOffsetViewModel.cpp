// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsOffsetViewModel.h"

#include "Services/LyricsOffsetService.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

LyricsOffsetViewModel::LyricsOffsetViewModel(LyricsOffsetService &service, QObject *parent)
    : QObject(parent)
    , m_service(service)
{
    connect(&m_service, &LyricsOffsetService::offsetChanged, this, &LyricsOffsetViewModel::refresh);
}

LyricsOffsetViewModel::~LyricsOffsetViewModel() = default;

void LyricsOffsetViewModel::setSong(const QString &id, const QString &title)
{
    if (id == m_songId && title == m_songTitle)
        return;
    m_songId = id;
    m_songTitle = title;
    Q_EMIT songChanged();
    refresh();
}

QString LyricsOffsetViewModel::statusText() const
{
    return LyricsOffsetService::statusText(m_currentOffset);
}

void LyricsOffsetViewModel::adjust(int ms)
{
    if (m_songId.isEmpty())
        return;
    // What lies beyond the slider already goes no farther, and does not jump back either.
    const int lowest = std::min(m_currentOffset, -limit);
    const int highest = std::max(m_currentOffset, limit);
    const int wanted = static_cast<int>(std::clamp<qint64>(qint64(m_currentOffset) + ms, lowest, highest));
    if (wanted != m_currentOffset)
        m_service.adjustOffset(wanted - m_currentOffset, m_songId);
}

void LyricsOffsetViewModel::setOffset(double ms)
{
    if (m_songId.isEmpty() || !std::isfinite(ms))
        return;
    const double nearest = std::round(std::clamp(ms, double(-limit), double(limit)) / step) * step;
    m_service.setOffset(static_cast<int>(nearest), m_songId);
}

void LyricsOffsetViewModel::reset()
{
    if (!m_songId.isEmpty())
        m_service.resetOffset(m_songId);
}

void LyricsOffsetViewModel::refresh()
{
    const int offset = m_songId.isEmpty() ? 0 : m_service.getOffset(m_songId);
    if (std::exchange(m_currentOffset, offset) != offset)
        Q_EMIT currentOffsetChanged();
}

} // namespace cadorel
