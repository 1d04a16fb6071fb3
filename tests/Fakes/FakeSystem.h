// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/System.h"

#include <QList>

namespace cadorel {

/// A desktop that remembers what it was asked to open.
class FakeSystem : public System
{
public:
    QList<QUrl> opened;
    bool canOpen = true;

    bool open(const QUrl &url) override
    {
        opened.append(url);
        return canOpen;
    }
    QString deviceModel() const override { return QStringLiteral("test machine"); }
    QString systemVersion() const override { return QStringLiteral("test system 1"); }
    QString applicationVersion() const override { return QStringLiteral("1.0"); }
};

} // namespace cadorel
