// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace cadorel {

class WebDAVServer;

/// What a server holds, found with nothing of the player: by the addresses of the answers alone, in their
/// order, folders entered where they stand. Ends the program when the server does not answer.
/// @param depthLimit folders at this depth are not asked; the root has depth 0
/// @return the files' paths on the server, decoded
QStringList walkByHrefs(const WebDAVServer &server, const QString &user, const QString &password,
                        int depthLimit);

} // namespace cadorel
