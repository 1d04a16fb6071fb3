// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Console.h"

#include <QProcess>
#include <QTest>

#include <limits>
#include <thread>
#include <vector>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int threadCount = 4;
constexpr int linesPerThread = 500;

QString lineOf(int thread, int number)
{
    return u"线%1 第%2行 🎵 "_s.arg(thread).arg(number) + u"x"_s.repeated(200);
}

/// What the program prints when it is started as its own subject.
void printEverything()
{
    print(u"📂 一行"_s);
    print(QStringList{u"二"_s, u""_s, u"三"_s});
    std::vector<std::jthread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < linesPerThread; ++i)
                print(lineOf(thread, i));
        });
    }
}

} // namespace

class TestConsole : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setConsoleSink({}); }

    void linesOnStandardOutputAreWholeAndNothingIsAdded()
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"CADOREL_PRINT_LINES"_s, u"1"_s);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        QVERIFY(process.waitForFinished());
        QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QCOMPARE(lines.mid(0, 4), (QList<QByteArray>{"📂 一行", "二", "", "三"}));
        QSet<QByteArray> rest(lines.cbegin() + 4, lines.cend());
        QCOMPARE(lines.size(), 4 + threadCount * linesPerThread);
        for (int thread = 0; thread < threadCount; ++thread) {
            for (int i = 0; i < linesPerThread; ++i)
                QVERIFY(rest.remove(lineOf(thread, i).toUtf8()));
        }
        QVERIFY(rest.isEmpty());
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }

    void sinkReceivesTheLinesInsteadOneByOne()
    {
        QStringList received;
        setConsoleSink([&received](const QString &line) { received.append(line); });
        print(u"一"_s);
        print(QStringList{u"二"_s, u"三"_s});
        print(QStringList());
        setConsoleSink({});
        QCOMPARE(received, (QStringList{u"一"_s, u"二"_s, u"三"_s}));
    }

    void number_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 3.0 << u"3.0"_s;
        QTest::newRow("fraction") << 2.5 << u"2.5"_s;
        QTest::newRow("zero") << 0.0 << u"0.0"_s;
        QTest::newRow("negative") << -7.0 << u"-7.0"_s;
        QTest::newRow("shortest that reads back the same") << 0.1 << u"0.1"_s;
        QTest::newRow("all digits") << 269.4134920634921 << u"269.4134920634921"_s;
        QTest::newRow("a hundred thousand") << 100000.0 << u"100000.0"_s;
        QTest::newRow("a million") << 1000000.0 << u"1000000.0"_s;
        QTest::newRow("small") << 0.0001 << u"0.0001"_s;
        QTest::newRow("last plain one") << 9007199254740992.0 << u"9007199254740992.0"_s;
        QTest::newRow("large") << 1e16 << u"1e+16"_s;
        QTest::newRow("tiny") << 0.00001 << u"1e-05"_s;
        QTest::newRow("digits and exponent") << 1.5e300 << u"1.5e+300"_s;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << u"nan"_s;
        QTest::newRow("endless") << std::numeric_limits<double>::infinity() << u"inf"_s;
        QTest::newRow("endless below") << -std::numeric_limits<double>::infinity() << u"-inf"_s;
    }
    void number()
    {
        QFETCH(const double, value);
        QFETCH(const QString, text);
        QCOMPARE(consoleNumber(value), text);
    }

    void floatHasNoMoreDigitsThanItNeeds()
    {
        QCOMPARE(consoleNumber(0.1F), u"0.1"_s);
        QCOMPARE(consoleNumber(-3.3F), u"-3.3"_s);
        QCOMPARE(consoleNumber(6.0F), u"6.0"_s);
        QCOMPARE(consoleNumber(-0.0F), u"-0.0"_s);
        QCOMPARE(consoleNumber(0.0001F), u"0.0001"_s);
        QCOMPARE(consoleNumber(16777216.0F), u"16777216.0"_s);
        QCOMPARE(consoleNumber(16777218.0F), u"1.6777218e+07"_s);
        QCOMPARE(consoleNumber(std::numeric_limits<float>::quiet_NaN()), u"nan"_s);
        QCOMPARE(consoleNumber(-std::numeric_limits<float>::infinity()), u"-inf"_s);
    }
};

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet("CADOREL_PRINT_LINES")) {
        printEverything();
        return 0;
    }
    QCoreApplication application(argc, argv);
    TestConsole test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_console.moc"
