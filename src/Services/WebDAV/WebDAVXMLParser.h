// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/WebDAV/WebDAVFile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Reads a server's multistatus answer into directory entries, whatever prefix it uses. Text that is no XML
/// is searched by expressions instead. Entities are not expanded and nothing outside is read. Logs what goes
/// wrong. Reentrant: one parser belongs to one thread.
class WebDAVXMLParser
{
public:
    /// @param data body of the answer, @param baseURL address that was asked
    WebDAVXMLParser(const QByteArray &data, const QUrl &baseURL);

    /// The entries in the order of the answer, the listed directory's own among them.
    QList<WebDAVFile> parse();

private:
    bool parseElements(const QByteArray &xml);
    void didStartElement(QStringView name);
    void foundCharacters(const QString &text);
    void didEndElement(QStringView name);
    void parseErrorOccurred(const QString &description);
    void addItem();
    QList<WebDAVFile> parseAlternative() const;

    QByteArray m_data;
    QUrl m_baseURL;
    QList<WebDAVFile> m_items;
    QString m_currentElement;
    QString m_currentHref;
    QString m_currentDisplayName;
    QString m_contentType;
    QString m_lastModified;
    bool m_isCollection = false;
    qint64 m_contentLength = 0;
    bool m_inResponse = false;
    std::optional<QString> m_parseError;
};

} // namespace cadorel
