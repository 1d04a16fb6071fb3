// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/WindowScene.h"

namespace cadorel {

WindowScene::WindowScene(QWindow &window, CadorelApp &app)
    : m_window(window)
    , m_app(app)
{
    connect(&m_window, &QWindow::activeChanged, this, &WindowScene::update);
    connect(&m_window, &QWindow::visibilityChanged, this, &WindowScene::update);
    connect(&m_app, &CadorelApp::isForceUpdateRequiredChanged, this, &WindowScene::tellForcedUpdate);
    update();
    tellForcedUpdate();
}

void WindowScene::tellForcedUpdate()
{
    m_window.setProperty("isForceUpdateRequired", m_app.isForceUpdateRequired());
}

void WindowScene::update()
{
    const bool shown = m_window.isVisible() && m_window.visibility() != QWindow::Minimized;
    m_wasShown = m_wasShown || shown;
    m_wasActive = m_wasActive || (shown && m_window.isActive());
    // A window that is still on its way, or that never gets the keyboard, has left nothing.
    if (!shown && m_wasShown)
        m_app.setScenePhase(CadorelApp::ScenePhase::background);
    else if (shown && !m_window.isActive() && m_wasActive)
        m_app.setScenePhase(CadorelApp::ScenePhase::inactive);
    else if (shown)
        m_app.setScenePhase(CadorelApp::ScenePhase::active);
}

void WindowScene::raise(const QByteArray &token)
{
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token); // where Qt's Wayland side looks for it
    // As large as it was: show() would take a window that fills the screen down from there.
    m_window.setWindowStates(m_window.windowStates() & ~Qt::WindowStates(Qt::WindowMinimized));
    m_window.setVisible(true);
    m_window.raise();
    m_window.requestActivate();
}

} // namespace cadorel
