// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// A button without a ground of its own that shrinks under the finger.
PressableButton {
    pressedScale: 0.92
    response: 0.2
    damping: 0.7
    tintsPress: Motion.isReduced
    leftPadding: 0
    rightPadding: 0
}
