// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QMutex>
#include <QQuickImageProvider>

namespace cadorel {

/// Image provider "symbol": `image://symbol/<name>?color=<#rrggbb or #aarrggbb>` is the symbol of that name
/// (see symbolFile()) in that colour, black where none is given that can be read. It is a square of at least
/// the size asked for, and for any address of a bounded size. Any thread.
class SymbolImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "symbol";

    SymbolImageProvider();

    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;

private:
    QImage shape(const QString &name, int side);

    QMutex m_mutex;
    QCache<QString, QImage> m_shapes; // by file and size, without colour
};

} // namespace cadorel
