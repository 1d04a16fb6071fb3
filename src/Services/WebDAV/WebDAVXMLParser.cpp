// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVXMLParser.h"

#include "Services/WebDAV/HttpDate.h"
#include "Services/WebDAV/MultistatusSearch.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"
#include "Utils/PercentCoding.h"

#include <QBuffer>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// The reader compares every attribute of a tag with every other, so that a tag of many megabytes would keep
/// it for days. No server writes one longer than this.
constexpr qsizetype longestTag = qsizetype{8} * 1024;

/// A description that quotes the answer could be as long as the answer.
constexpr qsizetype longestDescription = 200;

/// White space and line ends of all languages, in UTF-8.
constexpr std::array<QByteArrayView, 25> whiteSpaces{
    " ",      "\t",     "\n",     "\v",     "\f",     "\r",     "\u0085", "\u00a0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200a", "\u2028", "\u2029", "\u202f", "\u205f", "\u3000"};

QByteArrayView trimmedUtf8(QByteArrayView text)
{
    const auto first = [&text] {
        return std::find_if(whiteSpaces.cbegin(), whiteSpaces.cend(),
                            [text](QByteArrayView space) { return text.startsWith(space); });
    };
    const auto last = [&text] {
        return std::find_if(whiteSpaces.cbegin(), whiteSpaces.cend(),
                            [text](QByteArrayView space) { return text.endsWith(space); });
    };
    for (auto space = first(); space != whiteSpaces.cend(); space = first())
        text = text.sliced(space->size());
    for (auto space = last(); space != whiteSpaces.cend(); space = last())
        text.chop(space->size());
    return text;
}

/// Bytes that are UTF-8 are taken for it, whatever the declaration calls them: servers name an encoding that
/// they do not use.
QByteArrayView withoutDeclaration(QByteArrayView utf8)
{
    constexpr QByteArrayView byteOrderMark = "\xef\xbb\xbf";
    constexpr QByteArrayView end = "?>";
    if (utf8.startsWith(byteOrderMark))
        utf8 = utf8.sliced(byteOrderMark.size());
    if (!utf8.startsWith("<?xml ") && !utf8.startsWith("<?xml\n") && !utf8.startsWith("<?xml\t") &&
        !utf8.startsWith("<?xml\r"))
        return utf8;
    const qsizetype found = utf8.indexOf(end);
    return found < 0 ? utf8 : utf8.sliced(found + end.size());
}

bool hasOverlongTag(QByteArrayView xml)
{
    for (qsizetype start = xml.indexOf('<'); start >= 0; start = xml.indexOf('<', start + 1)) {
        const QByteArrayView rest = xml.sliced(start);
        if (rest.startsWith("<!") || rest.startsWith("<?"))
            continue;
        const qsizetype end = rest.first(std::min(longestTag, rest.size())).indexOf('>');
        if (end < 0 && rest.size() > longestTag)
            return true;
        start += std::max<qsizetype>(end, 0);
    }
    return false;
}

/// What follows the last ":" of a name, lower-cased: servers choose their own prefixes.
QString localName(QStringView name)
{
    return name.sliced(name.lastIndexOf(u':') + 1).toString().toLower();
}

QString withoutTrailingSlash(const QString &path)
{
    return path.endsWith(u'/') ? path.chopped(1) : path;
}

/// "b" for "/a/b" and "/a/b/", "/" for the root.
QString lastPathComponent(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    const QString whole = path.first(end);
    return whole.size() > 1 ? whole.sliced(whole.lastIndexOf(u'/') + 1) : whole;
}

} // namespace

WebDAVXMLParser::WebDAVXMLParser(const QByteArray &data, const QUrl &baseURL)
    : m_data(data)
    , m_baseURL(baseURL)
{
}

QList<WebDAVFile> WebDAVXMLParser::parse()
{
    if (m_data.isEmpty()) {
        print(u"⚠️ WebDAV XML: 数据为空"_s);
        return {};
    }
    QByteArrayView xml = m_data;
    if (m_data.isValidUtf8())
        xml = withoutDeclaration(trimmedUtf8(xml));
    if (parseElements(QByteArray::fromRawData(xml.data(), xml.size())))
        return m_items;
    m_items.clear();
    print(u"❌ WebDAV XML 解析失败: "_s + m_parseError.value_or(QString()));
    return parseAlternative();
}

