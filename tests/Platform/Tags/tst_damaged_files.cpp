// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeAudio.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/SongTags.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Tags/RawTags.h"
#include "Platform/Tags/TakenTags.h"

#include <QTest>

#include <ctime>
#include <random>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace cadorel;

/// Files that are no audio, or not whole.
class DamagedFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noAudio_data();
    void noAudio();
    void noFile();
    void cutAnywhere_data();
    void cutAnywhere();
    void hugeGarbage_data();
    void hugeGarbage();
    void hugeCover();
    void junkBeforeMp3();
    void paddingBehindTag();
    void playlistRefersToNothing();

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile out(m_directory.filePath(name));
        if (out.open(QIODevice::WriteOnly))
            out.write(bytes);
        return out.fileName();
    }
    void verifyFails(const QString &path)
    {
        const auto asset = m_reader.open(path);
        QVERIFY(asset);
        QVERIFY(!asset->duration().has_value());
        QVERIFY(!asset->duration(true).has_value());
        QVERIFY(!asset->commonMetadata().has_value());
        QVERIFY(!asset->metadata().has_value());
        QVERIFY(!asset->lyrics().has_value());
        QVERIFY(!asset->duration().error().isEmpty());
        QVERIFY(asset->duration().error().size() < 80);
    }
    static double processorSeconds()
    {
        timespec time = {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
    }
    static QByteArray noise(qsizetype size)
    {
        std::minstd_rand random(1);
        QByteArray bytes(size, Qt::Uninitialized);
        std::ranges::generate(bytes, [&random] { return char(random() >> 8); });
        return bytes;
    }

    QTemporaryDir m_directory;
    FileAssetReader m_reader;
};

