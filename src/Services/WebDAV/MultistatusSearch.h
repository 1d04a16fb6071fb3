// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>

#include <optional>

namespace cadorel {

/// Finds responses in a multistatus answer that is no XML. It finds what these expressions find, each next
/// one behind the last, in one pass; an engine for expressions takes time by the square of the text when a
/// server opens many responses and closes none:
///   response    <[dD]:response[^>]*>([\s\S]*?)</[dD]:response>
///   href        <[dD]:href>([^<]+)</[dD]:href>          the first one in it
///   collection  <[dD]:collection\s*/>                    anywhere in it
/// Refers to the text, which outlives it. Reentrant.
class MultistatusSearch
{
public:
    explicit MultistatusSearch(QByteArrayView utf8)
        : m_rest(utf8)
    {
    }

    struct Response
    {
        /// As it stands in the text; nothing when the response has none.
        std::optional<QByteArrayView> href;
        bool hasCollection = false;
    };

    /// The next response; nothing when there is none left.
    std::optional<Response> next();

private:
    QByteArrayView m_rest;
};

} // namespace cadorel
