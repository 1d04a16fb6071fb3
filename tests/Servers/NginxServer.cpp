// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/NginxServer.h"

#include "Servers/ServerFiles.h"

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVServer::Program NginxServer::prepare(const Task &task)
{
    QString types;
    for (const MediaType &type : mediaTypes)
        types += "%1 %2; "_L1.arg(type.type, type.ending);
    writeServerFile(task.directory, u"users"_s, passwordLine(task.user, task.password));
    // One process, so that nothing is left when it goes.
    const QString configuration = uR"(
load_module /usr/lib/nginx/modules/ngx_http_dav_ext_module.so;
daemon off;
master_process off;
pid pid;
error_log stderr;
events {}
http {
    access_log off;
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    uwsgi_temp_path uwsgi;
    scgi_temp_path scgi;
    types { %1 }
    server {
        listen 127.0.0.1:%2;
        root "%3";
        auth_basic "%4";
        auth_basic_user_file users;
        location / {
            dav_ext_methods PROPFIND OPTIONS;
        }
    }
}
)"_s.arg(types, QString::number(task.port), task.documentRoot, task.realm);
    return {.name = u"nginx"_s,
            .arguments = {u"-e"_s, u"stderr"_s, u"-p"_s, task.directory, u"-c"_s,
                          writeServerFile(task.directory, u"nginx.conf"_s, configuration.toUtf8())},
            .environment = {}};
}

} // namespace cadorel
