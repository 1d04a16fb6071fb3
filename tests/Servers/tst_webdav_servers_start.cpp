// SPDX-License-Identifier: GPL-3.0-or-later
// That the servers which other tests rely on do what those expect of them.
#include "Servers/DavTree.h"
#include "Servers/HrefWalk.h"
#include "Servers/PlainRequest.h"
#include "Servers/WebDAVServer.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int anyDepth = 100;
const QString user = u"ann@home/5% +音"_s;
const QString password = u"p:w@d/%+ \"密码\""_s;

QStringList withSlash(QStringList paths)
{
    for (QString &path : paths)
        path.prepend(u'/');
    paths.sort();
    return paths;
}

QStringList audioOf(QStringList paths)
{
    paths.removeIf([](const QString &path) {
        return path.endsWith(u".txt"_s) || path.endsWith(u".jpg"_s) || path.endsWith(u"no ending"_s);
    });
    paths.sort();
    return paths;
}

} // namespace

class TestWebDAVServersStart : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsTheWholeTree_data();
    void listsTheWholeTree();
    void refusesOtherPasswords_data() { listsTheWholeTree_data(); }
    void refusesOtherPasswords();
    void isGoneAfterStop_data() { listsTheWholeTree_data(); }
    void isGoneAfterStop();
    void twoStandBesideEachOther_data() { listsTheWholeTree_data(); }
    void twoStandBesideEachOther();
};

void TestWebDAVServersStart::listsTheWholeTree_data()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : WebDAVServer::kinds())
        QTest::newRow(qPrintable(kind)) << kind;
}

void TestWebDAVServersStart::listsTheWholeTree()
{
    QFETCH(const QString, kind);
    DavTree tree;
    tree.addAwkwardNames();
    tree.addChain(3);
    const auto server = WebDAVServer::make(kind);
    QVERIFY(server->start(tree.root(), user, password));
    const QStringList expected = server->listsHiddenFiles() ? tree.audioFiles() : tree.visibleAudioFiles();
    QVERIFY(expected.size() > 15);
    QCOMPARE(audioOf(walkByHrefs(*server, user, password, anyDepth)), withSlash(expected));
    // The root and the first level of the chain, and not what lies beneath.
    const QStringList shallow = walkByHrefs(*server, user, password, 2);
    QVERIFY(shallow.contains(u'/' + DavTree::chainFile(1)));
    QVERIFY(!shallow.contains(u'/' + DavTree::chainFile(2)));
}

void TestWebDAVServersStart::refusesOtherPasswords()
{
    QFETCH(const QString, kind);
    const DavTree tree;
    const auto server = WebDAVServer::make(kind);
    QVERIFY(server->start(tree.root(), user, password));
    const auto status = [&server](const QString &name, const QString &word) {
        return plainPropfind(server->address(), "/"_ba, name, word).value_or(PlainAnswer{}).status;
    };
    QCOMPARE(status(user, password), 207);
    QCOMPARE(status(user, password + u'x'), 401);
    QCOMPARE(status(u"other"_s, password), 401);
}

void TestWebDAVServersStart::isGoneAfterStop()
{
    QFETCH(const QString, kind);
    const DavTree tree;
    const auto server = WebDAVServer::make(kind);
    QVERIFY(server->start(tree.root(), user, password));
    server->stop();
    QVERIFY(!plainRequest(server->address(), "PROPFIND"_ba, "/"_ba, {}));
    QVERIFY(server->start(tree.root(), user, password));
    QVERIFY(plainRequest(server->address(), "PROPFIND"_ba, "/"_ba, {}));
}

void TestWebDAVServersStart::twoStandBesideEachOther()
{
    QFETCH(const QString, kind);
    DavTree tree;
    tree.addFile(u"one.mp3"_s);
    DavTree other;
    other.addFile(u"two.mp3"_s);
    const auto first = WebDAVServer::make(kind);
    const auto second = WebDAVServer::make(kind);
    QVERIFY(first->start(tree.root(), user, password));
    QVERIFY(second->start(other.root(), user, password));
    QCOMPARE(walkByHrefs(*first, user, password, 1), QStringList{u"/one.mp3"_s});
    QCOMPARE(walkByHrefs(*second, user, password, 1), QStringList{u"/two.mp3"_s});
}

QTEST_GUILESS_MAIN(TestWebDAVServersStart)

#include "tst_webdav_servers_start.moc"
