// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/ResourceProtocol.h"

#include "Platform/Mpv/MpvHandle.h"
#include "Platform/ResourceLoadingRequest.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <mpv/stream_cb.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// "." and the ending of a file name, as far as it is an ordinary one.
QByteArray plainSuffix(const QUrl &url)
{
    static const QRegularExpression plain(u"\\A[a-z0-9]{1,5}\\z"_s);
    const QString suffix = QFileInfo(url.path()).suffix().toLower();
    return plain.match(suffix).hasMatch() ? '.' + suffix.toLatin1() : QByteArray();
}

} // namespace

/// One opening of the resource by libmpv. Everything but cancel() is called by one thread at a time.
///
/// libmpv knows a reader by a number: its cancel callback may run beside the close callback, and even after
/// it.
class ResourceProtocol::Reader
{
public:
    Reader(ResourceProtocol &protocol, Request request)
        : m_protocol(protocol)
        , m_request(std::move(request))
    {
    }

    /// @return the cookie of a new reader
    static void *make(ResourceProtocol &protocol, Request request)
    {
        const std::scoped_lock lock(mutex);
        readers.insert(++lastNumber, std::make_shared<Reader>(protocol, std::move(request)));
        return reinterpret_cast<void *>(lastNumber);
    }
    static int64_t read(void *cookie, char *buffer, uint64_t size)
    {
        const auto self = find(cookie);
        const auto wanted = static_cast<qint64>(std::min<uint64_t>(size, std::numeric_limits<qint64>::max()));
        const qint64 count = self->m_request->read(self->m_position, buffer, wanted);
        if (count > 0)
            self->m_position += count;
        return count;
    }
    static int64_t seek(void *cookie, int64_t offset)
    {
        if (offset < 0)
            return MPV_ERROR_GENERIC;
        return find(cookie)->m_position = offset;
    }
    static int64_t size(void *cookie)
    {
        const auto information = find(cookie)->m_request->waitForContentInformation();
        return information ? information->contentLength : qint64{MPV_ERROR_UNSUPPORTED};
    }
    static void cancel(void *cookie)
    {
        if (const auto self = find(cookie))
            self->m_protocol.cancelRequest(self->m_request);
    }
    static void close(void *cookie)
    {
        cancel(cookie);
        const std::scoped_lock lock(mutex);
        readers.remove(reinterpret_cast<quintptr>(cookie));
    }

private:
    static std::shared_ptr<Reader> find(void *cookie)
    {
        const std::scoped_lock lock(mutex);
        return readers.value(reinterpret_cast<quintptr>(cookie));
    }

    static inline std::mutex mutex;
    static inline QHash<quintptr, std::shared_ptr<Reader>> readers;
    static inline quintptr lastNumber = 0;

    ResourceProtocol &m_protocol;
    const Request m_request;
    qint64 m_position = 0;
};

ResourceProtocol::~ResourceProtocol()
{
    for (const QList<Waiting> asked = std::exchange(m_waiting, {}); const Waiting &waiting : asked) {
        const Request request = waiting.request.lock();
        if (request && !request->isFinished() && !waiting.lifetime.expired())
            waiting.loader->didCancel(request);
    }
}

void ResourceProtocol::registerWith(MpvHandle &core)
{
    core.addProtocol(name, this, &ResourceProtocol::open);
}

QByteArray ResourceProtocol::publish(const QUrl &url, ResourceLoader *loader,
                                     std::weak_ptr<const void> lifetime)
{
    const std::scoped_lock lock(m_mutex);
    m_published = {.number = ++m_lastNumber,
                   .url = url,
                   .loader = loader,
                   .lifetime = std::move(lifetime),
                   .request = nullptr};
    return name + "://"_ba + QByteArray::number(m_lastNumber) + plainSuffix(url);
}

void ResourceProtocol::withdraw()
{
    const std::scoped_lock lock(m_mutex);
    m_published = {};
}

std::optional<LoadingError> ResourceProtocol::failure() const
{
    const std::scoped_lock lock(m_mutex);
    return m_published.request ? m_published.request->error() : std::nullopt;
}

QByteArray ResourceProtocol::completeData() const
{
    const std::scoped_lock lock(m_mutex);
    const bool complete = m_published.request && m_published.request->isFinished();
    return complete ? m_published.request->data() : QByteArray();
}

int ResourceProtocol::open(void *protocol, char *address, mpv_stream_cb_info *info)
{
    auto &self = *static_cast<ResourceProtocol *>(protocol);
    Request request = self.beginRequest(address);
    if (!request)
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = Reader::make(self, std::move(request));
    info->read_fn = &Reader::read;
    info->seek_fn = &Reader::seek;
    info->size_fn = &Reader::size;
    info->close_fn = &Reader::close;
    info->cancel_fn = &Reader::cancel;
    return 0;
}

ResourceProtocol::Request ResourceProtocol::beginRequest(const QByteArray &address)
{
    const QByteArray label = address.sliced(address.lastIndexOf('/') + 1);
    const quint64 number = label.split('.').constFirst().toULongLong();
    const std::scoped_lock lock(m_mutex);
    if (number == 0 || number != m_published.number)
        return {};
    using Range = ResourceLoadingRequest::Range;
    m_published.request = std::make_shared<ResourceLoadingRequest>(
        m_published.url, true, Range{.offset = 0, .length = ResourceLoadingRequest::toTheEnd});
    // Waiting here for the loader could not be cancelled.
    QMetaObject::invokeMethod(
        this,
        [this, request = m_published.request, loader = m_published.loader, lifetime = m_published.lifetime] {
            ask(request, loader, lifetime);
        },
        Qt::QueuedConnection);
    return m_published.request;
}

void ResourceProtocol::ask(const Request &request, ResourceLoader *loader,
                           const std::weak_ptr<const void> &lifetime)
{
    m_waiting.removeIf([](const Waiting &earlier) {
        const Request asked = earlier.request.lock();
        return !asked || asked->isFinished();
    });
    if (request->isCancelled())
        return;
    if (lifetime.expired()) {
        request->finishLoading(LoadingError{});
        return;
    }
    m_waiting.append({.request = request, .loader = loader, .lifetime = lifetime});
    if (!loader->shouldWaitForLoadingOfRequestedResource(request))
        request->finishLoading(LoadingError{});
}

void ResourceProtocol::cancelRequest(const Request &request)
{
    if (!request->cancel())
        return;
    const auto leave = [this, request] { takeBack(request); };
    QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
}

void ResourceProtocol::takeBack(const Request &request)
{
    const auto found = std::find_if(m_waiting.cbegin(), m_waiting.cend(), [&request](const Waiting &waiting) {
        return waiting.request.lock() == request;
    });
    if (found == m_waiting.cend())
        return;
    const Waiting waiting = m_waiting.takeAt(found - m_waiting.cbegin());
    if (!waiting.lifetime.expired())
        waiting.loader->didCancel(request);
}

} // namespace cadorel
