// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace cadorel {

/// Every kind of file that can be imported and that ffmpeg can make plays from beginning to end.
class TestMpvFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plays_data();
    void plays();

private:
    SoundFiles m_files;
    FakeAssetReader m_reader;
};

void TestMpvFormats::plays_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("encoding");
    const auto row = [](const char *name, const QStringList &encoding = {}) {
        QTest::newRow(name) << QString::fromLatin1(name) << encoding;
    };
    row("a.mp3");
    row("a.m4a");
    row("alac.m4a", {u"-c:a"_s, u"alac"_s});
    row("a.wav");
    row("wide.wav", {u"-c:a"_s, u"pcm_s24le"_s, u"-ar"_s, u"96000"_s});
    row("a.aiff");
    row("a.aif");
    row("a.aac");
    row("a.flac");
    row("a.ogg");
    row("flac.ogg", {u"-c:a"_s, u"flac"_s});
    row("a.oga");
    row("a.wma");
    row("a.wv");
    row("a.tta");
    row("a.mka");
    row("flac.mka", {u"-c:a"_s, u"flac"_s});
    row("a.opus");
    row("a.spx", {u"-ar"_s, u"16000"_s});
    row("a.ra", {u"-f"_s, u"rm"_s});
    row("a.rm");
    row("a.rmvb", {u"-f"_s, u"rm"_s});
}

void TestMpvFormats::plays()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, encoding);
    const QString path = m_files.make(name, {{440, 1}}, encoding);
    QVERIFY2(!path.isEmpty(), "ffmpeg cannot make it");
    MpvStreamPlayer player(m_reader, {{"ao", "null"}, {"ao-null-untimed", "yes"}});
    const auto item = player.makeItem({.url = QUrl::fromLocalFile(path)});
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    player.replaceCurrentItem(item);
    QTRY_VERIFY(item->status() != PlayerItem::Status::unknown);
    QVERIFY2(item->status() == PlayerItem::Status::readyToPlay, qPrintable(item->errorDescription()));
    QVERIFY2(std::abs(item->duration() - 1) < 0.3, qPrintable(QString::number(item->duration())));
    QVERIFY(item->timescale() > 0);
    player.play();
    QTRY_COMPARE(ends.size(), 1);
    QCOMPARE(item->status(), PlayerItem::Status::readyToPlay);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvFormats)
#include "TestMpvFormats.moc"
