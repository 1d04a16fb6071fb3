// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ResourceLoader.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QUrl>

#include <memory>
#include <mutex>
#include <optional>

struct mpv_stream_cb_info;

namespace cadorel {

class MpvHandle;

/// The protocol through which one libmpv core reads what a ResourceLoader gives. libmpv gets a number for an
/// address, so that no credential enters it.
///
/// Public members belong to the main thread. libmpv's threads wait inside a ResourceLoadingRequest and
/// nowhere else, and what they want of the loader is queued to the main thread.
class ResourceProtocol : public QObject
{
    Q_OBJECT
public:
    /// Scheme of the addresses that libmpv is given.
    static constexpr const char *name = "webdavstream";

    ResourceProtocol() = default;
    /// The core has ended by then. Takes back what loaders still work on.
    ~ResourceProtocol() override;
    Q_DISABLE_COPY_MOVE(ResourceProtocol)

    /// Makes the core read through this protocol, which outlives it.
    void registerWith(MpvHandle &core);

    /// Makes one resource readable, in place of the one before.
    /// @param loader lives while @p lifetime does; when it is gone the resource fails
    /// @return the address for libmpv; it ends as the resource's own does, which helps to tell formats apart
    QByteArray publish(const QUrl &url, ResourceLoader *loader, std::weak_ptr<const void> lifetime);
    /// Makes nothing readable any more. What libmpv has open stays so.
    void withdraw();
    /// Why the published resource could not be read, as its loader tells it.
    std::optional<LoadingError> failure() const;
    /// The published resource, shared; empty until its loader has given all of it.
    QByteArray completeData() const;

private:
    using Request = std::shared_ptr<ResourceLoadingRequest>;
    struct Resource
    {
        quint64 number = 0;
        QUrl url;
        ResourceLoader *loader = nullptr;
        std::weak_ptr<const void> lifetime;
        /// Of the last time that libmpv opened it.
        Request request;
    };
    struct Waiting
    {
        /// Whoever still needs it holds it: libmpv's reader and the loader.
        std::weak_ptr<ResourceLoadingRequest> request;
        ResourceLoader *loader;
        std::weak_ptr<const void> lifetime;
    };
    class Reader;

    // libmpv's threads.
    static int open(void *protocol, char *address, mpv_stream_cb_info *info);
    Request beginRequest(const QByteArray &address);
    void cancelRequest(const Request &request);

    void ask(const Request &request, ResourceLoader *loader, const std::weak_ptr<const void> &lifetime);
    void takeBack(const Request &request);

    mutable std::mutex m_mutex;
    Resource m_published;
    quint64 m_lastNumber = 0;
    /// What loaders have been asked for and may not have finished. Main thread.
    QList<Waiting> m_waiting;
};

} // namespace cadorel
