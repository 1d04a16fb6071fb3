// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QWindow;

namespace cadorel {

class CadorelViewModel;

/// The keys for play, pause, stop, the next and the previous song, where the desktop leaves them to the
/// window instead of taking them to the media controls. They work whatever has the keyboard, also beneath a
/// sheet. Main thread.
class MediaKeys : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object.
    MediaKeys(QWindow &window, CadorelViewModel &viewModel);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool press(int key);

    CadorelViewModel &m_viewModel;
};

} // namespace cadorel
