// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeHttpClient.h"

#include <QHash>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <list>

namespace cadorel {

/// The folders of a WebDAV server that answers when the test says so.
class FakeFolders
{
public:
    explicit FakeFolders(FakeHttpClient &web)
        : m_web(web)
    {
    }

    /// What a folder holds; names of folders end in "/". @param path without a "/" at its end
    void add(const QString &path, const QStringList &names) { m_folders.insert(path + u'/', names); }
    /// Everything is answered with this status from now on; 0 ends that.
    void refuse(int status) { m_refusal = status; }
    bool isAsked() const { return asked() != m_web.pending.end(); }

    /// Answers the request for a listing that waits longest. @return whether one does
    bool answerOne()
    {
        const auto waiting = asked();
        if (waiting == m_web.pending.end())
            return false;
        m_web.pending.splice(m_web.pending.begin(), m_web.pending, waiting);
        const QUrl url = m_web.pending.front().request.url;
        HttpResponse response;
        response.url = url;
        const auto names = m_folders.constFind(url.path());
        if (m_refusal != 0) {
            response.status = m_refusal;
        } else if (names == m_folders.cend()) {
            constexpr int notFound = 404;
            response.status = notFound;
        } else {
            constexpr int multistatus = 207;
            response.status = multistatus;
            response.headers = {{"Content-Type", "application/xml; charset=utf-8"}};
            response.body = listing(url.path(), *names);
        }
        m_web.answer(response);
        return true;
    }
    void answerAll()
    {
        while (answerOne()) {
        }
    }

private:
    std::list<FakeHttpClient::Pending>::iterator asked() const
    {
        return std::find_if(
            m_web.pending.begin(), m_web.pending.end(),
            [](const FakeHttpClient::Pending &waiting) { return waiting.request.method == "PROPFIND"; });
    }
    static QByteArray entry(const QString &path)
    {
        const QByteArray type = path.endsWith(u'/') ? "<D:collection/>" : "";
        return "<D:response><D:href>" + QUrl::toPercentEncoding(path, "/") +
               "</D:href><D:propstat><D:prop><D:resourcetype>" + type +
               "</D:resourcetype></D:prop></D:propstat></D:response>";
    }
    static QByteArray listing(const QString &path, const QStringList &names)
    {
        QByteArray xml = R"(<?xml version="1.0" encoding="utf-8"?><D:multistatus xmlns:D="DAV:">)";
        xml += entry(path);
        for (const QString &name : names)
            xml += entry(path + name);
        return xml + "</D:multistatus>";
    }

    FakeHttpClient &m_web;
    QHash<QString, QStringList> m_folders;
    int m_refusal = 0;
};

} // namespace cadorel
