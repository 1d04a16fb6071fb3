// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FilePicker.h"

namespace cadorel {

/// A dialog that answers at once with what a test has written down.
class FakeFilePicker : public FilePicker
{
public:
    QList<Request> requests;
    std::optional<QList<QUrl>> answer;

    QCoro::Task<std::optional<QList<QUrl>>> pick(Request request) override
    {
        requests.append(request);
        co_return answer;
    }
};

} // namespace cadorel
