// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/WebDAV/WebDAVFile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Reads a server's multistatus answer into directory entries, whatever prefix it uses. What is no XML is
/// searched for responses instead. An answer that uses entities of its own counts as none, and nothing
/// outside of it is read. Logs what goes wrong. Time grows with the length of the answer and nothing else, so
/// that any answer may be read; a long one belongs on another thread. Reentrant: one parser belongs to one
/// thread.
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
