// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/WebDAVServer.h"

namespace cadorel {

/// lighttpd with mod_webdav.
class LighttpdServer : public WebDAVServer
{
protected:
    Program prepare(const Task &task) override;
};

} // namespace cadorel
