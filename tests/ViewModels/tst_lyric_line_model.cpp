// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricLineModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using Role = LyricLineModel::Role;

QList<LyricLine> lines(int count)
{
    QList<LyricLine> made;
    for (int i = 0; i < count; ++i)
        made.append({.timeMs = 1000 * i, .text = u"line %1"_s.arg(i)});
    return made;
}

QVariant shown(const LyricLineModel &model, int row, Role role)
{
    return model.index(row).data(role);
}

LyricLineStyle styleOf(const LyricLineModel &model, int row)
{
    return {.pointSize = shown(model, row, Role::PointSizeRole).toDouble(),
            .isBold = shown(model, row, Role::IsBoldRole).toBool(),
            .opacity = shown(model, row, Role::LineOpacityRole).toDouble(),
            .blurRadius = shown(model, row, Role::BlurRadiusRole).toDouble(),
            .scale = shown(model, row, Role::LineScaleRole).toDouble()};
}

/// The rows that a change was told for.
QSet<int> toldRows(const QSignalSpy &spy)
{
    QSet<int> rows;
    for (const QList<QVariant> &change : spy) {
        for (int row = change.at(0).toModelIndex().row(); row <= change.at(1).toModelIndex().row(); ++row) {
            if (rows.contains(row))
                qFatal("a row is told twice");
            rows.insert(row);
        }
    }
    return rows;
}

} // namespace

class TestLyricLineModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowsShowTheLinesInTheirStyles()
    {
        LyricLineModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLook(18, true);
        model.setLines(lines(10), 3);
        QCOMPARE(model.count(), 10);
        QCOMPARE(shown(model, 7, Role::TextRole), u"line 7"_s);
        QCOMPARE(shown(model, 7, Role::TimeMsRole), 7000);
        for (int row = 0; row < 10; ++row) {
            QCOMPARE(shown(model, row, Role::IsActiveRole), row == 3);
            QCOMPARE(shown(model, row, Role::DistanceRole), std::min(std::abs(row - 3), 4));
            QCOMPARE(styleOf(model, row), LyricLineStyle::of(std::abs(row - 3), row == 3, 18, true));
        }
        QCOMPARE(model.activePointSize(), 24.0);
    }

    void rolesHaveTheNamesThatScreensAskFor()
    {
        const LyricLineModel model;
        QSet<QByteArray> names;
        for (const QByteArray &name : model.roleNames())
            names.insert(name);
        QCOMPARE(names, (QSet<QByteArray>{"text", "timeMs", "isActive", "distance", "pointSize", "isBold",
                                          "lineOpacity", "blurRadius", "lineScale"}));
    }

    void anotherCurrentLineTouchesOnlyRowsThatLookOtherThen()
    {
        LyricLineModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLook(18, true);
        model.setLines(lines(100), 50);
        QSignalSpy told(&model, &LyricLineModel::dataChanged);
        model.setCurrentLine(51);
        // From the one that was four away from the old line to the one that is so from the new one.
        QCOMPARE(toldRows(told), (QSet<int>{47, 48, 49, 50, 51, 52, 53, 54}));
        QCOMPARE(told.size(), 1);
        told.clear();
        model.setCurrentLine(51);
        QCOMPARE(told.size(), 0);
    }

    void aJumpTouchesTheRowsAboutBothLines()
    {
        LyricLineModel model;
        model.setLook(18, true);
        model.setLines(lines(5000), 2);
        QSignalSpy told(&model, &LyricLineModel::dataChanged);
        model.setCurrentLine(4998);
        QCOMPARE(toldRows(told), (QSet<int>{0, 1, 2, 3, 4, 5, 4995, 4996, 4997, 4998, 4999}));
        QCOMPARE(told.size(), 2);
    }

    void anyChangeOfTheLineIsToldForExactlyTheRowsThatDiffer()
    {
        QRandomGenerator random(11);
        LyricLineModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLook(18, true);
        for (int round = 0; round < 300; ++round) {
            const int count = 1 + random.bounded(24);
            model.setLines(lines(count), random.bounded(count));
            QList<LyricLineStyle> before;
            for (int row = 0; row < count; ++row)
                before.append(styleOf(model, row));
            QSignalSpy told(&model, &LyricLineModel::dataChanged);
            model.setCurrentLine(random.bounded(count));
            QSet<int> differing;
            for (int row = 0; row < count; ++row) {
                if (styleOf(model, row) != before.at(row))
                    differing.insert(row);
            }
            QCOMPARE(toldRows(told), differing);
        }
    }

    void anotherLookTouchesAllRows()
    {
        LyricLineModel model;
        const QAbstractItemModelTester tester(&model);
        model.setLook(18, true);
        model.setLines(lines(30), 0);
        QSignalSpy told(&model, &LyricLineModel::dataChanged);
        QSignalSpy look(&model, &LyricLineModel::lookChanged);
        model.setLook(22, true);
        QCOMPARE(toldRows(told).size(), 30);
        QCOMPARE(model.activePointSize(), 28.0);
        QCOMPARE(shown(model, 5, Role::PointSizeRole), 22.0);
        model.setLook(22, false);
        QCOMPARE(shown(model, 5, Role::BlurRadiusRole), 0.0);
        model.setLook(22, false);
        QCOMPARE(look.size(), 2);
    }

    void otherLinesReplaceTheOldOnes()
    {
        LyricLineModel model;
        const QAbstractItemModelTester tester(&model);
        QSignalSpy count(&model, &LyricLineModel::countChanged);
        model.setLines(lines(5), 4);
        model.setLines(lines(5), 0);
        QCOMPARE(count.size(), 1);
        QCOMPARE(model.currentLine(), 0);
        model.setLines({}, 0);
        QCOMPARE(count.size(), 2);
        QCOMPARE(model.count(), 0);
    }

    void aLineThatNoPageHoldsIsCut()
    {
        LyricLineModel model;
        QList<LyricLine> one = lines(1);
        one[0].text = u"词"_s.repeated(100'000);
        model.setLines(one, 0);
        QVERIFY(shown(model, 0, Role::TextRole).toString().size() <= 1000);
        QVERIFY(shown(model, 0, Role::TextRole).toString().startsWith(u"词词词"_s));
    }
};

QTEST_GUILESS_MAIN(TestLyricLineModel)
#include "tst_lyric_line_model.moc"
