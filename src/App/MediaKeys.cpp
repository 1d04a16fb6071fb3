// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/MediaKeys.h"

#include "Services/AudioPlayerService.h"
#include "ViewModels/CadorelViewModel.h"

#include <QKeyEvent>
#include <QWindow>

namespace cadorel {

MediaKeys::MediaKeys(QWindow &window, CadorelViewModel &viewModel)
    : m_viewModel(viewModel)
{
    window.installEventFilter(this);
}

bool MediaKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto *keyEvent = static_cast<QKeyEvent *>(event);
    // A key that is held down counts once, and without a song there is nothing to steer.
    return keyEvent->isAutoRepeat() || !m_viewModel.hasCurrentSong() ? QObject::eventFilter(watched, event)
                                                                     : press(keyEvent->key());
}

bool MediaKeys::press(int key)
{
    AudioPlayerService &player = *m_viewModel.audioPlayer();
    switch (key) {
    case Qt::Key_MediaTogglePlayPause:
    case Qt::Key_MediaPlay: // what most keyboards call the key that does both
        m_viewModel.togglePlayPause();
        return true;
    case Qt::Key_MediaPause:
        player.pause();
        return true;
    case Qt::Key_MediaStop:
        player.stop();
        return true;
    case Qt::Key_MediaNext:
        m_viewModel.next();
        return true;
    case Qt::Key_MediaPrevious:
        m_viewModel.previous();
        return true;
    default:
        return false;
    }
}

} // namespace cadorel
