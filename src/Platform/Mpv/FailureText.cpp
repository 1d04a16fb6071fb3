// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/FailureText.h"

#include <QFileInfo>

#include <mpv/client.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QString openingText(const QUrl &url)
{
    if (!url.isLocalFile())
        return u"无法加载网络音频，请检查网络或服务器"_s;
    const QFileInfo file(url.toLocalFile());
    if (!file.exists())
        return u"文件不存在"_s;
    if (!file.isReadable())
        return u"没有读取此文件的权限"_s;
    return u"无法读取此文件"_s;
}

} // namespace

QString failureText(int mpvError, const QUrl &url)
{
    switch (mpvError) {
    case MPV_ERROR_LOADING_FAILED:
        return openingText(url);
    case MPV_ERROR_UNKNOWN_FORMAT:
        return u"无法播放此文件：格式无法识别"_s;
    case MPV_ERROR_NOTHING_TO_PLAY:
        return u"无法播放此文件：其中没有可播放的声音"_s;
    case MPV_ERROR_AO_INIT_FAILED:
        return u"没有可用的音频设备"_s;
    case MPV_ERROR_UNSUPPORTED:
    case MPV_ERROR_NOT_IMPLEMENTED:
        return u"无法播放此文件：不支持这种格式"_s;
    default:
        return u"无法播放此文件"_s;
    }
}

QString missingEngineText()
{
    return u"播放引擎无法启动"_s;
}

QString unsupportedAddressText()
{
    return u"无法播放：不支持的地址"_s;
}

QString unknownDurationText()
{
    return u"时长未知"_s;
}

QString abandonedItemText()
{
    return u"播放项目已被替换"_s;
}

} // namespace cadorel
