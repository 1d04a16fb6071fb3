// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

namespace cadorel {

class ResourceLoadingRequest;

/// Why a loader could not give what was asked for.
struct LoadingError
{
    QString domain;
    int code = 0;
    /// Without a credential.
    QString description;
};

/// Gives a stream player the bytes of addresses that the player cannot read itself. Main thread.
class ResourceLoader
{
public:
    ResourceLoader() = default;
    virtual ~ResourceLoader() = default;
    Q_DISABLE_COPY_MOVE(ResourceLoader)

    /// Takes a request, to be answered and finished at any later time.
    /// @return false when it will not be: the player then fails the item, with the request's error if it was
    /// finished with one
    virtual bool shouldWaitForLoadingOfRequestedResource(std::shared_ptr<ResourceLoadingRequest> request) = 0;
    /// The player wants no answer to the request any more.
    virtual void didCancel(std::shared_ptr<ResourceLoadingRequest> request) = 0;

    /// Expires with the loader, so that a player may outlive it: look before each call.
    std::weak_ptr<const void> lifetime() const { return m_lifetime; }

private:
    std::shared_ptr<const void> m_lifetime = std::make_shared<char>();
};

} // namespace cadorel
