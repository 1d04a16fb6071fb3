// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Redaction.h"

#include <QUrlQuery>

namespace cadorel {

QString redacted(const QUrl &url)
{
    QUrl shown = url;
    shown.setUserInfo(QString());
    if (shown.hasQuery()) {
        QUrlQuery query(shown);
        for (const char16_t name : {u'u', u't', u's', u'p'})
            query.removeAllQueryItems(QString(QChar(name)));
        shown.setQuery(query);
    }
    return shown.toString();
}

} // namespace cadorel
