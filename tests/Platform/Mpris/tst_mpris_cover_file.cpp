// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisCoverFile.h"
#include "Views/WarningWatch.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>
#include <QUrl>

#include <sys/stat.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QImage picture(const QColor &color, QSize size = {64, 48}, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}

uint mode(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

} // namespace

/// The cover that the desktop shows, as a file.
class TestMprisCoverFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theCoverIsAPrivateFile();
    void anOpenDirectoryIsClosed();
    void photographsAreSmallAndTransparencyIsKept();
    void aLargeCoverIsMadeSmaller();
    void theSamePictureIsWrittenOnce();
    void everyCoverHasANameOfItsOwn();
    void theOneBeforeStaysAndOlderOnesGo();
    void aCoverThatComesBackIsThereAtOnce();
    void aLateCoverIsNotShown();
    void manyCoversAtOnceEndWithTheLast();
    void whatAnEarlierRunLeftIsRemoved();
    void theFilesGoAtTheEnd();
    void nothingIsLeftOfACoverOnItsWay();
    void aFolderThatCannotBeWrittenMeansNoCover();
    void noPictureIsNoCover();

private:
    QString folder() const { return m_home->filePath(u"caches/NowPlaying"_s); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
    /// Wants a cover and waits for its file.
    QString show(const QImage &image);

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<MprisCoverFile> m_cover;
};

void TestMprisCoverFile::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_cover = std::make_unique<MprisCoverFile>(folder());
}

void TestMprisCoverFile::cleanup()
{
    m_cover.reset();
    QThreadPool::globalInstance()->waitForDone();
    m_home.reset();
}

QString TestMprisCoverFile::show(const QImage &image)
{
    m_cover->setCover(image);
    std::ignore = QTest::qWaitFor([this] { return !m_cover->url().isEmpty(); }, 20'000);
    return QUrl(m_cover->url()).toLocalFile();
}

void TestMprisCoverFile::theCoverIsAPrivateFile()
{
    const QString path = show(picture(Qt::red));
    QVERIFY(QUrl(m_cover->url()).isLocalFile());
    QVERIFY(QDir::isAbsolutePath(path));
    QCOMPARE(QFileInfo(path).path(), folder());
    QCOMPARE(mode(path), 0600U);
    QCOMPARE(mode(folder()), 0700U);
    QCOMPARE(files(), QStringList{QFileInfo(path).fileName()});
}

void TestMprisCoverFile::anOpenDirectoryIsClosed()
{
    QVERIFY(QDir().mkpath(folder()));
    QCOMPARE(::chmod(QFile::encodeName(folder()).constData(), 0755), 0);
    QVERIFY(!show(picture(Qt::red)).isEmpty());
    QCOMPARE(mode(folder()), 0700U);
}

void TestMprisCoverFile::photographsAreSmallAndTransparencyIsKept()
{
    const QImage opaque(show(picture(Qt::red)));
    QCOMPARE(opaque.size(), QSize(64, 48));
    QVERIFY(!opaque.hasAlphaChannel());
    const QImage clear(show(picture(QColor(0, 0, 255, 100), {10, 10}, QImage::Format_ARGB32)));
    QCOMPARE(clear.pixelColor(5, 5), QColor(0, 0, 255, 100));
}

void TestMprisCoverFile::aLargeCoverIsMadeSmaller()
{
    QImage wide = picture(Qt::green, {3000, 1500});
    QPainter(&wide).fillRect(0, 0, 1500, 1500, Qt::blue);
    const QImage shown(show(wide));
    QCOMPARE(shown.size(), QSize(1024, 512));
    QVERIFY(shown.pixelColor(200, 200).blue() > 240);
    QVERIFY(shown.pixelColor(800, 200).green() > 240);
}

void TestMprisCoverFile::theSamePictureIsWrittenOnce()
{
    const QImage image = picture(Qt::red);
    const QString path = show(image);
    for (int tick = 0; tick < 10; ++tick) {
        m_cover->setCover(QImage(image)); // another value, the same pixels in memory
        QCOMPARE(QUrl(m_cover->url()).toLocalFile(), path);
    }
    QCOMPARE(files().size(), 1);
}

void TestMprisCoverFile::everyCoverHasANameOfItsOwn()
{
    QSet<QString> paths;
    for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::blue, Qt::red})
        paths.insert(show(picture(color)));
    QCOMPARE(paths.size(), 4);
    m_cover = std::make_unique<MprisCoverFile>(folder());
    paths.insert(show(picture(Qt::red)));
    QCOMPARE(paths.size(), 5);
}

void TestMprisCoverFile::theOneBeforeStaysAndOlderOnesGo()
{
    const QString first = show(picture(Qt::red));
    const QString second = show(picture(Qt::green));
    QVERIFY(QFile::exists(first)); // a panel may be reading it
    const QString third = show(picture(Qt::blue));
    QTRY_VERIFY(!QFile::exists(first));
    QVERIFY(QFile::exists(second));
    QVERIFY(QFile::exists(third));
    QCOMPARE(files().size(), 2);
}

