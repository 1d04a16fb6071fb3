// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FileSecretStore.h"
#include "Fixtures/UnprivilegedScope.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

class FileSecretStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void readingMakesNoFile();
    void theFileIsOfThisUserAlone();
    void aFileWithWiderRightsIsNarrowed();
    void secretsOutlastTheStore();
    void nothingIsLeftBesideTheFile();
    void aDamagedFileIsSetAside_data();
    void aDamagedFileIsSetAside();
    void oddEntriesStay();
    void aFileThatCannotBeReadStays();
    void aFailedWriteLosesNothing();

private:
    QString path() const { return m_directory->filePath(u"secrets.json"_s); }
    QStringList entries() const
    {
        return QDir(m_directory->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    bool writeFile(const QByteArray &bytes) const
    {
        QFile file(path());
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    QByteArray fileBytes(const QString &name = u"secrets.json"_s) const
    {
        QFile file(m_directory->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    mode_t mode() const
    {
        struct stat status = {};
        return ::stat(QFile::encodeName(path()).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    const QString m_service = u"com.cadorel"_s;
    std::unique_ptr<QTemporaryDir> m_directory;
};

void FileSecretStoreTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void FileSecretStoreTest::readingMakesNoFile()
{
    FileSecretStore store(path());
    QVERIFY(!store.copy(m_service, u"a"_s));
    QCOMPARE(store.remove(m_service, u"a"_s), SecretStatus::itemNotFound);
    QCOMPARE(entries(), QStringList());
}

void FileSecretStoreTest::theFileIsOfThisUserAlone()
{
    const mode_t mask = ::umask(0);
    FileSecretStore store(path());
    QCOMPARE(store.add(m_service, u"a"_s, "secret"), SecretStatus::success);
    QCOMPARE(mode(), mode_t(0600));
    QCOMPARE(store.update(m_service, u"a"_s, "other"), SecretStatus::success);
    QCOMPARE(mode(), mode_t(0600));
    ::umask(mask);
}

void FileSecretStoreTest::aFileWithWiderRightsIsNarrowed()
{
    QCOMPARE(FileSecretStore(path()).add(m_service, u"a"_s, "secret"), SecretStatus::success);
    QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    QCOMPARE(mode(), mode_t(0604));
    QCOMPARE(FileSecretStore(path()).copy(m_service, u"a"_s).value_or(""), "secret"_ba);
    QCOMPARE(mode(), mode_t(0600));
}

void FileSecretStoreTest::secretsOutlastTheStore()
{
    QCOMPARE(FileSecretStore(path()).add(m_service, u"键"_s, "密码"), SecretStatus::success);
    QCOMPARE(FileSecretStore(path()).copy(m_service, u"键"_s).value_or(""), "密码"_ba);
    // As it is told in the class's description.
    QCOMPARE(QJsonDocument::fromJson(fileBytes()).object(),
             (QJsonObject{{m_service, QJsonObject{{u"键"_s, QString::fromLatin1("密码"_ba.toBase64())}}}}));
}

void FileSecretStoreTest::nothingIsLeftBesideTheFile()
{
    FileSecretStore store(path());
    for (int number = 0; number < 10; ++number)
        QCOMPARE(store.add(m_service, QString::number(number), "secret"), SecretStatus::success);
    QCOMPARE(entries(), QStringList{u"secrets.json"_s});
}

void FileSecretStoreTest::aDamagedFileIsSetAside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("torn") << "{\"com.cadorel\": {\"a\": \"c2Vj"_ba;
    QTest::newRow("no text") << QByteArray("\0\xff\xfe", 3);
    QTest::newRow("a list") << "[1, 2]"_ba;
}

void FileSecretStoreTest::aDamagedFileIsSetAside()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(writeFile(bytes));
    FileSecretStore store(path());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^passwords: .* is damaged, set aside as "_s));
    QVERIFY(!store.copy(m_service, u"a"_s));
    QCOMPARE(store.add(m_service, u"a"_s, "secret"), SecretStatus::success);
    QCOMPARE(store.copy(m_service, u"a"_s).value_or(""), "secret"_ba);
    const QStringList all = entries();
    QCOMPARE(all.size(), 2);
    QVERIFY(all.at(1).startsWith(u"secrets.json.damaged-"_s));
    QCOMPARE(fileBytes(all.at(1)), bytes);
    QVERIFY(
        !(QFileInfo(m_directory->filePath(all.at(1))).permissions() & (QFile::ReadGroup | QFile::ReadOther)));
}

void FileSecretStoreTest::oddEntriesStay()
{
    QVERIFY(writeFile(R"({"com.cadorel": {"good": "b2s=", "number": 7, "bad": "*"}, "later": 1})"));
    FileSecretStore store(path());
    QCOMPARE(store.copy(m_service, u"good"_s).value_or(""), "ok"_ba);
    for (const QString &account : {u"number"_s, u"bad"_s}) {
        QCOMPARE(store.copy(m_service, account).error(), SecretStatus::itemNotFound);
        QCOMPARE(store.remove(m_service, account), SecretStatus::itemNotFound);
    }
    QCOMPARE(store.add(m_service, u"new"_s, "new"), SecretStatus::success);
    const QJsonObject all = QJsonDocument::fromJson(fileBytes()).object();
    QCOMPARE(all.value(u"later"_s).toInt(), 1);
    QCOMPARE(all.value(m_service).toObject().value(u"number"_s).toInt(), 7);
    QCOMPARE(store.add(m_service, u"bad"_s, "mended"), SecretStatus::success);
    QCOMPARE(store.copy(m_service, u"bad"_s).value_or(""), "mended"_ba);
}

void FileSecretStoreTest::aFileThatCannotBeReadStays()
{
    FileSecretStore store(path());
    QCOMPARE(store.add(m_service, u"a"_s, "secret"), SecretStatus::success);
    const QByteArray before = fileBytes();
    QVERIFY(QFile::setPermissions(path(), {}));
    QVERIFY(QFile::setPermissions(m_directory->path(), QFile::Permissions(0x7777)));
    {
        const UnprivilegedScope scope;
        QVERIFY(scope.isActive());
        for (int call = 0; call < 2; ++call)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^passwords: .* cannot be read: "_s));
        QCOMPARE(store.copy(m_service, u"a"_s).error(), SecretStatus::ioError);
        QCOMPARE(store.add(m_service, u"b"_s, "other"), SecretStatus::ioError);
    }
    QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner));
    QCOMPARE(fileBytes(), before);
}

void FileSecretStoreTest::aFailedWriteLosesNothing()
{
    QVERIFY(QFile::setPermissions(m_directory->path(), QFile::Permissions(0x7777)));
    const UnprivilegedScope scope;
    QVERIFY(scope.isActive());
    FileSecretStore store(path());
    QCOMPARE(store.add(m_service, u"a"_s, "secret"), SecretStatus::success);
    {
        // A directory that nothing can be added to.
        const QString name = m_directory->filePath(u"closed"_s);
        QVERIFY(QDir().mkdir(name));
        QVERIFY(QFile::rename(path(), name + u"/secrets.json"_s));
        FileSecretStore closed(name + u"/secrets.json"_s);
        QVERIFY(QFile::setPermissions(name, QFile::ReadOwner | QFile::ExeOwner));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^passwords: .* cannot be written: "_s));
        QCOMPARE(closed.update(m_service, u"a"_s, "other"), SecretStatus::ioError);
        QCOMPARE(closed.copy(m_service, u"a"_s).value_or(""), "secret"_ba);
        QVERIFY(QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
}

QTEST_GUILESS_MAIN(FileSecretStoreTest)
#include "FileSecretStoreTest.moc"
