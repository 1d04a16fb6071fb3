// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QQuickImageProvider>

namespace cadorel {

/// Image provider "symbol": `image://symbol/<name>?color=<#rrggbb or #aarrggbb>` is the symbol of that name
/// (see symbolFile()) in that colour, at the size asked for. Called on the main thread only.
class SymbolImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "symbol";

    SymbolImageProvider();

    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;

private:
    QCache<QString, QImage> m_drawn;
};

} // namespace cadorel
