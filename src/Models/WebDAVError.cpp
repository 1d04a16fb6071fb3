// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVError.h"

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVError::WebDAVError(Case what)
    : WebDAVError(what, 0, QString())
{
}

WebDAVError::WebDAVError(Case what, int status, const QString &underlying)
    : m_case(what)
    , m_status(status)
    , m_underlying(underlying)
    , m_what(description().toUtf8())
{
}

WebDAVError WebDAVError::serverError(int status)
{
    return {Case::serverError, status, QString()};
}

WebDAVError WebDAVError::networkError(const QString &underlying)
{
    return {Case::networkError, 0, underlying};
}

QString WebDAVError::description() const
{
    switch (m_case) {
    case Case::invalidConfig:
        return u"配置无效"_s;
    case Case::invalidURL:
        return u"URL 格式错误"_s;
    case Case::connectionFailed:
        return u"连接失败，请检查网络和服务器地址"_s;
    case Case::authenticationFailed:
        return u"认证失败，请检查用户名和密码"_s;
    case Case::serverError:
        return u"服务器错误 (HTTP "_s + QString::number(m_status) + u')';
    case Case::parseError:
        return u"响应解析失败"_s;
    case Case::networkError:
        return u"网络错误: "_s + m_underlying;
    case Case::fileNotFound:
        return u"文件不存在"_s;
    case Case::accessDenied:
        return u"访问被拒绝"_s;
    }
    Q_UNREACHABLE();
}

} // namespace cadorel
