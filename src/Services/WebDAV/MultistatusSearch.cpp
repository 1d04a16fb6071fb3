// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/MultistatusSearch.h"

namespace cadorel {

namespace {

/// A piece of markup around the letter of its prefix, which is "d" or "D".
struct Tag
{
    QByteArrayView before;
    QByteArrayView after;

    qsizetype size() const { return before.size() + 1 + after.size(); }

    bool isAt(QByteArrayView text, qsizetype position) const
    {
        const QByteArrayView rest = text.sliced(position);
        return rest.size() >= size() && rest.startsWith(before) &&
               (rest[before.size()] == 'd' || rest[before.size()] == 'D') &&
               rest.sliced(before.size() + 1).startsWith(after);
    }

    /// The first position at or behind @p from; -1 when there is none.
    qsizetype indexIn(QByteArrayView text, qsizetype from = 0) const
    {
        const qsizetype lead = before.size() + 1;
        for (qsizetype found = text.indexOf(after, from + lead); found >= 0;
             found = text.indexOf(after, found + 1)) {
            if (isAt(text, found - lead))
                return found - lead;
        }
        return -1;
    }
};

constexpr Tag responseStart{"<", ":response"};
constexpr Tag responseEnd{"</", ":response>"};
constexpr Tag hrefStart{"<", ":href>"};
constexpr Tag hrefEnd{"</", ":href>"};
constexpr Tag collectionStart{"<", ":collection"};

std::optional<QByteArrayView> firstHref(QByteArrayView block)
{
    for (qsizetype start = hrefStart.indexIn(block); start >= 0;
         start = hrefStart.indexIn(block, start + 1)) {
        const qsizetype begin = start + hrefStart.size();
        const qsizetype end = block.indexOf('<', begin);
        if (end > begin && hrefEnd.isAt(block, end))
            return block.sliced(begin, end - begin);
    }
    return std::nullopt;
}

bool hasEmptyCollection(QByteArrayView block)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; };
    for (qsizetype start = collectionStart.indexIn(block); start >= 0;
         start = collectionStart.indexIn(block, start + 1)) {
        qsizetype end = start + collectionStart.size();
        while (end < block.size() && isSpace(block[end]))
            ++end;
        if (block.sliced(end).startsWith("/>"))
            return true;
    }
    return false;
}

} // namespace

std::optional<MultistatusSearch::Response> MultistatusSearch::next()
{
    const qsizetype start = responseStart.indexIn(m_rest);
    const qsizetype close = start < 0 ? -1 : m_rest.indexOf('>', start + responseStart.size());
    const qsizetype end = close < 0 ? -1 : responseEnd.indexIn(m_rest, close + 1);
    if (end < 0) {
        // What one start lacks behind it, every later one lacks too.
        m_rest = {};
        return std::nullopt;
    }
    const QByteArrayView block = m_rest.sliced(close + 1, end - close - 1);
    m_rest = m_rest.sliced(end + responseEnd.size());
    return Response{.href = firstHref(block), .hasCollection = hasEmptyCollection(block)};
}

} // namespace cadorel
