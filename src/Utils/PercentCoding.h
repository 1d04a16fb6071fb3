// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace cadorel {

/// Text without its percent escapes. Nothing when a "%" begins no escape or the bytes are no UTF-8. Any
/// thread.
std::optional<QString> percentDecoded(const QString &text);

/// Text in which everything is escaped but ASCII letters, digits and the characters of @p allowed. Nothing
/// when the text has no UTF-8 form. Any thread.
std::optional<QString> percentEncoded(const QString &text, const QByteArray &allowed = {});

} // namespace cadorel
