// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Subsonic/SubsonicRefusal.h"

#include <QUrlQuery>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Longer than a token or a salt.
constexpr qsizetype longestSecret = 64;
/// What is looked through: nobody reads on, and a whole answer may be millions of characters.
constexpr qsizetype longestRead = 2048;

} // namespace

std::optional<SubsonicError> fitToShow(const std::optional<SubsonicError> &error, const QUrl &asked)
{
    if (!error || !error->message)
        return error;
    QString message = error->message->left(longestRead);
    const QUrlQuery query(asked);
    for (const QString &name : {u"t"_s, u"s"_s}) {
        if (const QString secret = query.queryItemValue(name); !secret.isEmpty())
            message.replace(secret, u"…"_s, Qt::CaseInsensitive);
    }
    // The end may be the first half of a secret.
    if (error->message->size() > longestRead)
        message.chop(longestSecret);
    if (message.size() > longestRefusal) {
        message.truncate(longestRefusal - 1);
        if (message.back().isHighSurrogate())
            message.chop(1);
        message += u'…';
    }
    return SubsonicError{.code = error->code, .message = message};
}

} // namespace cadorel
