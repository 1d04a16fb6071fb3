// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ResourceLoadingRequest.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace cadorel {

ResourceLoadingRequest::ResourceLoadingRequest(QUrl url, bool wantsContentInformation,
                                               std::optional<Range> range)
    : m_url(std::move(url))
{
    if (wantsContentInformation)
        m_contentInformation.emplace();
    if (range)
        m_dataRequest.emplace(DataRequest(*this, *range));
}

qint64 ResourceLoadingRequest::DataRequest::currentOffset() const
{
    const std::scoped_lock lock(m_owner.m_mutex);
    return m_range.offset + m_owner.m_data.size();
}

void ResourceLoadingRequest::DataRequest::respond(const QByteArray &bytes)
{
    {
        const std::scoped_lock lock(m_owner.m_mutex);
        if (m_owner.m_finished || m_owner.m_cancelled)
            return;
        if (m_owner.m_data.isEmpty())
            m_owner.m_data = bytes;
        else
            m_owner.m_data.append(bytes);
        m_owner.m_informed = true;
    }
    m_owner.m_changed.notify_all();
}

ResourceLoadingRequest::ContentInformation *ResourceLoadingRequest::contentInformationRequest()
{
    return m_contentInformation ? &*m_contentInformation : nullptr;
}

ResourceLoadingRequest::DataRequest *ResourceLoadingRequest::dataRequest()
{
    return m_dataRequest ? &*m_dataRequest : nullptr;
}

void ResourceLoadingRequest::finishLoading()
{
    end({});
}

void ResourceLoadingRequest::finishLoading(const LoadingError &error)
{
    end(error);
}

void ResourceLoadingRequest::end(std::optional<LoadingError> error)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_finished)
            return;
        m_finished = true;
        m_informed = m_informed || !error;
        m_error = std::move(error);
    }
    m_changed.notify_all();
}

bool ResourceLoadingRequest::cancel()
{
    bool takenBack = false;
    {
        const std::scoped_lock lock(m_mutex);
        takenBack = !m_finished && !m_cancelled;
        m_cancelled = true;
    }
    m_changed.notify_all();
    return takenBack;
}

bool ResourceLoadingRequest::isCancelled() const
{
    const std::scoped_lock lock(m_mutex);
    return m_cancelled;
}

bool ResourceLoadingRequest::isFinished() const
{
    const std::scoped_lock lock(m_mutex);
    return m_finished;
}

std::optional<LoadingError> ResourceLoadingRequest::error() const
{
    const std::scoped_lock lock(m_mutex);
    return m_error;
}

qint64 ResourceLoadingRequest::read(qint64 offset, char *buffer, qint64 size)
{
    if (!m_dataRequest || offset < m_dataRequest->requestedOffset())
        return -1;
    const qint64 index = offset - m_dataRequest->requestedOffset();
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_finished || m_cancelled || index < m_data.size(); });
    if (m_cancelled)
        return -1;
    if (index < m_data.size()) {
        const qint64 count = std::clamp<qint64>(size, 0, m_data.size() - index);
        std::memcpy(buffer, m_data.constData() + index, static_cast<std::size_t>(count));
        return count;
    }
    return m_error ? -1 : 0;
}

std::optional<ResourceLoadingRequest::ContentInformation> ResourceLoadingRequest::waitForContentInformation()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_informed || m_finished || m_cancelled; });
    if (!m_informed || m_cancelled)
        return {};
    return m_contentInformation;
}

QByteArray ResourceLoadingRequest::data() const
{
    const std::scoped_lock lock(m_mutex);
    return m_data;
}

} // namespace cadorel
