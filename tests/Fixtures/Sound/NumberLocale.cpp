// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/NumberLocale.h"

#include "Fixtures/Sound/RunProgram.h"

#include <QFile>

#include <clocale>

namespace cadorel {

using namespace Qt::StringLiterals;

NumberLocale::NumberLocale()
{
    const QString name = u"de_DE.UTF-8"_s;
    const QString made = m_directory.filePath(name);
    if (!runProgram(u"localedef"_s, {u"-i"_s, u"de_DE"_s, u"-f"_s, u"UTF-8"_s, made}))
        return;
    qputenv("LOCPATH", QFile::encodeName(m_directory.path()));
    m_active = std::setlocale(LC_NUMERIC, qPrintable(name)) != nullptr;
}

NumberLocale::~NumberLocale()
{
    std::setlocale(LC_NUMERIC, "C");
    qunsetenv("LOCPATH");
}

} // namespace cadorel
