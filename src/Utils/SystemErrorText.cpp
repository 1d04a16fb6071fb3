// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/SystemErrorText.h"

#include <cerrno>
#include <cstring>

namespace cadorel {

using namespace Qt::StringLiterals;

QString systemErrorText(int code)
{
    switch (code) {
    case ENOSPC:
    case EDQUOT:
        return u"磁盘空间不足"_s;
    case EACCES:
    case EPERM:
        return u"没有权限"_s;
    case ENOENT:
        return u"文件不存在"_s;
    case ENAMETOOLONG:
        return u"文件名过长"_s;
    case EROFS:
        return u"磁盘是只读的"_s;
    case EEXIST:
        return u"文件已存在"_s;
    case EIO:
        return u"磁盘读写错误"_s;
    case EISDIR:
        return u"这是一个文件夹"_s;
    case ELOOP:
        return u"路径是符号链接"_s;
    case EFBIG:
        return u"文件过大"_s;
    case EMFILE:
    case ENFILE:
        return u"打开的文件过多"_s;
    default:
        return QString::fromLocal8Bit(std::strerror(code)); // NOLINT(concurrency-mt-unsafe): glibc's is safe
    }
}

} // namespace cadorel
