// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/FailureText.h"

#include "Platform/UnplayableFile.h"

#include <mpv/client.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QString openingText(const QUrl &url)
{
    if (!url.isLocalFile())
        return u"无法加载网络音频，请检查网络或服务器"_s;
    return unreadableFileText(url.toLocalFile());
}

} // namespace

QString failureText(int mpvError, const QUrl &url)
{
    switch (mpvError) {
    case MPV_ERROR_LOADING_FAILED:
        return openingText(url);
    case MPV_ERROR_UNKNOWN_FORMAT:
        return unrecognisedFileText();
    case MPV_ERROR_NOTHING_TO_PLAY:
        return silentFileText();
    case MPV_ERROR_AO_INIT_FAILED:
        return u"没有可用的音频设备"_s;
    case MPV_ERROR_UNSUPPORTED:
    case MPV_ERROR_NOT_IMPLEMENTED:
        return unsupportedFileText();
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
