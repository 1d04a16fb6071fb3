// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SecretStore.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace cadorel {

/// The desktop's store of secrets, and a file for as long as there is none (the store answers
/// `notAvailable`). Which of them serves is decided anew for each call, since desktops come and go:
///
/// - A secret is written to the file only while there is no store. A store that is there but locked, slow or
///   dismissed by the listener is not replaced: the call fails and nothing changes.
/// - A secret that reaches the store leaves the file. So what lies in the file is never older than what the
///   store has, the file is read first, and two different secrets never compete.
/// - An item is removed from both. One of a store that is away stays in it.
/// - A secret that was taken out of the file can go back there when the store refuses it.
///
/// The first secret that goes to the file is told in the log, once.
class FallbackSecretStore : public SecretStore
{
public:
    FallbackSecretStore(std::unique_ptr<SecretStore> store, std::unique_ptr<SecretStore> file);

    SecretStatus add(const QString &service, const QString &account, const QByteArray &secret) override;
    std::expected<QByteArray, SecretStatus> copy(const QString &service, const QString &account) override;
    SecretStatus update(const QString &service, const QString &account, const QByteArray &secret) override;
    SecretStatus remove(const QString &service, const QString &account) override;
    void close() override;

private:
    struct Item
    {
        QString service;
        QString account;
        QByteArray secret;
        bool operator==(const Item &) const = default;
    };

    /// Tells of the file when something was written to it.
    SecretStatus written(SecretStatus status);
    /// The store has the secret now.
    void leaveFile(const QString &service, const QString &account);

    const std::unique_ptr<SecretStore> m_store;
    const std::unique_ptr<SecretStore> m_file;
    /// A call looks into both; no other comes between.
    std::mutex m_mutex;
    std::atomic<bool> m_isClosed = false;
    /// What the last call removed from the file.
    std::optional<Item> m_takenFromFile;
    bool m_isFileTold = false;
};

} // namespace cadorel
