// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/WebDAVServer.h"

namespace cadorel {

/// nginx with the module dav_ext.
class NginxServer : public WebDAVServer
{
public:
    bool listsHiddenFiles() const override { return false; }

protected:
    Program prepare(const Task &task) override;
};

} // namespace cadorel
