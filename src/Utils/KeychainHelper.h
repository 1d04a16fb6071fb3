// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SecretStore.h"

#include <QString>

#include <expected>
#include <optional>

class QThreadPool;

namespace cadorel {

/// One password per key in the credential store of the machine. Failures are false, nothing, or a line in the
/// log without the password. Any thread; each call may wait for a prompt of the store, so that whoever is on
/// the main thread runs it on queue() and awaits it.
class KeychainHelper
{
public:
    KeychainHelper() = delete;

    /// Replaces an earlier password of the key. Nothing is lost when the new one cannot be stored.
    static bool save(const QString &password, const QString &key);
    static std::optional<QString> get(const QString &key);
    /// A key without a password counts as deleted.
    static bool remove(const QString &key);
    static bool update(const QString &password, const QString &key);
    static bool exists(const QString &key);
    /// As get(), telling a missing password (`itemNotFound`) from a store that does not answer.
    static std::expected<QString, SecretStatus> lookup(const QString &key);

    /// One thread, on which calls wait without holding up anything else.
    static QThreadPool &queue();

    /// The store of the process, which outlives every call; null while there is none. main() and tests set
    /// it.
    static void setStore(SecretStore *store);
};

} // namespace cadorel
