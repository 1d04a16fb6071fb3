// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ProcessHash.h"

#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestProcessHash : public QObject
{
    Q_OBJECT

private:
    static QString ofAnotherRun()
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"CADOREL_PRINT_HASH"_s, u"1"_s);
        environment.insert(u"QT_HASH_SEED"_s, u"0"_s);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForFinished())
            return {};
        return QString::fromLatin1(process.readAllStandardOutput());
    }

private Q_SLOTS:
    void sameTextSameHashWithinARun()
    {
        QCOMPARE(processHash(u"周杰伦"_s), processHash(u"周杰伦"_s));
        QVERIFY(processHash(u"a"_s) != processHash(u"b"_s));
    }

    void decimalInteger()
    {
        bool isNumber = false;
        processHash(u"a"_s).toLongLong(&isNumber);
        QVERIFY(isNumber);
    }

    void anotherRunHasAnotherHash()
    {
        const QString first = ofAnotherRun();
        QVERIFY(!first.isEmpty());
        QVERIFY(first != ofAnotherRun());
    }
};

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet("CADOREL_PRINT_HASH")) {
        std::fputs(qPrintable(processHash(u"a"_s)), stdout);
        return 0;
    }
    QCoreApplication application(argc, argv);
    TestProcessHash test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_process_hash.moc"
