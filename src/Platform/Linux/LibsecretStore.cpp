// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LibsecretStore.h"

#include "Platform/Linux/AnswerWatch.h"
#include "Platform/Linux/GlibPointers.h"
#include "Platform/Linux/LinuxLog.h"
#include "Platform/Linux/PromptingService.h"
#include "Platform/Linux/SecretServiceLink.h"

#include <QString>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace cadorel {

/// What the steps of one call share.
struct SecretServiceCall
{
    SecretService *service = nullptr;
    GCancellable *cancellable = nullptr;
    PromptScope prompts;
    GlibError error;
};

namespace {

constexpr auto serviceAttribute = "service";
constexpr auto accountAttribute = "account";

const SecretSchema &passwordSchema()
{
    static const SecretSchema schema = {"com.cadorel.password",
                                        SECRET_SCHEMA_NONE,
                                        {{serviceAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING},
                                         {accountAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING},
                                         {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                        0,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr};
    return schema;
}

using Attributes = GlibPtr<GHashTable>;
using Items = std::vector<GlibPtr<SecretItem>>;

Attributes attributesOf(const QString &service, const QString &account)
{
    return Attributes(secret_attributes_build(&passwordSchema(), serviceAttribute,
                                              service.toUtf8().constData(), accountAttribute,
                                              account.toUtf8().constData(), nullptr));
}

/// Wiped when it goes.
struct SecretValueDeleter
{
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};
using Value = std::unique_ptr<SecretValue, SecretValueDeleter>;

Value valueOf(const QByteArray &secret)
{
    return Value(secret_value_new(secret.constData(), secret.size(), "text/plain"));
}

SecretStatus statusOf(const SecretServiceCall &call)
{
    if (call.prompts.wasDismissed)
        return SecretStatus::userCancelled;
    const GError *error = call.error.get();
    if (!error)
        return SecretStatus::ioError;
    if (error->domain == SECRET_ERROR) {
        switch (error->code) {
        case SECRET_ERROR_IS_LOCKED:
            return SecretStatus::interactionNotAllowed;
        case SECRET_ERROR_NO_SUCH_OBJECT:
            return SecretStatus::itemNotFound;
        default:
            return SecretStatus::ioError;
        }
    }
    const bool isTimeout = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
                           (error->domain == G_DBUS_ERROR &&
                            (error->code == G_DBUS_ERROR_NO_REPLY || error->code == G_DBUS_ERROR_TIMEOUT ||
                             error->code == G_DBUS_ERROR_TIMED_OUT));
    return isTimeout ? SecretStatus::timedOut : SecretStatus::ioError;
}

/// Every item with these attributes, those that can be read first; the status is not `success` when that
/// cannot be told.
std::expected<Items, SecretStatus> find(SecretServiceCall &call, const Attributes &attributes)
{
    GList *found = secret_service_search_sync(call.service, &passwordSchema(), attributes.get(),
                                              SECRET_SEARCH_ALL, call.cancellable, call.error.out());
    Items items;
    for (const GList *entry = found; entry; entry = entry->next)
        items.emplace_back(static_cast<SecretItem *>(entry->data));
    g_list_free(found);
    if (call.error)
        return std::unexpected(statusOf(call));
    if (items.empty())
        return std::unexpected(SecretStatus::itemNotFound);
    return items;
}

SecretStatus unlock(SecretServiceCall &call, const Items &items)
{
    GList *locked = nullptr;
    for (const GlibPtr<SecretItem> &item : items) {
        if (secret_item_get_locked(item.get()))
            locked = g_list_prepend(locked, item.get());
    }
    if (!locked)
        return SecretStatus::success;
    const auto wanted = static_cast<int>(g_list_length(locked));
    const int unlocked =
        secret_service_unlock_sync(call.service, locked, call.cancellable, nullptr, call.error.out());
    g_list_free(locked);
    if (call.error)
        return statusOf(call);
    return unlocked == wanted ? SecretStatus::success : SecretStatus::interactionNotAllowed;
}

} // namespace

LibsecretStore::LibsecretStore(std::chrono::milliseconds limit, const QByteArray &busAddress)
    : m_limit(limit)
    , m_link(std::make_unique<SecretServiceLink>(busAddress))
{
}

LibsecretStore::~LibsecretStore() = default;

SecretStatus LibsecretStore::add(const QString &service, const QString &account, const QByteArray &secret)
{
    return perform([&](SecretServiceCall &call) {
        const Attributes attributes = attributesOf(service, account);
        const std::expected<Items, SecretStatus> items = find(call, attributes);
        if (items)
            return SecretStatus::duplicateItem;
        if (items.error() != SecretStatus::itemNotFound)
            return items.error();
        // What the listener reads in a program that manages the keyring.
        const QByteArray label = "Tarnova Music Player (" + account.toUtf8() + ')';
        const bool isStored = secret_service_store_sync(
            call.service, &passwordSchema(), attributes.get(), SECRET_COLLECTION_DEFAULT, label.constData(),
            valueOf(secret).get(), call.cancellable, call.error.out());
        if (isStored)
            return SecretStatus::success;
        const SecretStatus status = statusOf(call);
        return status == SecretStatus::itemNotFound ? SecretStatus::ioError : status;
    });
}

std::expected<QByteArray, SecretStatus> LibsecretStore::copy(const QString &service, const QString &account)
{
    QByteArray secret;
    const SecretStatus status = perform([&](SecretServiceCall &call) {
        std::expected<Items, SecretStatus> items = find(call, attributesOf(service, account));
        if (!items)
            return items.error();
        // Another one might be locked.
        items->resize(1);
        if (const SecretStatus unlocked = unlock(call, *items); unlocked != SecretStatus::success)
            return unlocked;
        SecretItem *item = items->front().get();
        if (!secret_item_load_secret_sync(item, call.cancellable, call.error.out()))
            return statusOf(call);
        const Value value(secret_item_get_secret(item));
        if (!value)
            return SecretStatus::ioError;
        gsize size = 0;
        const char *bytes = secret_value_get(value.get(), &size);
        secret = QByteArray(bytes, static_cast<qsizetype>(size));
        return SecretStatus::success;
    });
    if (status != SecretStatus::success)
        return std::unexpected(status);
    return secret;
}

SecretStatus LibsecretStore::update(const QString &service, const QString &account, const QByteArray &secret)
{
    return perform([&](SecretServiceCall &call) {
        const std::expected<Items, SecretStatus> items = find(call, attributesOf(service, account));
        if (!items)
            return items.error();
        if (const SecretStatus unlocked = unlock(call, *items); unlocked != SecretStatus::success)
            return unlocked;
        const Value value = valueOf(secret);
        for (const GlibPtr<SecretItem> &item : *items) {
            if (!secret_item_set_secret_sync(item.get(), value.get(), call.cancellable, call.error.out()))
                return statusOf(call);
        }
        return SecretStatus::success;
    });
}

SecretStatus LibsecretStore::remove(const QString &service, const QString &account)
{
    return perform([&](SecretServiceCall &call) {
        const std::expected<Items, SecretStatus> items = find(call, attributesOf(service, account));
        if (!items)
            return items.error();
        if (const SecretStatus unlocked = unlock(call, *items); unlocked != SecretStatus::success)
            return unlocked;
        for (const GlibPtr<SecretItem> &item : *items) {
            if (!secret_item_delete_sync(item.get(), call.cancellable, call.error.out()))
                return statusOf(call);
        }
        return SecretStatus::success;
    });
}

void LibsecretStore::close()
{
    GlibPtr<GCancellable> underWay;
    {
        const std::scoped_lock lock(m_stateMutex);
        m_isClosed = true;
        if (m_underWay)
            underWay.reset(static_cast<GCancellable *>(g_object_ref(m_underWay)));
    }
    if (underWay)
        g_cancellable_cancel(underWay.get());
}

SecretStatus LibsecretStore::perform(const std::function<SecretStatus(SecretServiceCall &)> &steps)
{
    const std::scoped_lock order(m_orderMutex);
    const GlibPtr<GCancellable> cancellable(g_cancellable_new());
    {
        const std::scoped_lock lock(m_stateMutex);
        if (m_isClosed)
            return SecretStatus::notAvailable;
        m_underWay = cancellable.get();
    }
    const ThreadContext context(m_link->context());
    AnswerWatch watch(m_limit, [&cancellable] { g_cancellable_cancel(cancellable.get()); });
    SecretServiceCall call;
    call.cancellable = cancellable.get();
    call.prompts = {.context = m_link->context(), .watch = &watch};

    SecretStatus status = SecretStatus::success;
    switch (m_link->open(call.cancellable, call.error)) {
    case SecretServiceLink::Outcome::nobody:
        status = SecretStatus::notAvailable;
        break;
    case SecretServiceLink::Outcome::failed:
        status = statusOf(call);
        break;
    case SecretServiceLink::Outcome::connected:
        call.service = m_link->service();
        setPromptScope(call.service, &call.prompts);
        status = steps(call);
        setPromptScope(call.service, nullptr);
        break;
    }

    const std::scoped_lock lock(m_stateMutex);
    m_underWay = nullptr;
    const bool isCut = g_cancellable_is_cancelled(cancellable.get());
    if (isCut)
        m_link->drop();
    if (isCut && status != SecretStatus::success)
        status = m_isClosed ? SecretStatus::notAvailable : SecretStatus::timedOut;
    if (status == SecretStatus::ioError || status == SecretStatus::timedOut)
        qCWarning(linuxLog).noquote() << "the Secret Service fails, status" << std::to_underlying(status)
                                      << (call.error ? call.error.get()->message : "");
    return status;
}

} // namespace cadorel
