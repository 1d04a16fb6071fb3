// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QQuickWindow;

namespace cadorel {

class MadeHome;

/// The whole of a program that measures windows: one after the other it starts itself anew for OpenGL and for
/// the raster backend, on a display of their own, and there calls @p measure.
/// @param prepare called once before, with no display; what it puts into the home both of them find
/// @return for main()
int measureOnEachBackend(int argc, char *argv[], void (*measure)(const MadeHome &home),
                         void (*prepare)(const MadeHome &home) = nullptr);

/// Of a window that is shown, for a report.
QString backendName(const QQuickWindow &window);

} // namespace cadorel
