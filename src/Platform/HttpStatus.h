// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// The request was served: a status of 200 to 299 (RFC 9110, section 15.3). Any thread.
constexpr bool isSuccess(int status)
{
    constexpr int first = 200;
    constexpr int firstAfter = 300;
    return status >= first && status < firstAfter;
}

} // namespace cadorel
