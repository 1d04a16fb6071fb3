// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropColors.h"

namespace cadorel {

BackdropColors::BackdropColors()
    : m_colors(capacity)
{
}

BackdropColors &BackdropColors::shared()
{
    static BackdropColors colors;
    return colors;
}

void BackdropColors::keep(const QString &address, const QList<QColor> &colors)
{
    const std::scoped_lock lock(m_mutex);
    m_colors.insert(address, new QList(colors));
}

QList<QColor> BackdropColors::colors(const QString &address) const
{
    const std::scoped_lock lock(m_mutex);
    const QList<QColor> *known = m_colors.object(address);
    return known ? *known : QList<QColor>();
}

} // namespace cadorel
