// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/HttpClient.h"

namespace cadorel {

QByteArray HttpResponse::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QString HttpResponse::mimeType() const
{
    return QString::fromLatin1(header("Content-Type").split(';').constFirst().trimmed().toLower());
}

} // namespace cadorel
