// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QColor>
#include <QList>
#include <QString>

#include <mutex>

namespace cadorel {

/// The colours of the pictures behind screens, by the addresses of those, so that texts on a picture can be
/// made legible: who draws a picture leaves its colours here before it is shown. Any thread.
class BackdropColors
{
public:
    /// Pictures remembered: far more than are shown, or wait to be.
    static constexpr int capacity = 512;

    BackdropColors();

    /// Those of the process.
    static BackdropColors &shared();

    void keep(const QString &address, const QList<QColor> &colors);
    /// Empty for an address without a picture, or one that was forgotten.
    QList<QColor> colors(const QString &address) const;

private:
    mutable std::mutex m_mutex;
    mutable QCache<QString, QList<QColor>> m_colors;
};

} // namespace cadorel
