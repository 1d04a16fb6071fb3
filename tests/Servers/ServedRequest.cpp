// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ServedRequest.h"

namespace cadorel {

QByteArray ServedRequest::path() const
{
    const qsizetype query = target.indexOf('?');
    return query < 0 ? target : target.first(query);
}

QByteArray ServedRequest::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value.isNull() ? QByteArray("") : value;
    }
    return {};
}

bool ServedRequest::hasBasicCredentials(const QString &user, const QString &password) const
{
    return header("Authorization") == "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64();
}

} // namespace cadorel
