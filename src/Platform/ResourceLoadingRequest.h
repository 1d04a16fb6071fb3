// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ResourceLoader.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <condition_variable>
#include <limits>
#include <mutex>
#include <optional>

namespace cadorel {

/// What a loader tells of a resource, before it first responds with data.
struct ResourceContentInformation
{
    bool isByteRangeAccessSupported = false;
    /// Bytes of the whole resource.
    qint64 contentLength = 0;
    /// Type identifier, such as "public.mp3".
    QString contentType;
};

/// What a stream player asks of a ResourceLoader, and what the loader has given so far. The two sides meet
/// here alone: the loader's runs on the main thread and never waits, the player's on any thread.
class ResourceLoadingRequest
{
public:
    using ContentInformation = ResourceContentInformation;
    struct Range
    {
        qint64 offset = 0;
        qint64 length = 0;
    };
    /// Longer than any resource: a range with this length goes to the end.
    static constexpr qint64 toTheEnd = std::numeric_limits<qint64>::max();

    /// The part of a request that asks for bytes.
    class DataRequest
    {
    public:
        qint64 requestedOffset() const { return m_range.offset; }
        qint64 requestedLength() const { return m_range.length; }
        /// Where the next response continues.
        qint64 currentOffset() const;
        /// Gives the next bytes. Those of the first response are shared, not copied.
        void respond(const QByteArray &bytes);

    private:
        friend class ResourceLoadingRequest;
        DataRequest(ResourceLoadingRequest &owner, Range range)
            : m_owner(owner)
            , m_range(range)
        {
        }
        ResourceLoadingRequest &m_owner;
        Range m_range;
    };

    /// @param url as in the asset, with whatever credentials it has; never for a log line
    /// @param wantsContentInformation whether the loader shall tell of the resource
    /// @param range the bytes that are asked for; none for content information alone
    ResourceLoadingRequest(QUrl url, bool wantsContentInformation, std::optional<Range> range);
    Q_DISABLE_COPY_MOVE(ResourceLoadingRequest)

    /// The address that is asked for.
    const QUrl &request() const { return m_url; }

    // The loader's side, main thread.

    /// To be filled in by the loader; null when nobody asks.
    ContentInformation *contentInformationRequest();
    /// Null when only the content information is asked for.
    DataRequest *dataRequest();
    /// Everything that was asked for has been given.
    void finishLoading();
    /// Nothing more will come. Only the first end of a request counts.
    void finishLoading(const LoadingError &error);

    // The player's side, any thread.

    /// Nobody waits for the answer any more: every read fails from now on, also one that waits at this
    /// moment.
    /// @return whether this call took an unfinished request back; never true twice
    bool cancel();
    bool isCancelled() const;
    /// Whether the loader has finished it, in either way.
    bool isFinished() const;
    /// The error that it was finished with.
    std::optional<LoadingError> error() const;
    /// Waits for bytes at @p offset of the resource, the request's end or cancel().
    /// @return how many were copied, at most @p size; 0 beyond the last one; -1 after a failure or cancel()
    qint64 read(qint64 offset, char *buffer, qint64 size);
    /// Waits until the loader has told it, the request's end or cancel(). Nothing when it never will.
    std::optional<ContentInformation> waitForContentInformation();
    /// The bytes given so far, shared.
    QByteArray data() const;

private:
    void end(std::optional<LoadingError> error);

    const QUrl m_url;
    std::optional<DataRequest> m_dataRequest;
    /// The loader's alone until it has responded or finished, then the player's to read.
    std::optional<ContentInformation> m_contentInformation;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QByteArray m_data;
    std::optional<LoadingError> m_error;
    bool m_informed = false;
    bool m_finished = false;
    bool m_cancelled = false;
};

} // namespace cadorel
