// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/System.h"

#include <QList>

#include <utility>

namespace cadorel {

/// A desktop that remembers what it was asked to open, and whose icons the test sets up.
class FakeSystem : public System
{
public:
    QList<QUrl> opened;
    bool canOpen = true;
    bool hasAlternateIcons = true;
    std::optional<QString> iconName;
    /// What setAlternateIconName() fails with; none lets it succeed.
    std::optional<QString> iconError;
    /// The icons asked for, in order.
    QList<std::optional<QString>> iconsAsked;
    /// Keeps completions back until answerIcons().
    bool isSlowWithIcons = false;

    bool open(const QUrl &url) override
    {
        opened.append(url);
        return canOpen;
    }
    QString deviceModel() const override { return QStringLiteral("test machine"); }
    QString systemVersion() const override { return QStringLiteral("test system 1"); }
    QString applicationVersion() const override { return QStringLiteral("1.0"); }
    bool supportsAlternateIcons() const override { return hasAlternateIcons; }
    std::optional<QString> alternateIconName() const override { return iconName; }
    void setAlternateIconName(const std::optional<QString> &name, IconCompletion completion) override
    {
        iconsAsked.append(name);
        m_waiting.append({name, std::move(completion)});
        if (!isSlowWithIcons)
            answerIcons();
    }

    /// Answers what waits, in the order of asking.
    void answerIcons()
    {
        for (const auto &[name, completion] : std::exchange(m_waiting, {})) {
            if (!iconError)
                iconName = name;
            completion(iconError);
        }
    }

private:
    QList<std::pair<std::optional<QString>, IconCompletion>> m_waiting;
};

} // namespace cadorel
