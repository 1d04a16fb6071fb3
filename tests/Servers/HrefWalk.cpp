// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/HrefWalk.h"

#include "Servers/PlainRequest.h"
#include "Servers/WebDAVServer.h"

#include <QXmlStreamReader>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QList<QByteArray> hrefs(const QByteArray &answer)
{
    QList<QByteArray> found;
    QXmlStreamReader xml(answer);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "href"_L1)
            found.append(xml.readElementText().toUtf8());
    if (xml.hasError())
        qFatal("the server's answer cannot be read: %s", qPrintable(xml.errorString()));
    return found;
}

} // namespace

QStringList walkByHrefs(const WebDAVServer &server, const QString &user, const QString &password,
                        int depthLimit)
{
    constexpr int multiStatus = 207;
    QStringList files;
    const auto walk = [&](const auto &self, const QByteArray &folder, int depth) -> void {
        if (depth >= depthLimit)
            return;
        const std::optional<PlainAnswer> answer = plainPropfind(server.address(), folder, user, password);
        if (!answer || answer->status != multiStatus)
            qFatal("the server does not list %s", folder.constData());
        for (const QByteArray &href : hrefs(answer->body)) {
            if (href == folder)
                continue;
            if (href.endsWith('/'))
                self(self, href, depth + 1);
            else
                files.append(QUrl::fromPercentEncoding(href));
        }
    };
    walk(walk, "/"_ba, 0);
    return files;
}

} // namespace cadorel
