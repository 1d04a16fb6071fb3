// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"
#include "Models/WebDAVConfig.h"

#include <QDateTime>
#include <QString>

namespace cadorel {

/// What the screens say of a server. Pure; any thread.
namespace serverTexts {

/// Host and port, without user and password.
QString host(const WebDAVConfig &config);
QString host(const NavidromeConfig &config);
/// Name of the symbol that stands for the kind of server.
QString symbol(const WebDAVConfig &config);
/// "同步于 11月20日 12:30", with the year when it is another than that of @p now; "从未同步".
QString lastSync(const WebDAVConfig &config, const QDateTime &now);

} // namespace serverTexts

} // namespace cadorel
