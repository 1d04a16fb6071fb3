// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/Redirect.h"

#include "Platform/Network/HttpFailure.h"
#include "Platform/Network/WebAddress.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int movedPermanently = 301;
constexpr int found = 302;
constexpr int seeOther = 303;
constexpr int temporaryRedirect = 307;
constexpr int permanentRedirect = 308;

bool becomesGet(const QByteArray &method, int status)
{
    if (status == seeOther)
        return method != "GET" && method != "HEAD";
    return (status == movedPermanently || status == found) && method == "POST";
}

void removeHeaders(HttpRequest &request, std::initializer_list<QByteArrayView> names)
{
    request.headers.removeIf([names](const QPair<QByteArray, QByteArray> &header) {
        return std::any_of(names.begin(), names.end(), [&header](QByteArrayView name) {
            return header.first.compare(name, Qt::CaseInsensitive) == 0;
        });
    });
}

} // namespace

bool isRedirect(int status)
{
    constexpr std::array statuses{movedPermanently, found, seeOther, temporaryRedirect, permanentRedirect};
    return std::find(statuses.begin(), statuses.end(), status) != statuses.end();
}

std::expected<HttpRequest, HttpError> redirected(HttpRequest request, int status, const QByteArray &location)
{
    const QUrl target = request.url.resolved(QUrl::fromEncoded(location, QUrl::TolerantMode));
    if (!isWebAddress(target))
        return std::unexpected(httpFailure(HttpError::Kind::redirect));
    if (!isSameOrigin(request.url, target))
        removeHeaders(request, {"Authorization", "Cookie", "Proxy-Authorization"});
    if (becomesGet(request.method, status)) {
        request.method = "GET"_ba;
        request.body.clear();
        removeHeaders(request, {"Content-Type", "Content-Length", "Content-Encoding", "Content-Language"});
    }
    request.url = askedAddress(target);
    return request;
}

} // namespace cadorel
