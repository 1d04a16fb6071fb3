// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace cadorel {

/// The first @p characters, as a reader counts them, of a text from outside; nothing when the bytes are no
/// UTF-8. A long text costs no more than its beginning and the look whether it is UTF-8. Any thread.
std::optional<QString> textPreview(const QByteArray &utf8, int characters);

} // namespace cadorel
