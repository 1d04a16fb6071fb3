// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SecretStore.h"

#include <QHash>
#include <QList>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace cadorel {

/// Secrets in memory. A test scripts failures, holds calls back and sees what was asked. Any thread.
class FakeSecretStore : public SecretStore
{
public:
    enum class Operation { add, copy, update, remove };
    struct Call
    {
        Operation operation;
        QString service;
        QString account;
        bool operator==(const Call &) const = default;
    };

    /// The next call of @p operation that has no answer yet ends with @p status and changes nothing;
    /// `success` lets one through.
    void answer(Operation operation, SecretStatus status)
    {
        const std::scoped_lock lock(m_mutex);
        m_answers[operation].append(status);
    }
    /// Every call ends with @p status and changes nothing, but those that have an answer; `success` ends
    /// that.
    void refuseAll(SecretStatus status)
    {
        const std::scoped_lock lock(m_mutex);
        m_refusal = status;
    }
    /// From now on calls wait until release() or close().
    void hold()
    {
        const std::scoped_lock lock(m_mutex);
        m_isHolding = true;
    }
    void release()
    {
        const std::scoped_lock lock(m_mutex);
        m_isHolding = false;
        m_changed.notify_all();
    }

    /// Every call so far, those that wait included.
    QList<Call> calls() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_calls;
    }
    qsizetype callCount(Operation operation) const
    {
        const QList<Call> all = calls();
        return std::count_if(all.cbegin(), all.cend(),
                             [operation](const Call &call) { return call.operation == operation; });
    }
    /// Calls that wait for release().
    int heldCalls() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_heldCalls;
    }
    bool isClosed() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_isClosed;
    }

    /// What is stored, without a call.
    qsizetype itemCount() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_items.size();
    }
    QByteArray secret(const QString &account, const QString &service = QStringLiteral("com.cadorel")) const
    {
        const std::scoped_lock lock(m_mutex);
        return m_items.value({service, account});
    }
    void put(const QString &account, const QByteArray &secret,
             const QString &service = QStringLiteral("com.cadorel"))
    {
        const std::scoped_lock lock(m_mutex);
        m_items.insert({service, account}, secret);
    }

    SecretStatus add(const QString &service, const QString &account, const QByteArray &secret) override
    {
        std::unique_lock lock(m_mutex);
        if (const SecretStatus status = begin(lock, {Operation::add, service, account});
            status != SecretStatus::success)
            return status;
        if (m_items.contains({service, account}))
            return SecretStatus::duplicateItem;
        m_items.insert({service, account}, secret);
        return SecretStatus::success;
    }
    std::expected<QByteArray, SecretStatus> copy(const QString &service, const QString &account) override
    {
        std::unique_lock lock(m_mutex);
        if (const SecretStatus status = begin(lock, {Operation::copy, service, account});
            status != SecretStatus::success)
            return std::unexpected(status);
        const auto item = m_items.constFind({service, account});
        if (item == m_items.cend())
            return std::unexpected(SecretStatus::itemNotFound);
        return *item;
    }
    SecretStatus update(const QString &service, const QString &account, const QByteArray &secret) override
    {
        std::unique_lock lock(m_mutex);
        if (const SecretStatus status = begin(lock, {Operation::update, service, account});
            status != SecretStatus::success)
            return status;
        const auto item = m_items.find({service, account});
        if (item == m_items.end())
            return SecretStatus::itemNotFound;
        *item = secret;
        return SecretStatus::success;
    }
    SecretStatus remove(const QString &service, const QString &account) override
    {
        std::unique_lock lock(m_mutex);
        if (const SecretStatus status = begin(lock, {Operation::remove, service, account});
            status != SecretStatus::success)
            return status;
        return m_items.remove({service, account}) ? SecretStatus::success : SecretStatus::itemNotFound;
    }
    void close() override
    {
        const std::scoped_lock lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }

private:
    SecretStatus begin(std::unique_lock<std::mutex> &lock, const Call &call)
    {
        m_calls.append(call);
        ++m_heldCalls;
        m_changed.wait(lock, [this] { return !m_isHolding || m_isClosed; });
        --m_heldCalls;
        if (m_isClosed)
            return SecretStatus::notAvailable;
        QList<SecretStatus> &answers = m_answers[call.operation];
        return answers.isEmpty() ? m_refusal : answers.takeFirst();
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QHash<std::pair<QString, QString>, QByteArray> m_items;
    QHash<Operation, QList<SecretStatus>> m_answers;
    SecretStatus m_refusal = SecretStatus::success;
    QList<Call> m_calls;
    int m_heldCalls = 0;
    bool m_isHolding = false;
    bool m_isClosed = false;
};

} // namespace cadorel
