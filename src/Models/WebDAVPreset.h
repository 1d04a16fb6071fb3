// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace cadorel {

/// A ready-made kind of server that a listener starts from.
struct WebDAVPreset
{
    QUuid id = QUuid::createUuid();
    QString name;
    QString serverURL;
    std::optional<int> port;
    QString basePath;
    QString description;
    /// Symbol name.
    QString icon;

    static const QList<WebDAVPreset> &presets();
};

} // namespace cadorel
