// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SecretStore.h"

#include <QJsonObject>

#include <mutex>

namespace cadorel {

/// Secrets in a file that this user alone can read: an object per service, in it a text per account, the
/// secret in base64. They are not encrypted, which is why this store is only for machines without another.
///
/// The file is replaced whole and is on the disk when a call returns. One that is no JSON object is set aside
/// as "<file>.damaged-<yyyyMMdd-HHmmss>"; an entry that cannot be read counts as missing and stays as it is.
class FileSecretStore : public SecretStore
{
public:
    /// @p path is made at the first add(); its directory is there.
    explicit FileSecretStore(QString path);

    SecretStatus add(const QString &service, const QString &account, const QByteArray &secret) override;
    std::expected<QByteArray, SecretStatus> copy(const QString &service, const QString &account) override;
    SecretStatus update(const QString &service, const QString &account, const QByteArray &secret) override;
    SecretStatus remove(const QString &service, const QString &account) override;
    void close() override;

    const QString &path() const { return m_path; }

private:
    std::expected<QJsonObject, SecretStatus> read() const;
    std::expected<QJsonObject, SecretStatus> setAside() const;
    SecretStatus write(QJsonObject services, const QString &service, const QJsonObject &accounts) const;

    const QString m_path;
    std::mutex m_mutex;
    bool m_isClosed = false;
};

} // namespace cadorel
