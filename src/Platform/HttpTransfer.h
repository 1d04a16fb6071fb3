// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace cadorel {

/// A hand on one request under way. Made by who sends the request, watched by the client. Main thread.
class HttpTransfer : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Ends the request with HttpError::Kind::cancelled, if it has not ended yet.
    void cancel();
    bool isCancelled() const { return m_cancelled; }

    /// While paused nothing more of the body is taken, so that the connection leaves its share of the line to
    /// others. The idle time-out rests meanwhile.
    void setPaused(bool paused);
    bool isPaused() const { return m_paused; }

Q_SIGNALS:
    void cancelled();
    void pausedChanged(bool paused);

private:
    bool m_cancelled = false;
    bool m_paused = false;
};

} // namespace cadorel
