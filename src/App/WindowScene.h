// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "App/CadorelApp.h"

#include <QObject>
#include <QWindow>

namespace cadorel {

/// Tells the application how its window stands: hidden or minimised is `background`, having lost the keyboard
/// `inactive`. Tells the window, by its property "isForceUpdateRequired", whether anything may stand before
/// an update. Main thread.
class WindowScene : public QObject
{
    Q_OBJECT
public:
    /// @param window and @param app outlive this object
    WindowScene(QWindow &window, CadorelApp &app);

    /// Shows the window again, as large as it was, and brings it to the front.
    /// @param token the desktop's permission to do so, from whoever asked; may be empty
    void raise(const QByteArray &token);

private:
    void update();
    void tellForcedUpdate();

    QWindow &m_window;
    CadorelApp &m_app;
    bool m_wasShown = false;
    bool m_wasActive = false;
};

} // namespace cadorel
