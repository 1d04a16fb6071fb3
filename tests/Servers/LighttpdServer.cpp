// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/LighttpdServer.h"

#include "Servers/ServerFiles.h"

#include <QStringList>

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVServer::Program LighttpdServer::prepare(const Task &task)
{
    QStringList types;
    for (const MediaType &type : mediaTypes)
        types += u"\".%1\" => \"%2\""_s.arg(type.ending, type.type);
    writeServerFile(task.directory, u"users"_s, passwordLine(task.user, task.password));
    const QString configuration = uR"(
server.modules = ("mod_auth", "mod_authn_file", "mod_webdav")
server.bind = "127.0.0.1"
server.port = %2
server.document-root = "%3"
server.upload-dirs = ("%1")
auth.backend = "htpasswd"
auth.backend.htpasswd.userfile = "%1/users"
auth.require = ("/" => ("method" => "basic", "realm" => "%4", "require" => "valid-user"))
webdav.activate = "enable"
webdav.is-readonly = "enable"
mimetype.assign = (%5)
)"_s.arg(task.directory, QString::number(task.port), task.documentRoot, task.realm, types.join(u", "_s));
    return {.name = u"lighttpd"_s,
            .arguments = {u"-D"_s, u"-f"_s,
                          writeServerFile(task.directory, u"lighttpd.conf"_s, configuration.toUtf8())},
            .environment = {}};
}

} // namespace cadorel
