// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Online/AnswerOrder.h"

#include <QTest>

using namespace cadorel;

class AnswerOrderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anAnswerEndsTheWaitOfWhatBeganBefore()
    {
        AnswerOrder order;
        order.begin();
        const AnswerOrder::Moment first = order.arrive();
        QVERIFY(order.endsWait(first));
        order.begin();
        QVERIFY(!order.endsWait(first));
        QVERIFY(order.endsWait(order.arrive()));
    }

    void answersAreShownInTheOrderOfTheirArrival()
    {
        AnswerOrder order;
        const AnswerOrder::Moment first = order.arrive();
        const AnswerOrder::Moment second = order.arrive();
        QVERIFY(order.show(second));
        QVERIFY(!order.show(first));
        QVERIFY(order.show(order.arrive()));
    }

    void whatBeginsIsLaterThanWhatCameBefore()
    {
        AnswerOrder order;
        const AnswerOrder::Moment early = order.arrive();
        const AnswerOrder::Moment begun = order.begin();
        QVERIFY(order.show(begun));
        QVERIFY(!order.show(early));
    }
};

QTEST_GUILESS_MAIN(AnswerOrderTest)
#include "tst_answer_order.moc"
