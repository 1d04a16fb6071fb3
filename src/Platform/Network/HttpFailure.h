// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"

#include <QNetworkReply>

namespace cadorel {

/// The failure of that kind with its usual description.
HttpError httpFailure(HttpError::Kind kind);

/// What a transport error means for a listener.
/// @param isUntrusted whether the server's certificate was refused: Qt has one error for that and for a
/// handshake that failed in another way
/// @param hasBegun whether the head of the answer had arrived
HttpError transportFailure(QNetworkReply::NetworkError error, bool isUntrusted, bool hasBegun);

/// What the system's error number of a file operation means for a listener.
HttpError fileFailure(int code);

} // namespace cadorel