bool WebDAVXMLParser::parseElements(const QByteArray &xml)
{
    if (hasOverlongTag(xml)) {
        parseErrorOccurred(u"A tag is too long."_s);
        return false;
    }
    // Read through a device the text is decoded piece by piece and not all at once.
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&buffer);
    reader.setNamespaceProcessing(false);
    // An entity of the answer's own is an error: none is needed, and a few of them make gigabytes.
    reader.setEntityExpansionLimit(0);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            didStartElement(reader.qualifiedName());
            break;
        case QXmlStreamReader::Characters:
            if (m_inResponse)
                foundCharacters(reader.text().toString());
            break;
        case QXmlStreamReader::EndElement:
            didEndElement(reader.qualifiedName());
            break;
        default:
            break;
        }
    }
    if (!reader.hasError())
        return true;
    parseErrorOccurred(logText(reader.errorString().left(longestDescription)));
    return false;
}

void WebDAVXMLParser::parseErrorOccurred(const QString &description)
{
    m_parseError = description;
    print(u"❌ WebDAV XML 解析错误: "_s + description);
}

void WebDAVXMLParser::didStartElement(QStringView name)
{
    m_currentElement = localName(name);
    if (m_currentElement != u"response")
        return;
    m_inResponse = true;
    m_currentHref.clear();
    m_currentDisplayName.clear();
    m_contentType.clear();
    m_lastModified.clear();
    m_isCollection = false;
    m_contentLength = 0;
}

void WebDAVXMLParser::foundCharacters(const QString &text)
{
    const QString piece = text.trimmed();
    if (piece.isEmpty())
        return;
    if (m_currentElement == u"href") {
        m_currentHref += piece;
    } else if (m_currentElement == u"displayname") {
        m_currentDisplayName += piece;
    } else if (m_currentElement == u"getcontenttype") {
        m_contentType += piece;
    } else if (m_currentElement == u"getlastmodified") {
        m_lastModified += piece;
    } else if (m_currentElement == u"getcontentlength") {
        bool isNumber = false;
        const qint64 length = piece.toLongLong(&isNumber);
        if (isNumber)
            m_contentLength = length;
    }
}

void WebDAVXMLParser::didEndElement(QStringView name)
{
    const QString element = localName(name);
    if (element == u"collection") {
        m_isCollection = true;
    } else if (element == u"response" && m_inResponse) {
        m_inResponse = false;
        if (!m_currentHref.isEmpty())
            addItem();
    }
    m_currentElement.clear();
}

void WebDAVXMLParser::addItem()
{
    const QString href = percentDecoded(m_currentHref).value_or(m_currentHref);
    WebDAVFile file;
    file.name = m_currentDisplayName.isEmpty() ? lastPathComponent(href) : m_currentDisplayName;
    file.path = withoutTrailingSlash(href);
    file.isDirectory = m_isCollection;
    file.size = m_contentLength;
    file.modifiedDate = dateFromHttpText(m_lastModified);
    if (!m_contentType.isEmpty())
        file.contentType = m_contentType;
    m_items.append(file);
}

QList<WebDAVFile> WebDAVXMLParser::parseAlternative() const
{
    if (!m_data.isValidUtf8())
        return {};
    print(u"📡 尝试备用解析方法..."_s);
    QList<WebDAVFile> items;
    MultistatusSearch search(m_data);
    while (const auto response = search.next()) {
        if (!response->href)
            continue;
        const QString escaped = QString::fromUtf8(*response->href);
        const QString href = percentDecoded(escaped).value_or(escaped);
        WebDAVFile file;
        file.isDirectory = response->hasCollection || href.endsWith(u'/');
        file.path = withoutTrailingSlash(href);
        file.name = lastPathComponent(href);
        if (file.name.isEmpty())
            file.name = file.path;
        items.append(file);
    }
    print(u"📡 备用解析找到 "_s + QString::number(items.size()) + u" 个项目"_s);
    return items;
}

} // namespace cadorel