void TestMprisCoverFile::aCoverThatComesBackIsThereAtOnce()
{
    const QImage image = picture(Qt::red);
    const QString path = show(image);
    m_cover->setCover(std::nullopt);
    QCOMPARE(m_cover->url(), QString());
    m_cover->setCover(image);
    QCOMPARE(QUrl(m_cover->url()).toLocalFile(), path);
    QVERIFY(QFile::exists(path));
}

void TestMprisCoverFile::aLateCoverIsNotShown()
{
    const QString before = show(picture(Qt::green));
    QVERIFY(!before.isEmpty());
    // Nothing else is under way now: a worker takes the red one at once.
    QStringList shown;
    connect(m_cover.get(), &MprisCoverFile::urlChanged, this, [&] { shown.append(m_cover->url()); });
    m_cover->setCover(picture(Qt::red, {900, 900}));
    m_cover->setCover(std::nullopt);
    const QString path = show(picture(Qt::blue));
    QCOMPARE(shown, QStringList{QUrl::fromLocalFile(path).toString()});
    QTRY_COMPARE(files().size(), 2);
    QVERIFY(QFile::exists(before));
    QVERIFY(QImage(path).pixelColor(5, 5).blue() > 240);
}

void TestMprisCoverFile::manyCoversAtOnceEndWithTheLast()
{
    QStringList shown;
    connect(m_cover.get(), &MprisCoverFile::urlChanged, this, [&] { shown.append(m_cover->url()); });
    for (int i = 0; i < 50; ++i)
        m_cover->setCover(picture(QColor(i, 0, 0), {400, 400}));
    const QString path = show(picture(Qt::blue));
    QVERIFY(QImage(path).pixelColor(5, 5).blue() > 240);
    QCOMPARE(shown.size(), 1); // the ones before were not waited for
    QTRY_COMPARE(files(), QStringList{QFileInfo(path).fileName()});
}

void TestMprisCoverFile::whatAnEarlierRunLeftIsRemoved()
{
    m_cover.reset();
    QThreadPool::globalInstance()->waitForDone(); // it would sweep what the next one writes
    QVERIFY(QDir().mkpath(folder()));
    for (const QString &name : {u"0a1b-7"_s, u".write-Xyz123"_s}) {
        QFile file(folder() + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    m_cover = std::make_unique<MprisCoverFile>(folder());
    QTRY_COMPARE(files(), QStringList());
    const QString path = show(picture(Qt::red));
    QCOMPARE(files(), QStringList{QFileInfo(path).fileName()});
}

void TestMprisCoverFile::theFilesGoAtTheEnd()
{
    show(picture(Qt::red));
    show(picture(Qt::green));
    QCOMPARE(files().size(), 2);
    m_cover.reset();
    QCOMPARE(files(), QStringList());
}

void TestMprisCoverFile::nothingIsLeftOfACoverOnItsWay()
{
    for (int i = 0; i < 20; ++i) {
        m_cover = std::make_unique<MprisCoverFile>(folder());
        m_cover->setCover(picture(Qt::red, {600, 600}));
        // Ends it at different times of the work.
        std::ignore = QTest::qWaitFor([] { return false; }, i);
        m_cover.reset();
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(files(), QStringList());
    }
}

void TestMprisCoverFile::aFolderThatCannotBeWrittenMeansNoCover()
{
    // A file stands in the way, which holds for every user.
    QVERIFY(QDir().mkpath(m_home->filePath(u"caches"_s)));
    QFile obstacle(folder());
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    WarningWatch warnings;
    QStringList said;
    const auto complains = [&] {
        said += warnings.take();
        return !said.isEmpty();
    };
    m_cover->setCover(picture(Qt::red));
    QTRY_VERIFY(complains());
    QVERIFY2(said.constFirst().startsWith("the desktop gets no covers: "_L1), qPrintable(said.constFirst()));
    QCOMPARE(m_cover->url(), QString());
    // It is tried again with every other cover, and said once.
    m_cover->setCover(picture(Qt::green));
    QTRY_COMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    QCOMPARE(m_cover->url(), QString());
    QVERIFY(obstacle.remove());
    const QString path = show(picture(Qt::blue));
    QVERIFY(QImage(path).pixelColor(5, 5).blue() > 240);
    said += warnings.take();
    QCOMPARE(said.size(), 1);
}

void TestMprisCoverFile::noPictureIsNoCover()
{
    m_cover->setCover(QImage());
    QCOMPARE(m_cover->url(), QString());
    show(picture(Qt::red));
    m_cover->setCover(QImage());
    QCOMPARE(m_cover->url(), QString());
}

QTEST_GUILESS_MAIN(TestMprisCoverFile)
#include "tst_mpris_cover_file.moc"
