// SPDX-License-Identifier: GPL-3.0-or-later
// Reads any bytes as a server's multistatus answer. Start it with the recorded answers as its corpus:
//   build/fuzz/fuzz_webdav_xml -max_len=20000 CORPUS tests/Fixtures/webdav
#include "Services/WebDAV/WebDAVXMLParser.h"
#include "Utils/Console.h"

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

/// Text from the answer stands in one of these alone, and cannot begin another line.
void checkLine(const QString &line)
{
    constexpr qsizetype longestLine = 300;
    if (line.size() > longestLine || line.contains(u'\n') || line.contains(u'\r'))
        std::abort();
}

void checkEntry(const WebDAVFile &file)
{
    if (file.name.isEmpty() && !file.path.isEmpty() && !file.path.startsWith(u'/'))
        std::abort();
    if (file.modifiedDate && !file.modifiedDate->isValid())
        std::abort();
    if (file.contentType && file.contentType->isEmpty())
        std::abort();
    if (file.isAudioFile() && file.fileExtension().isEmpty())
        std::abort();
    (void)file.formattedSize();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    setConsoleSink(checkLine);
    const QByteArray answer(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<WebDAVFile> files = WebDAVXMLParser(answer, QUrl(u"https://h.example/"_s)).parse();
    // An entry takes an element or two: more of them than that were made of nothing.
    constexpr qsizetype shortestResponse = 20;
    if (files.size() > answer.size() / shortestResponse)
        std::abort();
    for (const WebDAVFile &file : files)
        checkEntry(file);
    return 0;
}
