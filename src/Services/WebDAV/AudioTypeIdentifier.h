// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Type identifier of a media type such as "audio/mpeg"; "public.audio" for one that is not known.
QString audioTypeIdentifier(const QString &mimeType);

} // namespace cadorel
