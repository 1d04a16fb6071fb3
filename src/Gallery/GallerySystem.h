// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/System.h"

namespace cadorel {

/// A machine whose icon can be chosen and is forgotten with the gallery. Main thread.
class GallerySystem : public System
{
public:
    bool open(const QUrl &) override { return false; }
    QString deviceModel() const override { return {}; }
    QString systemVersion() const override { return {}; }
    QString applicationVersion() const override { return {}; }
    bool supportsAlternateIcons() const override { return true; }
    std::optional<QString> alternateIconName() const override { return m_iconName; }
    void setAlternateIconName(const std::optional<QString> &name, IconCompletion completion) override
    {
        m_iconName = name;
        completion(std::nullopt);
    }

private:
    std::optional<QString> m_iconName;
};

} // namespace cadorel
