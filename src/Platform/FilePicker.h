// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace cadorel {

/// The desktop's own dialog for choosing files and folders. Main thread.
class FilePicker
{
public:
    /// What may be chosen: any number of files, one folder, one picture.
    enum class Kind { files, folder, picture };

    struct Request
    {
        Kind kind = Kind::files;
        QString title;
        /// Endings of the files that may be chosen, lower case, without the dot.
        QStringList extensions;
        /// Name of the filter, for instance "音频文件".
        QString filterName;
        /// Identifier of the window that the dialog belongs to ("x11:<hex>", "wayland:<handle>"); may be
        /// empty.
        QString parentWindow;
    };

    virtual ~FilePicker() = default;

    /// The chosen addresses; empty when the listener cancelled; nothing when the desktop offers no dialog, so
    /// that the player shows its own.
    virtual QCoro::Task<std::optional<QList<QUrl>>> pick(Request request) = 0;
};

} // namespace cadorel
