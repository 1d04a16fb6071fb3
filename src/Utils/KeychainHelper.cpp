// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/KeychainHelper.h"

#include "Utils/Console.h"

#include <QLoggingCategory>
#include <QStringDecoder>
#include <QThreadPool>

#include <atomic>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

Q_LOGGING_CATEGORY(logUtils, "cadorel.utils", QtWarningMsg)

constexpr QLatin1StringView service{"com.cadorel"};

std::atomic<SecretStore *> processStore = nullptr;
/// A replacement takes several calls of the store; no other operation comes between them.
std::mutex operationMutex;

/// Nothing for a text that is not valid UTF-16.
std::optional<QByteArray> utf8(const QString &text)
{
    return text.isValidUtf16() ? std::optional(text.toUtf8()) : std::nullopt;
}

/// The new item in place of an earlier one, which is put back when there can be no new one.
SecretStatus replace(SecretStore &store, const QString &key, const QByteArray &secret)
{
    const std::expected<QByteArray, SecretStatus> earlier = store.copy(service, key);
    // What cannot be read could not be put back either.
    if (!earlier && earlier.error() != SecretStatus::itemNotFound)
        return earlier.error();
    const SecretStatus removal = store.remove(service, key);
    const SecretStatus status = store.add(service, key, secret);
    if (status != SecretStatus::success && earlier && removal == SecretStatus::success) {
        const SecretStatus restored = store.add(service, key, *earlier);
        if (restored != SecretStatus::success)
            qCWarning(logUtils).noquote() << "the earlier password of" << key << "cannot be put back, status"
                                          << std::to_underlying(restored);
    }
    return status;
}

void printFailure(const QString &what, const QString &key, SecretStatus status)
{
    print(u"✗ Keychain: %1 - %2, 错误码: %3"_s.arg(what, key, QString::number(std::to_underlying(status))));
}

bool saveSecret(const QByteArray &secret, const QString &key)
{
    SecretStore *store = processStore;
    const SecretStatus status = store ? replace(*store, key, secret) : SecretStatus::notAvailable;
    if (status == SecretStatus::success)
        print(u"✓ Keychain: 保存成功 - "_s + key);
    else
        printFailure(u"保存失败"_s, key, status);
    return status == SecretStatus::success;
}

} // namespace

bool KeychainHelper::save(const QString &password, const QString &key)
{
    const std::optional<QByteArray> secret = utf8(password);
    const std::scoped_lock lock(operationMutex);
    return secret && saveSecret(*secret, key);
}

std::optional<QString> KeychainHelper::get(const QString &key)
{
    const std::expected<QString, SecretStatus> password = lookup(key);
    return password ? std::optional(*password) : std::nullopt;
}

bool KeychainHelper::remove(const QString &key)
{
    const std::scoped_lock lock(operationMutex);
    SecretStore *store = processStore;
    const SecretStatus status = store ? store->remove(service, key) : SecretStatus::notAvailable;
    return status == SecretStatus::success || status == SecretStatus::itemNotFound;
}

bool KeychainHelper::update(const QString &password, const QString &key)
{
    const std::optional<QByteArray> secret = utf8(password);
    if (!secret)
        return false;
    const std::scoped_lock lock(operationMutex);
    SecretStore *store = processStore;
    const SecretStatus status = store ? store->update(service, key, *secret) : SecretStatus::notAvailable;
    if (status == SecretStatus::itemNotFound)
        return saveSecret(*secret, key);
    if (status != SecretStatus::success)
        printFailure(u"更新失败"_s, key, status);
    return status == SecretStatus::success;
}

bool KeychainHelper::exists(const QString &key)
{
    return get(key).has_value();
}

std::expected<QString, SecretStatus> KeychainHelper::lookup(const QString &key)
{
    const std::scoped_lock lock(operationMutex);
    SecretStore *store = processStore;
    if (!store)
        return std::unexpected(SecretStatus::notAvailable);
    const std::expected<QByteArray, SecretStatus> secret = store->copy(service, key);
    if (!secret)
        return std::unexpected(secret.error());
    // Whole texts: half a character at the end is an error, and a byte order mark is a character like others.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString password = decoder.decode(*secret);
    if (decoder.hasError())
        return std::unexpected(SecretStatus::itemNotFound);
    return password;
}

QThreadPool &KeychainHelper::queue()
{
    static QThreadPool pool;
    [[maybe_unused]] static const bool isLimited = [] {
        pool.setMaxThreadCount(1);
        return true;
    }();
    return pool;
}

void KeychainHelper::setStore(SecretStore *store)
{
    processStore = store;
}

} // namespace cadorel
