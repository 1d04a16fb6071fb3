// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace cadorel {

/// A stored record lacks a required key or holds a value of the wrong type.
class DecodingError : public std::runtime_error
{
public:
    /// @param key the first key that is missing or mistyped
    explicit DecodingError(const QString &key)
        : std::runtime_error("missing or mistyped key: " + key.toStdString())
    {
    }
};

} // namespace cadorel
