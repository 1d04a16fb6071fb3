// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace cadorel {

/// What a credential store answers. The numbers are those of the log lines.
enum class SecretStatus : int {
    success = 0,
    ioError = -36,                  ///< the file of the store, or the store itself, fails
    userCancelled = -128,           ///< the listener dismissed the prompt
    notAvailable = -25291,          ///< no store answers
    duplicateItem = -25299,         ///< add() found such an item
    itemNotFound = -25300,          ///< there is no such item
    interactionNotAllowed = -25308, ///< the store stays locked
    timedOut = -60008,              ///< the store took too long
};

/// Keeps one secret for each pair of service and account. Every call may wait, for a prompt as long as the
/// listener takes: never call it on the main thread while the window is open. Any thread; calls are taken one
/// after the other.
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    /// A new item. An item that is there already stays as it is (`duplicateItem`).
    virtual SecretStatus add(const QString &service, const QString &account, const QByteArray &secret) = 0;
    /// The secret of an item.
    virtual std::expected<QByteArray, SecretStatus> copy(const QString &service, const QString &account) = 0;
    /// Another secret for an item that is there.
    virtual SecretStatus update(const QString &service, const QString &account, const QByteArray &secret) = 0;
    virtual SecretStatus remove(const QString &service, const QString &account) = 0;

    /// Ends the calls under way and refuses all later ones, with `notAvailable`: the program is about to end
    /// and waits for no prompt.
    virtual void close() = 0;
};

} // namespace cadorel
