// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/WebDAVServer.h"

namespace cadorel {

/// `rclone serve webdav`.
class RcloneServer : public WebDAVServer
{
protected:
    Program prepare(const Task &task) override;
};

} // namespace cadorel
