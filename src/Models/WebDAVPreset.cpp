// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVPreset.h"

#include "Models/WebDAVEndpoints.h"

namespace cadorel {

using namespace Qt::StringLiterals;

const QList<WebDAVPreset> &WebDAVPreset::presets()
{
    constexpr int alistPort = 5244;
    const QString https = u"https://"_s;
    const QString http = u"http://"_s;
    static const QList<WebDAVPreset> list = {
        {.name = webdav::jianguoyunName,
         .serverURL = webdav::jianguoyunEndpoint,
         .port = std::nullopt,
         .basePath = webdav::jianguoyunBasePath,
         .description = u"国内知名云存储服务"_s,
         .icon = u"cloud.fill"_s},
        {.name = webdav::nextcloudName,
         .serverURL = https,
         .port = std::nullopt,
         .basePath = webdav::nextcloudFiles + u"用户名"_s,
         .description = u"开源私有云存储"_s,
         .icon = u"server.rack"_s},
        {.name = u"群晖 NAS (HTTPS)"_s,
         .serverURL = https,
         .port = webdav::synologyHttpsPort,
         .basePath = u"/"_s,
         .description = u"群晖 NAS WebDAV 服务"_s,
         .icon = u"externaldrive.connected.to.line.below"_s},
        {.name = u"群晖 NAS (HTTP)"_s,
         .serverURL = http,
         .port = webdav::synologyHttpPort,
         .basePath = u"/"_s,
         .description = u"群晖 NAS WebDAV 服务（不加密）"_s,
         .icon = u"externaldrive"_s},
        {.name = u"威联通 QNAP"_s,
         .serverURL = https,
         .port = std::nullopt,
         .basePath = u"/"_s,
         .description = u"威联通 NAS WebDAV 服务"_s,
         .icon = u"externaldrive.fill"_s},
        {.name = u"Alist"_s,
         .serverURL = http,
         .port = alistPort,
         .basePath = u"/dav"_s,
         .description = u"Alist 文件列表程序"_s,
         .icon = u"folder.fill"_s},
        {.name = u"自定义"_s,
         .serverURL = https,
         .port = std::nullopt,
         .basePath = u"/"_s,
         .description = u"手动配置 WebDAV 服务器"_s,
         .icon = u"gear"_s},
    };
    return list;
}

} // namespace cadorel