void DamagedFilesTest::noAudio_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("I");
    QTest::newRow("text") << QByteArray("This is a shopping list.\n").repeated(100);
    QTest::newRow("chinese text") << u"这不是音乐\n"_s.toUtf8().repeated(1000);
    QTest::newRow("picture") << madeJpeg();
    QTest::newRow("zeros") << QByteArray(100'000, '\0');
    QTest::newRow("ones") << QByteArray(100'000, '\xff');
    QTest::newRow("noise") << noise(200'000);
    QTest::newRow("tag alone") << id3Tag(id3Frame("TIT2", "\x03title"));
    QTest::newRow("tag and text") << id3Tag(id3Frame("TIT2", "\x03title")) +
                                         QByteArray("text").repeated(1000);
    QTest::newRow("tag longer than the file") << QByteArray("ID3\4\0\0\x7f\x7f\x7f\x7f", 10) + "TIT2";
    QTest::newRow("one letter of each") << QByteArray("fLaCOggSRIFFWAVEMAC wvpkTTA1tBaK");
    QTest::newRow("flac header") << makeAudio(u"flac"_s).first(20);
    QTest::newRow("m4a without index") << makeAudio(u"m4a"_s).first(400);
    QTest::newRow("ogg first page") << makeAudio(u"ogg"_s).first(40);
    QTest::newRow("dsf header") << makeAudio(u"dsf"_s).first(60);
    QTest::newRow("dff header") << makeAudio(u"dff"_s).first(30);
    QTest::newRow("matroska header") << makeAudio(u"mka"_s).first(60);
    QTest::newRow("asf header") << makeAudio(u"wma"_s).first(40);
    QTest::newRow("realmedia header") << makeAudio(u"rm"_s).first(20);
}

void DamagedFilesTest::noAudio()
{
    QFETCH(QByteArray, bytes);
    for (const QLatin1StringView ending : {"mp3"_L1, "flac"_L1, "m4a"_L1})
        verifyFails(write("bad."_L1 + ending, bytes));
}

void DamagedFilesTest::noFile()
{
    verifyFails(m_directory.filePath(u"missing.mp3"_s));
    verifyFails(m_directory.path());
    verifyFails(QString());
    const QString pipe = m_directory.filePath(u"pipe.mp3"_s);
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    verifyFails(pipe);
}

void DamagedFilesTest::cutAnywhere_data()
{
    QTest::addColumn<QString>("format");
    for (const QString &format : madeFormats())
        QTest::newRow(qPrintable(format)) << format;
}

void DamagedFilesTest::cutAnywhere()
{
    QFETCH(QString, format);
    MadeSong song;
    song.title = u"青花瓷"_s;
    song.cover = madeJpeg();
    song.lyrics = {u"[00:01.00]天青色等烟雨"_s};
    const QString whole = m_directory.filePath("whole."_L1 + format);
    QVERIFY(makeSong(whole, song));
    QFile file(whole);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    for (qsizetype size = 0; size < bytes.size(); size += 1 + size / 16) {
        const auto asset = m_reader.open(write(u"cut"_s, bytes.first(size)));
        const auto seconds = asset->duration();
        QVERIFY(!seconds || (std::isfinite(*seconds) && *seconds > 0));
        const TakenTags taken(*asset);
        QVERIFY(!asset->lyrics().has_value() || asset->metadata().has_value());
    }
}

void DamagedFilesTest::hugeGarbage_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::newRow("noise") << QByteArray();
    QTest::newRow("tag") << id3Tag(id3Frame("TIT2", "\x03title"));
    QTest::newRow("flac") << QByteArray("fLaC");
    QTest::newRow("flac behind tag") << id3Tag(id3Frame("TIT2", "\x03title")) + "fLaC";
    QTest::newRow("ogg") << makeAudio(u"ogg"_s).first(60);
    QTest::newRow("ogg flac") << makeAudio(u"oga"_s).first(79);
    QTest::newRow("opus") << makeAudio(u"opus"_s).first(47);
    QTest::newRow("mp4") << makeAudio(u"m4a"_s).first(60);
    QTest::newRow("wav") << QByteArray("RIFF\xff\xff\xff\x7fWAVE");
    QTest::newRow("aiff") << QByteArray("FORM\x7f\xff\xff\xff"
                                        "AIFF");
    QTest::newRow("asf") << makeAudio(u"wma"_s).first(100);
    QTest::newRow("ape") << makeAudio(u"ape"_s).first(32);
    QTest::newRow("wavpack") << QByteArray("wvpk");
    QTest::newRow("trueaudio") << QByteArray("TTA1");
    QTest::newRow("tak") << makeAudio(u"tak"_s).first(20);
    QTest::newRow("dsf") << makeAudio(u"dsf"_s).first(40);
    QTest::newRow("dff") << makeAudio(u"dff"_s).first(40);
    QTest::newRow("matroska") << makeAudio(u"mka"_s).first(200);
    QTest::newRow("realmedia") << makeAudio(u"rm"_s).first(100);
}

void DamagedFilesTest::hugeGarbage()
{
    QFETCH(QByteArray, head);
    // 50 MB of noise, then a hole up to 2 GB: what is searched to its end takes very long.
    static const QByteArray garbage = noise(qsizetype(50) * 1024 * 1024);
    const QString path = write(u"huge.mp3"_s, head + garbage);
    QVERIFY(truncate(path.toLocal8Bit().constData(), qint64(2) * 1024 * 1024 * 1024) == 0);
    const double start = processorSeconds();
    const auto asset = m_reader.open(path);
    const auto seconds = asset->duration();
    QVERIFY(!seconds || std::isfinite(*seconds));
    const TakenTags taken(*asset);
    QFile::remove(path);
    // Work, not time: other programs may keep the machine busy. Far above what it takes (0.7 s at most), far
    // below what a search of the whole file would.
    const double used = processorSeconds() - start;
    QVERIFY2(used < 10, qPrintable(QString::number(used)));
}

void DamagedFilesTest::hugeCover()
{
    const QByteArray cover = "\xff\xd8\xff\xe0" + noise(qsizetype(30) * 1024 * 1024);
    for (const QLatin1StringView format : {"mp3"_L1, "m4a"_L1}) {
        const QString path = m_directory.filePath("cover."_L1 + format);
        QVERIFY(makeSong(path, {.title = u"title"_s, .cover = cover}));
        const auto asset = m_reader.open(path);
        QCOMPARE(TakenTags(*asset).title, u"title"_s);
        QVERIFY(TakenTags(*asset).artwork == cover);
        QVERIFY(std::abs(asset->duration().value() - 1) < 0.15);
    }
}

void DamagedFilesTest::junkBeforeMp3()
{
    const QByteArray audio = makeAudio(u"mp3"_s, 5);
    const auto clean = m_reader.open(write(u"clean.mp3"_s, audio));
    const auto asset = m_reader.open(write(u"junk.mp3"_s, noise(10'000) + audio));
    QCOMPARE(asset->duration().value(), clean->duration().value());
}

void DamagedFilesTest::paddingBehindTag()
{
    const QByteArray audio = makeAudio(u"mp3"_s, 5);
    const auto asset = m_reader.open(
        write(u"padded.mp3"_s, id3Tag(id3Frame("TIT2", "\x03title")) + QByteArray(3000, '\0') + audio));
    QCOMPARE(TakenTags(*asset).title, u"title"_s);
    QVERIFY(std::abs(asset->duration().value() - 5) < 0.1);
}

void DamagedFilesTest::playlistRefersToNothing()
{
    // A list that names another file is no way to it.
    const QString real = write(u"real.flac"_s, makeAudio(u"flac"_s));
    verifyFails(
        write(u"list.mp3"_s, "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n" + real.toUtf8() + '\n'));
    verifyFails(write(u"concat.mp3"_s, "ffconcat version 1.0\nfile '" + real.toUtf8() + "'\n"));
}

QTEST_GUILESS_MAIN(DamagedFilesTest)
#include "tst_damaged_files.moc"
