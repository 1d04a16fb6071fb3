// SPDX-License-Identifier: GPL-3.0-or-later
// Reads any text as lyrics: UTF-16 where the first byte is odd, so that broken pairs come by, else UTF-8. An
// input that takes over a second is a defect:
//   build/fuzz/fuzz_lyrics -max_len=100000 -timeout=1
#include "Models/LyricLine.h"

#include <QSet>

#include <algorithm>
#include <cstdlib>

using namespace cadorel;

namespace {

QString textOf(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (bytes.isEmpty() || bytes.front() % 2 == 0)
        return QString::fromUtf8(bytes.mid(1));
    QString text((bytes.size() - 1) / qsizetype(sizeof(QChar)), Qt::Uninitialized);
    std::copy_n(bytes.constData() + 1, text.size() * qsizetype(sizeof(QChar)),
                reinterpret_cast<char *>(text.data()));
    return text;
}

void check(const QList<LyricLine> &lines)
{
    constexpr int lastTimeMs = (99 * 60 + 99) * 1000 + 999;
    if (!std::ranges::is_sorted(lines, {}, &LyricLine::timeMs))
        std::abort();
    QSet<QUuid> ids;
    for (const LyricLine &line : lines) {
        ids.insert(line.id);
        if (line.timeMs < 0 || (!line.isPlainText && line.timeMs > lastTimeMs))
            std::abort();
        if (line.isPlainText != lines.constFirst().isPlainText)
            std::abort();
        if (line.text.isEmpty() || line.text.trimmed() != line.text || !line.text.isValidUtf16())
            std::abort();
    }
    if (ids.size() != lines.size())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr qsizetype shortEnoughToCompare = 2000;
    const QString text = textOf(data, size);
    check(LyricLine::parse(text));
    check(LyricLine::parsePlainText(text));
    const bool isLrc = LyricLine::isLrcFormat(text);
    // The expression alone takes its time on a long text, and says no to a broken one.
    if (text.size() <= shortEnoughToCompare && text.isValidUtf16() &&
        LyricLine::timeRegex().match(text).hasMatch() != isLrc)
        std::abort();
    return 0;
}
