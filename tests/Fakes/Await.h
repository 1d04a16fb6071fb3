// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>
#include <type_traits>

namespace cadorel {

/// Longest time that a test waits for anything.
constexpr int patienceMs = 30'000;

/// The result of an operation; nothing when it does not end in time, which the caller asserts.
template <typename T>
auto await(QCoro::Task<T> task)
{
    using Result = std::conditional_t<std::is_void_v<T>, bool, T>;
    const auto result = std::make_shared<std::optional<Result>>();
    QEventLoop loop;
    const auto run = [](QCoro::Task<T> awaited, std::shared_ptr<std::optional<Result>> into,
                        QPointer<QEventLoop> ended) -> QCoro::Task<void> {
        if constexpr (std::is_void_v<T>) {
            co_await awaited;
            into->emplace(true);
        } else {
            into->emplace(co_await awaited);
        }
        if (ended)
            ended->quit();
    };
    const QCoro::Task<void> running = run(std::move(task), result, &loop);
    if (!result->has_value()) {
        QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return *result;
}

} // namespace cadorel
