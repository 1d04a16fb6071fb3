// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/WebDAVServer.h"

namespace cadorel {

/// Apache httpd with mod_dav.
class ApacheServer : public WebDAVServer
{
protected:
    Program prepare(const Task &task) override;
};

} // namespace cadorel
