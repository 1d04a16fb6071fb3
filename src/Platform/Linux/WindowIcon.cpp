// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/WindowIcon.h"

#include "Utils/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QWindow>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// No name is longer; a file that is something else is not read to its end.
constexpr qint64 longestName = 64;

std::optional<QString> readName(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto icon = appIconOf(QString::fromUtf8(file.read(longestName)).trimmed());
    return icon ? icon->iconName : std::nullopt;
}

std::expected<void, QString> keepName(const QString &path, const std::optional<QString> &name)
{
    if (name) {
        QDir().mkpath(QFileInfo(path).path());
        return writeFileAtomically(path, name->toUtf8() + '\n');
    }
    QFile file(path);
    if (file.exists() && !file.remove())
        return std::unexpected(file.errorString());
    return {};
}

} // namespace

WindowIcon::WindowIcon(QString file, ArtworkLookup artwork)
    : m_file(std::move(file))
    , m_artwork(std::move(artwork))
    , m_name(readName(m_file))
{
    show();
}

std::expected<void, QString> WindowIcon::setName(const std::optional<QString> &name)
{
    const auto icon = appIconOf(name);
    if (!icon || appIconPicture(icon->imageName, m_artwork).isEmpty())
        return std::unexpected(u"there is no icon \"%1\""_s.arg(name.value_or(QString())));
    if (const auto kept = keepName(m_file, name); !kept)
        return kept;
    m_name = name;
    show();
    return {};
}

void WindowIcon::show() const
{
    const auto choice = appIconOf(m_name);
    const QIcon icon(choice ? appIconPicture(choice->imageName, m_artwork) : QString());
    QGuiApplication::setWindowIcon(icon);
    // A window that is there already keeps the icon that it came up with unless it is told itself.
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows)
        window->setIcon(icon);
}

} // namespace cadorel
