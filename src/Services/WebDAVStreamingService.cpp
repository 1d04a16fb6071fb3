// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAVStreamingService.h"

#include "Services/SharedServices.h"

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVStreamingService::WebDAVStreamingService(Platform &platform)
    : m_platform(platform)
{
}

WebDAVStreamingService::~WebDAVStreamingService() = default;

WebDAVStreamingService &WebDAVStreamingService::shared()
{
    return sharedService<WebDAVStreamingService>(
        [] { return std::make_unique<WebDAVStreamingService>(processPlatform()); });
}

std::optional<MediaAsset> WebDAVStreamingService::createStreamingAsset(const QUrl &url)
{
    QUrl address = url;
    address.setScheme(u"webdavstream"_s);
    address.setPath(u'/' + url.scheme() + url.path());
    return MediaAsset{.url = address, .prefersPreciseDuration = true, .resourceLoader = this};
}

void WebDAVStreamingService::clearCache([[maybe_unused]] const QUrl &url) {}

void WebDAVStreamingService::clearAllCache() {}

QCoro::Task<void> WebDAVStreamingService::downloadSettled([[maybe_unused]] QUrl url)
{
    Q_UNUSED(m_platform);
    co_return;
}

bool WebDAVStreamingService::shouldWaitForLoadingOfRequestedResource(std::shared_ptr<ResourceLoadingRequest>)
{
    return false;
}

void WebDAVStreamingService::didCancel(std::shared_ptr<ResourceLoadingRequest>) {}

} // namespace cadorel
