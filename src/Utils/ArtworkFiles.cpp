// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ArtworkFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto top = ":/artwork/"_L1;

/// Read from the program's own resources, so that a picture is known once its file is there.
QHash<QString, QString> listFiles()
{
    QHash<QString, QString> files;
    for (const QString &folder : {u"appicons"_s, u"cassettes"_s, u"kawaii"_s, u"stickers"_s}) {
        const QFileInfoList pictures = QDir(top + folder).entryInfoList({u"*.svg"_s}, QDir::Files);
        for (const QFileInfo &picture : pictures)
            files.insert(picture.completeBaseName(), picture.filePath());
    }
    return files;
}

const QHash<QString, QString> &files()
{
    static const QHash<QString, QString> table = listFiles();
    return table;
}

} // namespace

QString artworkPath(const QString &name)
{
    return files().value(name);
}

QStringList artworkNames()
{
    return files().keys();
}

} // namespace cadorel
