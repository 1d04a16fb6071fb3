// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/RcloneServer.h"

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVServer::Program RcloneServer::prepare(const Task &task)
{
    QProcessEnvironment environment;
    environment.insert(u"RCLONE_CONFIG"_s, u"/dev/null"_s);
    environment.insert(u"RCLONE_CACHE_DIR"_s, task.directory);
    // Not as arguments, which everybody on the machine can read.
    environment.insert(u"RCLONE_USER"_s, task.user);
    environment.insert(u"RCLONE_PASS"_s, task.password);
    return {.name = u"rclone"_s,
            .arguments = {u"serve"_s, u"webdav"_s, u"--read-only"_s, u"--dir-cache-time"_s, u"0s"_s,
                          u"--realm"_s, task.realm, u"--addr"_s, u"127.0.0.1:%1"_s.arg(task.port),
                          task.documentRoot},
            .environment = environment};
}

} // namespace cadorel
