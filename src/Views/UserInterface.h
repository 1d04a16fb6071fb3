// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/InterfaceParts.h"

class QQmlEngine;

namespace cadorel {

/// Makes the QML module "Cadorel", its singletons and its image providers known to @p engine, once for each
/// engine, before the first screen is loaded. Main thread.
void installUserInterface(QQmlEngine &engine, const InterfaceParts &parts = {});

/// The fonts of the screens, for the whole application: without them Chinese falls back to Japanese shapes
/// and emoji lose their colours. Main thread, after the application object.
void installFonts();

} // namespace cadorel
