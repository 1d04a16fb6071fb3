// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTest>
QTEST_APPLESS_MAIN(QObject)
