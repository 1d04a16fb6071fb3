// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QMutex>
#include <QQuickImageProvider>

namespace cadorel {

/// Image provider "lyric": `image://lyric/line?` and the query of BlurredText::ofQuery() is that text,
/// blurred. A text of any length is bounded to a few lines by its query. Pictures are drawn on a thread of
/// the engine, and kept up to 8 MB. Any thread.
class LyricImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "lyric";

    LyricImageProvider();

    /// Pictures have a size of their own: @p requestedSize means nothing.
    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;

private:
    QMutex m_mutex;
    QCache<QString, QImage> m_drawn;
};

} // namespace cadorel
