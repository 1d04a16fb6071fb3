// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"

#include <expected>

namespace cadorel {

/// Whether that status sends the client elsewhere, if there is a Location.
bool isRedirect(int status);

/// What to ask next when @p request was answered with a redirect: method and body as RFC 9110, 15.4 has them
/// (301 and 302 turn POST into GET, as all clients do), without the user and password of @p location, and
/// without credentials when they would leave their origin.
/// @return Kind::redirect when the location is no address of http or https
std::expected<HttpRequest, HttpError> redirected(HttpRequest request, int status, const QByteArray &location);

} // namespace cadorel
