// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <stdexcept>

namespace cadorel {

/// A record holds a value that has no JSON form.
class EncodingError : public std::runtime_error
{
public:
    /// @param key the key whose value cannot be written
    explicit EncodingError(const QString &key)
        : std::runtime_error("no JSON form for the value of key: " + key.toStdString())
    {
    }
};

} // namespace cadorel
