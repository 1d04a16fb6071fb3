// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UnplayableFile.h"

#include <QFileInfo>

namespace cadorel {

using namespace Qt::StringLiterals;

QString unreadableFileText(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return u"文件不存在"_s;
    if (!file.isReadable())
        return u"没有读取此文件的权限"_s;
    return u"无法读取此文件"_s;
}

QString unrecognisedFileText()
{
    return u"无法播放此文件：格式无法识别"_s;
}

QString silentFileText()
{
    return u"无法播放此文件：其中没有可播放的声音"_s;
}

QString unsupportedFileText()
{
    return u"无法播放此文件：不支持这种格式"_s;
}

} // namespace cadorel
