// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalFilePicker.h"
#include "FakePortal.h"

#include <QElapsedTimer>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Picked = std::optional<QList<QUrl>>;

class PortalFilePickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_portal.reset(); }

    void picksFiles();
    void picksAFolder();
    void cancelGivesAnEmptyList();
    void anotherEndingGivesNothing();
    void readsAddresses();
    void theOrderOfAnswerAndHandleDoesNotMatter_data();
    void theOrderOfAnswerAndHandleDoesNotMatter();
    void twoDialogsAtOnceKeepTheirAnswers();
    void withoutAPortalThereIsNothing();
    void withoutABusThereIsNothing();
    void withoutFileDialogsThereIsNothing();
    void anOldPortalHasNoFolders();
    void aHangingPortalIsNotWaitedFor();
    void aRefusalGivesNothing();
    void aPortalThatVanishesGivesNothing();
    void thePickerMayGoBeforeTheAnswer();

private:
    PortalFilePicker picker(std::chrono::milliseconds limit = std::chrono::seconds(20)) const
    {
        return PortalFilePicker([this] { return m_portal->client(); }, limit);
    }
    static FilePicker::Request files()
    {
        return {.kind = FilePicker::Kind::files,
                .title = u"选择音频"_s,
                .extensions = {u"mp3"_s, u"flac"_s},
                .filterName = u"音频文件"_s,
                .parentWindow = u"x11:1f"_s};
    }
    static FilePicker::Request folder()
    {
        return {.kind = FilePicker::Kind::folder,
                .title = u"选择文件夹"_s,
                .extensions = {},
                .filterName = {},
                .parentWindow = {}};
    }
    /// Lets a pick come to its end, 20 s at most.
    static Picked result(QCoro::Task<Picked> task);

    std::unique_ptr<FakePortal> m_portal;
};

void PortalFilePickerTest::init()
{
    m_portal = std::make_unique<FakePortal>();
    QVERIFY(m_portal->isBusRunning());
}

