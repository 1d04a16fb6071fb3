// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Utf8Text.h"

#include <QStringDecoder>

namespace cadorel {

std::optional<QString> utf8Text(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

} // namespace cadorel
