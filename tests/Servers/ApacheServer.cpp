// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ApacheServer.h"

#include "Servers/ServerFiles.h"

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVServer::Program ApacheServer::prepare(const Task &task)
{
    QString types;
    for (const MediaType &type : mediaTypes)
        types += "AddType "_L1 + type.type + " ."_L1 + type.ending + u'\n';
    QString modules;
    for (const QLatin1StringView name : {"mpm_event"_L1, "authn_core"_L1, "authn_file"_L1, "authz_core"_L1,
                                         "authz_user"_L1, "auth_basic"_L1, "mime"_L1, "dav"_L1, "dav_fs"_L1})
        modules += "LoadModule %1_module /usr/lib/apache2/modules/mod_%1.so\n"_L1.arg(name);
    writeServerFile(task.directory, u"users"_s, passwordLine(task.user, task.password));
    writeServerFile(task.directory, u"types"_s, {});
    const QString configuration = uR"(
ServerRoot "%1"
DefaultRuntimeDir "%1"
ServerName 127.0.0.1
Listen 127.0.0.1:%2
PidFile "%1/pid"
ErrorLog "%1/error.log"
DavLockDB "%1/locks"
%3
TypesConfig "%1/types"
%4
DocumentRoot "%5"
<Directory "%5">
    Dav On
    AllowOverride None
    AuthType Basic
    AuthName "%6"
    AuthUserFile "%1/users"
    Require valid-user
</Directory>
)"_s.arg(task.directory, QString::number(task.port), modules, types, task.documentRoot, task.realm);
    // One process, so that nothing is left when it goes.
    return {.name = u"apache2"_s,
            .arguments = {u"-X"_s, u"-f"_s,
                          writeServerFile(task.directory, u"httpd.conf"_s, configuration.toUtf8())},
            .environment = {}};
}

} // namespace cadorel
