// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SecretStore.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

struct _GCancellable;

namespace cadorel {

class SecretServiceLink;
struct SecretServiceCall;

/// The desktop's Secret Service, through libsecret. Items have the schema "com.cadorel.password" with the
/// attributes "service" and "account", and new ones go to the default collection.
///
/// What is locked is unlocked, with a prompt of the service that may wait for the listener as long as it
/// takes; `userCancelled` when the listener dismisses it or the desktop cannot show it. `notAvailable` means
/// that there is no such service and none that the bus could start.
class LibsecretStore : public SecretStore
{
public:
    /// How long a call waits for the service while no prompt is open. A keyring that the bus has to start for
    /// it answers within 0.2 s on a machine with seven times more work than processors; slow disks need more.
    static constexpr std::chrono::milliseconds answerLimit{10'000};

    /// @p busAddress is that of the session bus when it is empty.
    explicit LibsecretStore(std::chrono::milliseconds limit = answerLimit, const QByteArray &busAddress = {});
    /// No call is under way any more.
    ~LibsecretStore() override;
    Q_DISABLE_COPY_MOVE(LibsecretStore)

    SecretStatus add(const QString &service, const QString &account, const QByteArray &secret) override;
    std::expected<QByteArray, SecretStatus> copy(const QString &service, const QString &account) override;
    SecretStatus update(const QString &service, const QString &account, const QByteArray &secret) override;
    SecretStatus remove(const QString &service, const QString &account) override;
    void close() override;

private:
    /// Runs @p steps against the service, one call at a time.
    SecretStatus perform(const std::function<SecretStatus(SecretServiceCall &call)> &steps);

    const std::chrono::milliseconds m_limit;
    /// Of the one call that is under way.
    std::mutex m_orderMutex;
    const std::unique_ptr<SecretServiceLink> m_link;
    std::mutex m_stateMutex;
    _GCancellable *m_underWay = nullptr;
    bool m_isClosed = false;
};

} // namespace cadorel
