// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

namespace cadorel {

/// Whether an address is one that can be asked: http or https, and a host.
bool isWebAddress(const QUrl &url);

/// Whether two addresses share scheme, host and port, so that credentials for one may go to the other.
bool isSameOrigin(const QUrl &a, const QUrl &b);

/// The address that is really asked: without user and password, segments "." and ".." resolved as Qt resolves
/// them on sending, every other slash in its place.
QUrl askedAddress(const QUrl &url);

/// What to give to QNetworkRequest so that askedAddress() goes over the wire: of slashes at the start of a
/// path it drops one (Qt 6.4).
QUrl wireAddress(const QUrl &asked);

} // namespace cadorel
