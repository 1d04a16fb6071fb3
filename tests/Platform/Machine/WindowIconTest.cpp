// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/WindowIcon.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The icon of windows and the file that keeps its choice.
class WindowIconTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void aFirstStartShowsTheDefaultIcon();
    void aChosenIconIsShownAndKept();
    void aWindowThatIsThereTakesTheChosenIcon();
    void theDefaultIconComesBackAndLeavesNoFile();
    void aFileThatNamesNoIconMeansTheDefaultOne_data();
    void aFileThatNamesNoIconMeansTheDefaultOne();
    void aFileThatCannotBeReadMeansTheDefaultIcon();
    void anUnknownNameIsRefused();
    void anIconWithoutAPictureIsRefused();
    void whatCannotBeKeptIsNotShown();
    void theDirectoryIsMadeWhenItIsMissing();

private:
    QString file() const { return m_home->filePath(u"alternate-icon"_s); }
    WindowIcon icon() const { return WindowIcon(file(), m_artwork); }
    void write(const QByteArray &content) const;
    /// The colour of the icon that windows have now.
    static QColor shown() { return QGuiApplication::windowIcon().pixmap(16, 16).toImage().pixelColor(8, 8); }

    QTemporaryDir m_pictures;
    ArtworkLookup m_artwork;
    std::unique_ptr<QTemporaryDir> m_home;
};

void WindowIconTest::initTestCase()
{
    for (const auto &[name, color] :
         {std::pair(u"AppIcon11"_s, Qt::red), {u"AppIcon22"_s, Qt::green}, {u"AppIcon33"_s, Qt::blue}}) {
        QImage picture(16, 16, QImage::Format_RGB32);
        picture.fill(color);
        QVERIFY(picture.save(m_pictures.filePath(name + u".png"_s)));
    }
    m_artwork = [this](const QString &name) {
        const QString path = m_pictures.filePath(name + u".png"_s);
        return QFile::exists(path) ? path : QString();
    };
}

void WindowIconTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    QGuiApplication::setWindowIcon({});
}

void WindowIconTest::write(const QByteArray &content) const
{
    QFile out(file());
    QVERIFY(out.open(QIODevice::WriteOnly));
    QCOMPARE(out.write(content), content.size());
}

void WindowIconTest::aFirstStartShowsTheDefaultIcon()
{
    QCOMPARE(icon().name(), std::nullopt);
    QCOMPARE(shown(), QColor(Qt::red));
    QVERIFY(!QFile::exists(file()));
}

void WindowIconTest::aChosenIconIsShownAndKept()
{
    {
        WindowIcon first = icon();
        QVERIFY(first.setName(u"AppIcon22"_s));
        QCOMPARE(first.name(), u"AppIcon22"_s);
        QCOMPARE(shown(), QColor(Qt::green));
    }
    QGuiApplication::setWindowIcon({});
    QCOMPARE(icon().name(), u"AppIcon22"_s);
    QCOMPARE(shown(), QColor(Qt::green));
}

void WindowIconTest::aWindowThatIsThereTakesTheChosenIcon()
{
    WindowIcon icon(file(), m_artwork);
    const QWindow window;
    QVERIFY(icon.setName(u"AppIcon33"_s));
    QCOMPARE(window.icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::blue));
    QVERIFY(icon.setName(std::nullopt));
    QCOMPARE(window.icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

void WindowIconTest::theDefaultIconComesBackAndLeavesNoFile()
{
    WindowIcon icon(file(), m_artwork);
    QVERIFY(icon.setName(u"AppIcon33"_s));
    QVERIFY(QFile::exists(file()));
    QVERIFY(icon.setName(std::nullopt));
    QCOMPARE(icon.name(), std::nullopt);
    QCOMPARE(shown(), QColor(Qt::red));
    QVERIFY(!QFile::exists(file()));
    QVERIFY(icon.setName(std::nullopt));
}

void WindowIconTest::aFileThatNamesNoIconMeansTheDefaultOne_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addRow("empty") << QByteArray();
    QTest::addRow("another asset") << QByteArray("cartoon1\n");
    QTest::addRow("the default picture") << QByteArray("AppIcon11\n");
    QTest::addRow("a path") << QByteArray("../../AppIcon22");
    QTest::addRow("no text") << QByteArray("\xff\xfe\x00\x01", 4);
    QTest::addRow("large") << QByteArray(1 << 20, 'A');
}

void WindowIconTest::aFileThatNamesNoIconMeansTheDefaultOne()
{
    QFETCH(QByteArray, content);
    write(content);
    WindowIcon icon(file(), m_artwork);
    QCOMPARE(icon.name(), std::nullopt);
    QCOMPARE(shown(), QColor(Qt::red));
    QVERIFY(icon.setName(u"AppIcon22"_s));
    QCOMPARE(shown(), QColor(Qt::green));
}

void WindowIconTest::aFileThatCannotBeReadMeansTheDefaultIcon()
{
    QVERIFY(QDir().mkpath(file()));
    WindowIcon icon(file(), m_artwork);
    QCOMPARE(icon.name(), std::nullopt);
    QCOMPARE(shown(), QColor(Qt::red));
}

void WindowIconTest::anUnknownNameIsRefused()
{
    WindowIcon icon(file(), m_artwork);
    QVERIFY(icon.setName(u"AppIcon22"_s));
    const auto done = icon.setName(u"AppIcon99"_s);
    QVERIFY(!done);
    QVERIFY(done.error().contains(u"AppIcon99"_s));
    QCOMPARE(icon.name(), u"AppIcon22"_s);
    QCOMPARE(shown(), QColor(Qt::green));
}

void WindowIconTest::anIconWithoutAPictureIsRefused()
{
    WindowIcon icon(file(), m_artwork);
    QVERIFY(!icon.setName(u"AppIcon44"_s));
    QCOMPARE(icon.name(), std::nullopt);
    QVERIFY(!QFile::exists(file()));
}

void WindowIconTest::whatCannotBeKeptIsNotShown()
{
    // A directory in its place can be neither replaced nor removed, whoever asks.
    QVERIFY(QDir().mkpath(file() + u"/full"_s));
    WindowIcon icon(file(), m_artwork);
    const auto done = icon.setName(u"AppIcon22"_s);
    QVERIFY(!done);
    QVERIFY(!done.error().isEmpty());
    QCOMPARE(icon.name(), std::nullopt);
    QCOMPARE(shown(), QColor(Qt::red));
}

void WindowIconTest::theDirectoryIsMadeWhenItIsMissing()
{
    const QString deep = m_home->filePath(u"not/yet/alternate-icon"_s);
    QVERIFY(WindowIcon(deep, m_artwork).setName(u"AppIcon22"_s));
    QCOMPARE(WindowIcon(deep, m_artwork).name(), u"AppIcon22"_s);
}

QTEST_MAIN(WindowIconTest)
#include "WindowIconTest.moc"
