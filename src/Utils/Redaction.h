// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

namespace cadorel {

/// Text of a URL that may be shown or logged: without user, password and the query items u, t, s and p, which
/// are bearer credentials of signed music addresses. Any thread.
QString redacted(const QUrl &url);

} // namespace cadorel
