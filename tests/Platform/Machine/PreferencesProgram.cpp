// SPDX-License-Identifier: GPL-3.0-or-later
// Writes preferences to the file of its argument, says so, and writes on until it is killed.
#include "Platform/Sql/SqlitePreferences.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    cadorel::SqlitePreferences preferences(QCoreApplication::arguments().value(1));
    preferences.setString(u"state"_s, u"written"_s);
    std::puts("written");
    std::fflush(stdout);
    for (qint64 count = 0;; ++count) {
        preferences.setInt(u"count"_s, count);
        preferences.setData(u"large"_s, QByteArray(2 * cadorel::SqlitePreferences::largeBytes,
                                                   static_cast<char>('a' + count % 26)));
    }
}