Picked PortalFilePickerTest::result(QCoro::Task<Picked> task)
{
    std::optional<Picked> picked;
    task.then([&picked](const Picked &answer) { picked = answer; });
    [[maybe_unused]] const bool isDone = QTest::qWaitFor([&picked] { return picked.has_value(); }, 20'000);
    // A pick that does not end shows as an address that nobody expects.
    return picked.value_or(QList<QUrl>{QUrl(u"test:timeout"_s)});
}

void PortalFilePickerTest::picksFiles()
{
    QVERIFY(m_portal->appear());
    m_portal->uris = {u"file:///music/a.mp3"_s, u"file:///music/b.flac"_s};
    const Picked picked = result(picker().pick(files()));
    QCOMPARE(picked,
             Picked({QUrl::fromLocalFile(u"/music/a.mp3"_s), QUrl::fromLocalFile(u"/music/b.flac"_s)}));
    QCOMPARE(m_portal->title, u"选择音频"_s);
    QCOMPARE(m_portal->parentWindow, u"x11:1f"_s);
    QCOMPARE(m_portal->options.value(u"multiple"_s).toBool(), true);
    QCOMPARE(m_portal->options.value(u"modal"_s).toBool(), true);
    QVERIFY(!m_portal->options.contains(u"directory"_s));
    QCOMPARE(m_portal->filters.size(), 1);
    QCOMPARE(m_portal->filters.first().name, u"音频文件"_s);
    QCOMPARE(m_portal->filters.first().patterns,
             (QStringList{u"0 *.[mM][pP]3"_s, u"0 *.[fF][lL][aA][cC]"_s}));
}

void PortalFilePickerTest::picksAFolder()
{
    QVERIFY(m_portal->appear());
    m_portal->uris = {u"file:///music"_s};
    QCOMPARE(result(picker().pick(folder())), Picked({QUrl::fromLocalFile(u"/music"_s)}));
    QCOMPARE(m_portal->options.value(u"directory"_s).toBool(), true);
    QVERIFY(!m_portal->options.contains(u"filters"_s));
}

void PortalFilePickerTest::cancelGivesAnEmptyList()
{
    QVERIFY(m_portal->appear());
    m_portal->response = 1;
    QCOMPARE(result(picker().pick(files())), Picked(QList<QUrl>()));
}

void PortalFilePickerTest::anotherEndingGivesNothing()
{
    QVERIFY(m_portal->appear());
    m_portal->response = 2;
    QCOMPARE(result(picker().pick(files())), std::nullopt);
}

void PortalFilePickerTest::readsAddresses()
{
    QVERIFY(m_portal->appear());
    m_portal->uris = {u"file:///%E9%9F%B3%E4%B9%90/a%20%23%3F%25.mp3"_s};
    const Picked picked = result(picker().pick(files()));
    QCOMPARE(picked.value_or(QList<QUrl>()).value(0).toLocalFile(), u"/音乐/a #?%.mp3"_s);
}

void PortalFilePickerTest::theOrderOfAnswerAndHandleDoesNotMatter_data()
{
    QTest::addColumn<bool>("answersEarly");
    QTest::addColumn<bool>("choosesPath");
    QTest::newRow("late") << false << false;
    QTest::newRow("early") << true << false;
    QTest::newRow("late, a path of the portal's own") << false << true;
    QTest::newRow("early, a path of the portal's own") << true << true;
}

void PortalFilePickerTest::theOrderOfAnswerAndHandleDoesNotMatter()
{
    QFETCH(bool, answersEarly);
    QFETCH(bool, choosesPath);
    QVERIFY(m_portal->appear());
    m_portal->answersEarly = answersEarly;
    m_portal->choosesPath = choosesPath;
    m_portal->uris = {u"file:///a.mp3"_s};
    QCOMPARE(result(picker().pick(files())), Picked({QUrl(u"file:///a.mp3"_s)}));
}

void PortalFilePickerTest::twoDialogsAtOnceKeepTheirAnswers()
{
    QVERIFY(m_portal->appear());
    PortalFilePicker chooser = picker();
    std::optional<Picked> first;
    m_portal->leavesOpen = true;
    chooser.pick(files()).then([&first](const Picked &answer) { first = answer; });
    QTRY_COMPARE(m_portal->opened, 1);
    m_portal->leavesOpen = false;
    m_portal->uris = {u"file:///b.mp3"_s};
    QCOMPARE(result(chooser.pick(files())), Picked({QUrl(u"file:///b.mp3"_s)}));
    QVERIFY(!first.has_value());
    m_portal->vanish();
    QTRY_VERIFY(first.has_value());
}

void PortalFilePickerTest::withoutAPortalThereIsNothing()
{
    QCOMPARE(result(picker().pick(files())), std::nullopt);
}

void PortalFilePickerTest::withoutABusThereIsNothing()
{
    PortalFilePicker chooser([] { return QDBusConnection(u"never connected"_s); });
    QCOMPARE(result(chooser.pick(files())), std::nullopt);
}

void PortalFilePickerTest::withoutFileDialogsThereIsNothing()
{
    QVERIFY(m_portal->appear());
    m_portal->version = 0;
    QCOMPARE(result(picker().pick(files())), std::nullopt);
    QCOMPARE(m_portal->opened, 0);
}

void PortalFilePickerTest::anOldPortalHasNoFolders()
{
    QVERIFY(m_portal->appear());
    m_portal->version = 2;
    QCOMPARE(result(picker().pick(folder())), std::nullopt);
    QCOMPARE(m_portal->opened, 0);
    m_portal->uris = {u"file:///a.mp3"_s};
    QCOMPARE(result(picker().pick(files())), Picked({QUrl(u"file:///a.mp3"_s)}));
}

void PortalFilePickerTest::aHangingPortalIsNotWaitedFor()
{
    QVERIFY(m_portal->appear());
    m_portal->isHanging = true;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(result(picker(std::chrono::milliseconds(200)).pick(files())), std::nullopt);
    QVERIFY(timer.elapsed() >= 190);
    QCOMPARE(m_portal->opened, 0);
}

void PortalFilePickerTest::aRefusalGivesNothing()
{
    QVERIFY(m_portal->appear());
    m_portal->isRefusing = true;
    QTest::ignoreMessage(QtWarningMsg, "the portal opens no dialog: not today");
    QCOMPARE(result(picker().pick(files())), std::nullopt);
    QCOMPARE(m_portal->opened, 1);
}

void PortalFilePickerTest::aPortalThatVanishesGivesNothing()
{
    QVERIFY(m_portal->appear());
    m_portal->leavesOpen = true;
    std::optional<Picked> picked;
    PortalFilePicker chooser = picker();
    chooser.pick(files()).then([&picked](const Picked &answer) { picked = answer; });
    QTRY_COMPARE(m_portal->opened, 1);
    QVERIFY(!picked.has_value());
    m_portal->vanish();
    QTRY_VERIFY(picked.has_value());
    QVERIFY(picked && !picked->has_value());
}

void PortalFilePickerTest::thePickerMayGoBeforeTheAnswer()
{
    QVERIFY(m_portal->appear());
    m_portal->uris = {u"file:///a.mp3"_s};
    auto chooser = std::make_unique<PortalFilePicker>([this] { return m_portal->client(); });
    QCoro::Task<Picked> task = chooser->pick(files());
    chooser.reset();
    QCOMPARE(result(std::move(task)), Picked({QUrl(u"file:///a.mp3"_s)}));
}

QTEST_GUILESS_MAIN(PortalFilePickerTest)
#include "PortalFilePickerTest.moc"
