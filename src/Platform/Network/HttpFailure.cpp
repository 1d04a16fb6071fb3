// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/HttpFailure.h"

#include "Utils/SystemErrorText.h"

#include <cerrno>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

HttpError connectionFailure(const QString &description)
{
    return {.kind = HttpError::Kind::connection, .description = description};
}

/// Why a new file could not be made or written.
QString fileReason(int code)
{
    switch (code) {
    case EACCES:
    case EPERM:
        return u"没有写入权限"_s;
    case ENOENT:
    case ENOTDIR:
        return u"文件夹不存在"_s;
    default:
        return systemErrorText(code);
    }
}

} // namespace

HttpError httpFailure(HttpError::Kind kind)
{
    switch (kind) {
    case HttpError::Kind::timeout:
        return {.kind = kind, .description = u"连接超时"_s};
    case HttpError::Kind::untrusted:
        return {.kind = kind, .description = u"服务器的证书不受信任"_s};
    case HttpError::Kind::tooLarge:
        return {.kind = kind, .description = u"内容过大"_s};
    case HttpError::Kind::redirect:
        return {.kind = kind, .description = u"服务器的重定向无效或过多"_s};
    case HttpError::Kind::notHttp:
        return {.kind = kind, .description = u"不是有效的网址"_s};
    case HttpError::Kind::file:
        return {.kind = kind, .description = u"无法写入文件"_s};
    case HttpError::Kind::cancelled:
        return {.kind = kind, .description = u"已取消"_s};
    case HttpError::Kind::connection:
        break;
    }
    return connectionFailure(u"无法连接到服务器"_s);
}

HttpError transportFailure(QNetworkReply::NetworkError error, bool isUntrusted, bool hasBegun)
{
    if (isUntrusted)
        return httpFailure(HttpError::Kind::untrusted);
    if (error == QNetworkReply::TimeoutError || error == QNetworkReply::ProxyTimeoutError)
        return httpFailure(HttpError::Kind::timeout);
    if (hasBegun)
        return connectionFailure(u"连接中断，内容不完整"_s);
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return connectionFailure(u"连接被拒绝"_s);
    case QNetworkReply::HostNotFoundError:
        return connectionFailure(u"找不到服务器"_s);
    case QNetworkReply::RemoteHostClosedError:
        return connectionFailure(u"服务器关闭了连接"_s);
    case QNetworkReply::SslHandshakeFailedError:
        return connectionFailure(u"无法建立安全连接"_s);
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProtocolUnknownError:
        return connectionFailure(u"无法识别服务器的回答"_s);
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
        return connectionFailure(u"无法连接到代理服务器"_s);
    default:
        return httpFailure(HttpError::Kind::connection);
    }
}

HttpError fileFailure(int code)
{
    HttpError failure = httpFailure(HttpError::Kind::file);
    failure.description += u"："_s + fileReason(code);
    return failure;
}

} // namespace cadorel
