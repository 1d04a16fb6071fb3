// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QQmlEngine;

namespace cadorel {

class RemoteCovers;

/// Makes the QML module "Cadorel" and its image providers known to @p engine, once for each engine, before
/// the first screen is loaded. Main thread.
/// @param remoteCovers fetches the covers that lie on servers, and outlives the engine; without it they are
/// not shown
void installUserInterface(QQmlEngine &engine, RemoteCovers *remoteCovers = nullptr);

/// The fonts of the screens, for the whole application: without them Chinese falls back to Japanese shapes
/// and emoji lose their colours. Main thread, after the application object.
void installFonts();

} // namespace cadorel
