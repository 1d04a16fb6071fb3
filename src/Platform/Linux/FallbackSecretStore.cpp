// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FallbackSecretStore.h"

#include "Platform/Linux/LinuxLog.h"

#include <utility>

namespace cadorel {

FallbackSecretStore::FallbackSecretStore(std::unique_ptr<SecretStore> store,
                                         std::unique_ptr<SecretStore> file)
    : m_store(std::move(store))
    , m_file(std::move(file))
{
}

SecretStatus FallbackSecretStore::add(const QString &service, const QString &account,
                                      const QByteArray &secret)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isClosed)
        return SecretStatus::notAvailable;
    if (m_file->copy(service, account))
        return SecretStatus::duplicateItem;
    const SecretStatus status = m_store->add(service, account, secret);
    if (status == SecretStatus::success || status == SecretStatus::duplicateItem || m_isClosed)
        return status;
    // Whoever replaces an item puts the old one back when the new one is refused.
    const bool isBack = m_takenFromFile == Item{service, account, secret};
    return isBack || status == SecretStatus::notAvailable ? written(m_file->add(service, account, secret))
                                                          : status;
}

std::expected<QByteArray, SecretStatus> FallbackSecretStore::copy(const QString &service,
                                                                  const QString &account)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isClosed)
        return std::unexpected(SecretStatus::notAvailable);
    std::expected<QByteArray, SecretStatus> inFile = m_file->copy(service, account);
    if (inFile)
        return inFile;
    std::expected<QByteArray, SecretStatus> inStore = m_store->copy(service, account);
    const bool isNotInStore = !inStore && (inStore.error() == SecretStatus::itemNotFound ||
                                           inStore.error() == SecretStatus::notAvailable);
    return isNotInStore && !m_isClosed ? inFile : inStore;
}

SecretStatus FallbackSecretStore::update(const QString &service, const QString &account,
                                         const QByteArray &secret)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isClosed)
        return SecretStatus::notAvailable;
    SecretStatus status = m_store->update(service, account, secret);
    if (status == SecretStatus::itemNotFound && m_file->copy(service, account))
        status = m_store->add(service, account, secret);
    if (status == SecretStatus::success)
        leaveFile(service, account);
    else if (status == SecretStatus::notAvailable && !m_isClosed)
        return written(m_file->update(service, account, secret));
    return status;
}

SecretStatus FallbackSecretStore::remove(const QString &service, const QString &account)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isClosed)
        return SecretStatus::notAvailable;
    const SecretStatus inStore = m_store->remove(service, account);
    const bool isGone = inStore == SecretStatus::success || inStore == SecretStatus::itemNotFound ||
                        inStore == SecretStatus::notAvailable;
    if (!isGone || m_isClosed)
        return inStore;
    const std::expected<QByteArray, SecretStatus> secret = m_file->copy(service, account);
    const SecretStatus inFile = m_file->remove(service, account);
    m_takenFromFile.reset();
    if (secret && inFile == SecretStatus::success)
        m_takenFromFile = Item{.service = service, .account = account, .secret = *secret};
    return inStore == SecretStatus::success && inFile == SecretStatus::itemNotFound ? inStore : inFile;
}

void FallbackSecretStore::close()
{
    // First of all: what the store refuses from now on does not go to the file.
    m_isClosed = true;
    m_store->close();
    m_file->close();
}

SecretStatus FallbackSecretStore::written(SecretStatus status)
{
    if (status == SecretStatus::success && !std::exchange(m_isFileTold, true))
        qCWarning(linuxLog) << "there is no Secret Service on this desktop: passwords are kept in the file"
                               " secrets.json, readable by this user alone";
    return status;
}

void FallbackSecretStore::leaveFile(const QString &service, const QString &account)
{
    const SecretStatus status = m_file->remove(service, account);
    if (status != SecretStatus::success && status != SecretStatus::itemNotFound)
        qCWarning(linuxLog) << "an old password stays in the file, status" << std::to_underlying(status);
}

} // namespace cadorel
