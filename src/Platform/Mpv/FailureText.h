// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

namespace cadorel {

/// Why libmpv could not play something, for a listener to read. Built from the error code and the kind of
/// address alone, so that it never quotes the address. Any thread; looks at the disk when a file could not be
/// opened.
/// @param mpvError libmpv's error code
QString failureText(int mpvError, const QUrl &url);

/// Text of a core that did not start.
QString missingEngineText();
/// Text of an address that no stream player can play.
QString unsupportedAddressText();
/// Text of a length that nobody can tell.
QString unknownDurationText();
/// Text of an item that was replaced or ended before its length was known.
QString abandonedItemText();

} // namespace cadorel
