// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FileSecretStore.h"

#include "Platform/Linux/LinuxLog.h"
#include "Utils/Files.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

std::optional<QByteArray> secretIn(const QJsonObject &accounts, const QString &account)
{
    const QJsonValue entry = accounts.value(account);
    if (!entry.isString())
        return std::nullopt;
    auto decoded =
        QByteArray::fromBase64Encoding(entry.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(*std::move(decoded)) : std::nullopt;
}

QString entryOf(const QByteArray &secret)
{
    return QString::fromLatin1(secret.toBase64());
}

} // namespace

FileSecretStore::FileSecretStore(QString path)
    : m_path(std::move(path))
{
}

SecretStatus FileSecretStore::add(const QString &service, const QString &account, const QByteArray &secret)
{
    const std::scoped_lock lock(m_mutex);
    const std::expected<QJsonObject, SecretStatus> services = read();
    if (!services)
        return services.error();
    QJsonObject accounts = services->value(service).toObject();
    if (secretIn(accounts, account))
        return SecretStatus::duplicateItem;
    accounts.insert(account, entryOf(secret));
    return write(*services, service, accounts);
}

std::expected<QByteArray, SecretStatus> FileSecretStore::copy(const QString &service, const QString &account)
{
    const std::scoped_lock lock(m_mutex);
    const std::expected<QJsonObject, SecretStatus> services = read();
    if (!services)
        return std::unexpected(services.error());
    std::optional<QByteArray> secret = secretIn(services->value(service).toObject(), account);
    if (!secret)
        return std::unexpected(SecretStatus::itemNotFound);
    return *std::move(secret);
}

SecretStatus FileSecretStore::update(const QString &service, const QString &account, const QByteArray &secret)
{
    const std::scoped_lock lock(m_mutex);
    const std::expected<QJsonObject, SecretStatus> services = read();
    if (!services)
        return services.error();
    QJsonObject accounts = services->value(service).toObject();
    if (!secretIn(accounts, account))
        return SecretStatus::itemNotFound;
    accounts.insert(account, entryOf(secret));
    return write(*services, service, accounts);
}

SecretStatus FileSecretStore::remove(const QString &service, const QString &account)
{
    const std::scoped_lock lock(m_mutex);
    const std::expected<QJsonObject, SecretStatus> services = read();
    if (!services)
        return services.error();
    QJsonObject accounts = services->value(service).toObject();
    if (!secretIn(accounts, account))
        return SecretStatus::itemNotFound;
    accounts.remove(account);
    return write(*services, service, accounts);
}

void FileSecretStore::close()
{
    const std::scoped_lock lock(m_mutex);
    m_isClosed = true;
}

std::expected<QJsonObject, SecretStatus> FileSecretStore::read() const
{
    if (m_isClosed)
        return std::unexpected(SecretStatus::notAvailable);
    QFile file(m_path);
    if (!file.exists())
        return QJsonObject();
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(linuxLog).noquote() << "passwords:" << m_path << "cannot be read:" << file.errorString();
        return std::unexpected(SecretStatus::ioError);
    }
    // A copy from elsewhere may have come with wider rights.
    if (file.permissions() & others)
        file.setPermissions(ownerOnly);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) {
        qCWarning(linuxLog).noquote() << "passwords:" << m_path << "cannot be read:" << file.errorString();
        return std::unexpected(SecretStatus::ioError);
    }
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::expected<QJsonObject, SecretStatus>(document.object()) : setAside();
}

std::expected<QJsonObject, SecretStatus> FileSecretStore::setAside() const
{
    const QString target = freeDamagedName(m_path);
    if (!QFile::rename(m_path, target)) {
        qCWarning(linuxLog).noquote() << "passwords:" << m_path << "is damaged and cannot be set aside";
        return std::unexpected(SecretStatus::ioError);
    }
    qCWarning(linuxLog).noquote() << "passwords:" << m_path << "is damaged, set aside as"
                                  << QFileInfo(target).fileName();
    return QJsonObject();
}

SecretStatus FileSecretStore::write(QJsonObject services, const QString &service,
                                    const QJsonObject &accounts) const
{
    services.insert(service, accounts);
    const auto written = writePrivateFileAtomically(m_path, QJsonDocument(services).toJson());
    if (written)
        return SecretStatus::success;
    qCWarning(linuxLog).noquote() << "passwords:" << m_path << "cannot be written:" << written.error();
    return SecretStatus::ioError;
}

} // namespace cadorel
