// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"

#include <coroutine>
#include <expected>
#include <utility>

namespace cadorel {

/// The answer of one request on its way to the coroutine that waits for it. A future would need the event
/// loop for the last step, and a client that is being destroyed must end its requests before it is gone. One
/// thread.
class HttpAnswer
{
public:
    using Result = std::expected<HttpResponse, HttpError>;

    /// Hands the answer over and lets the coroutine go on before it returns. Once.
    void deliver(Result result)
    {
        m_result = std::move(result);
        m_isThere = true;
        if (const std::coroutine_handle<> waiting = std::exchange(m_waiting, {}))
            waiting.resume();
    }

    bool await_ready() const noexcept { return m_isThere; }
    void await_suspend(std::coroutine_handle<> waiting) noexcept { m_waiting = waiting; }
    Result await_resume() { return std::move(m_result); }

private:
    Result m_result;
    bool m_isThere = false;
    std::coroutine_handle<> m_waiting;
};

} // namespace cadorel
