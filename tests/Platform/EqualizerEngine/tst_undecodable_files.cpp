// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"
#include "Fixtures/UnprivilegedScope.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/ReadSound.h"

#include <QTcpServer>
#include <QTest>

#include <random>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace cadorel {

/// Files that are no sound, or not whole, or want to be something else.
class UndecodableFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noSound_data();
    void noSound();
    void unreadable();
    void filmWithoutSound();
    void tooManyChannels();
    void listOpensNothing_data();
    void listOpensNothing();
    void coverIsPassedOver_data();
    void coverIsPassedOver();
    void damagedStretchIsSilent_data();
    void damagedStretchIsSilent();
    void cutFileEndsEarly_data();
    void cutFileEndsEarly();
    void cutMp3HasItsOwnLength();
    void cutAnywhereIsSurvived_data();
    void cutAnywhereIsSurvived();
    void junkAroundMp3();
    void fileThatVanishesIsReadOn();

private:
    static constexpr qint64 samples = 150'431;

    /// What opening says; empty when it succeeds.
    static QString refusal(const QUrl &url)
    {
        try {
            DecodedAudioFile::open(url);
        } catch (const std::runtime_error &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }
    QByteArray bytesOf(const QUrl &url)
    {
        QFile file(url.toLocalFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QByteArray noise(qsizetype size)
    {
        std::minstd_rand random(1);
        QByteArray bytes(size, Qt::Uninitialized);
        std::ranges::generate(bytes, [&random] { return char(random() >> 8); });
        return bytes;
    }

    SongFolder m_folder;
};

void UndecodableFilesTest::noSound_data()
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
    QTest::newRow("flac header") << makeAudio(u"flac"_s).first(20);
    QTest::newRow("m4a without index") << makeAudio(u"m4a"_s).first(400);
    QTest::newRow("ogg first page") << makeAudio(u"ogg"_s).first(40);
    QTest::newRow("dsf header") << makeAudio(u"dsf"_s).first(60);
    QTest::newRow("wav header") << makeAudio(u"wav"_s).first(44);
    QTest::newRow("mp3 frame cut") << makeAudio(u"mp3"_s).first(100);
    // Byte 22: channels; byte 24: frames a second.
    QTest::newRow("wav without channels") << makeAudio(u"wav"_s).replace(22, 2, QByteArray(2, '\0'));
    QTest::newRow("wav without rate") << makeAudio(u"wav"_s).replace(24, 4, QByteArray(4, '\0'));
    // Byte 20: the coding; none has this number.
    QTest::newRow("unknown coding") << makeAudio(u"wav"_s).replace(20, 2, "\x0b\xbe");
}

void UndecodableFilesTest::noSound()
{
    QFETCH(const QByteArray, bytes);
    for (const QLatin1StringView ending : {"mp3"_L1, "flac"_L1, "m4a"_L1}) {
        const QString text = refusal(m_folder.write("bad."_L1 + ending, bytes));
        QVERIFY2(text.startsWith(u"无法播放此文件"_s), qPrintable(text));
    }
}

void UndecodableFilesTest::unreadable()
{
    QCOMPARE(refusal(QUrl::fromLocalFile(m_folder.path(u"missing.mp3"_s))), u"文件不存在"_s);
    QCOMPARE(refusal(QUrl()), u"文件不存在"_s);
    QCOMPARE(refusal(QUrl(u"http://127.0.0.1:9/a.mp3"_s)), u"文件不存在"_s);
    QCOMPARE(refusal(QUrl::fromLocalFile(m_folder.path(QString()))), u"无法读取此文件"_s);
    const QString pipe = m_folder.path(u"pipe.mp3"_s);
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    QCOMPARE(refusal(QUrl::fromLocalFile(pipe)), u"无法读取此文件"_s);

    const QUrl locked = m_folder.write(u"locked.mp3"_s, makeAudio(u"mp3"_s));
    QVERIFY(QFile::setPermissions(locked.toLocalFile(), {}));
    const QFile::Permissions everybody = QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder.path(QString()),
                                  QFile::permissions(m_folder.path(QString())) | everybody));
    const UnprivilegedScope unprivileged;
    QVERIFY(unprivileged.isActive());
    // The scope changes what the process may, not who it is: asked for the reason, root may read everything.
    const bool isRoot = ::getuid() == 0;
    QCOMPARE(refusal(locked), isRoot ? u"无法读取此文件"_s : u"没有读取此文件的权限"_s);
}

void UndecodableFilesTest::filmWithoutSound()
{
    const QString film = m_folder.path(u"film.m4a"_s);
    QVERIFY(runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=s=64x64:d=1"_s, u"-c:v"_s, u"mpeg4"_s, u"-f"_s,
                       u"mp4"_s, film}));
    QCOMPARE(refusal(QUrl::fromLocalFile(film)), u"无法播放此文件：其中没有可播放的声音"_s);
}

void UndecodableFilesTest::tooManyChannels()
{
    const QString many = m_folder.path(u"many.wav"_s);
    QVERIFY(
        runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
                   u"aevalsrc=0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1|0.1:d=1"_s, many}));
    QCOMPARE(refusal(QUrl::fromLocalFile(many)), u"无法播放此文件：不支持这种格式"_s);
}

void UndecodableFilesTest::listOpensNothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("m3u") << u"#EXTM3U\n#EXTINF:1,a\n%1\n"_s;
    QTest::newRow("hls") << u"#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n%1\n#EXT-X-ENDLIST\n"_s;
    QTest::newRow("concat") << u"ffconcat version 1.0\nfile '%1'\n"_s;
    QTest::newRow("pls") << u"[playlist]\nFile1=%1\nNumberOfEntries=1\n"_s;
    QTest::newRow("sdp")
        << u"v=0\no=- 0 0 IN IP4 127.0.0.1\ns=a\nc=IN IP4 127.0.0.1\nm=audio 9 RTP/AVP 0\na=%1\n"_s;
}

void UndecodableFilesTest::listOpensNothing()
{
    QFETCH(const QString, text);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QUrl song = m_folder.write(u"song.mp3"_s, makeAudio(u"mp3"_s));
    for (const QString &entry :
         {song.toLocalFile(), song.toString(), u"http://127.0.0.1:%1/a.mp3"_s.arg(server.serverPort())}) {
        QVERIFY(!refusal(m_folder.write(u"list.mp3"_s, text.arg(entry).toUtf8())).isEmpty());
        QVERIFY(!server.waitForNewConnection(0));
    }
}

void UndecodableFilesTest::coverIsPassedOver_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("mp3") << u"a.mp3"_s;
    QTest::newRow("m4a") << u"a.m4a"_s;
    QTest::newRow("flac") << u"a.flac"_s;
}

void UndecodableFilesTest::coverIsPassedOver()
{
    QFETCH(const QString, name);
    const QUrl plain = m_folder.encode(name, samples);
    const QUrl cover = m_folder.write(u"cover.jpg"_s, madeJpeg());
    const QString covered = m_folder.path(u"covered-"_s + name);
    QVERIFY(
        runFfmpeg({u"-i"_s, plain.toLocalFile(), u"-i"_s, cover.toLocalFile(), u"-map"_s, u"0:a"_s, u"-map"_s,
                   u"1:v"_s, u"-c"_s, u"copy"_s, u"-disposition:v"_s, u"attached_pic"_s, covered}));
    const auto file = DecodedAudioFile::open(QUrl::fromLocalFile(covered));
    const auto other = DecodedAudioFile::open(plain);
    // Copied, the last frame of an MP4 lasts a few samples more or less.
    QVERIFY(std::abs(file->length() - other->length()) < 44);
    const Sound sound = readToEnd(*file);
    QCOMPARE(qint64(sound.size()), file->length() * 2);
    Sound expected = readToEnd(*other);
    expected.resize(std::min(expected.size(), sound.size()));
    QVERIFY(difference(sound, 0, 2, expected) == 0);
}

void UndecodableFilesTest::damagedStretchIsSilent_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("flac") << u"d.flac"_s;
    QTest::newRow("m4a") << u"d.m4a"_s;
    QTest::newRow("ogg") << u"d.ogg"_s;
}

void UndecodableFilesTest::damagedStretchIsSilent()
{
    QFETCH(const QString, name);
    const QUrl url = m_folder.encode(name, samples);
    const Sound whole = readToEnd(*DecodedAudioFile::open(url));
    QByteArray bytes = bytesOf(url);
    const qsizetype length = bytes.size() / 20;
    bytes.replace(bytes.size() / 2, length, noise(length));
    const auto file = DecodedAudioFile::open(m_folder.write(u"damaged-"_s + name, bytes));
    QCOMPARE(file->length() * 2, qint64(whole.size()));
    const Sound sound = readToEnd(*file);
    // What is behind the damage stays where it belongs.
    QCOMPARE(sound.size(), whole.size());
    QVERIFY(difference(whole, 0, 2, Sound(sound.begin(), sound.begin() + samples / 2)) < 1e-4F);
    const qint64 late = samples * 9 / 10;
    QVERIFY(difference(whole, late, 2, Sound(sound.begin() + late * 2, sound.end() - 12'000)) < 1e-4F);
    for (const float sample : sound)
        QVERIFY(std::isfinite(sample));
}

void UndecodableFilesTest::cutFileEndsEarly_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"c.flac", "c.wav", "c.ogg", "c.opus", "c.wv", "c.tta", "c.aac"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void UndecodableFilesTest::cutFileEndsEarly()
{
    QFETCH(const QString, name);
    const QByteArray bytes = bytesOf(m_folder.encode(name, samples, {}, 48000));
    const auto file = DecodedAudioFile::open(m_folder.write(u"cut-"_s + name, bytes.first(bytes.size() / 2)));
    const qint64 read = qint64(readToEnd(*file).size()) / 2;
    QVERIFY(read <= file->length());
    QVERIFY2(read > samples / 4 && read < samples * 3 / 4, qPrintable(QString::number(read)));
    file->seek(samples - 10);
    Sound sound(200);
    QCOMPARE(file->read(sound.data(), 100), 0);
    file->seek(1000);
    QCOMPARE(file->read(sound.data(), 100), 100);
}

void UndecodableFilesTest::cutMp3HasItsOwnLength()
{
    // The header of the first frame still tells the whole song's.
    const QByteArray bytes = bytesOf(m_folder.encode(u"c.mp3"_s, samples));
    const auto file = DecodedAudioFile::open(m_folder.write(u"cut.mp3"_s, bytes.first(bytes.size() / 2)));
    QVERIFY(std::abs(file->length() - samples / 2) < 5000);
    QCOMPARE(qint64(readToEnd(*file).size()), file->length() * 2);
}

void UndecodableFilesTest::cutAnywhereIsSurvived_data()
{
    QTest::addColumn<QString>("format");
    for (const QString &format : madeFormats())
        QTest::newRow(qPrintable(format)) << format;
}

void UndecodableFilesTest::cutAnywhereIsSurvived()
{
    QFETCH(const QString, format);
    const QByteArray whole = makeAudio(format);
    for (int i = 1; i < 16; ++i) {
        QByteArray bytes = whole.first(whole.size() * i / 16);
        bytes[bytes.size() / 2] = char(~bytes[bytes.size() / 2]);
        const QUrl url = m_folder.write("cut."_L1 + format, bytes);
        if (!refusal(url).isEmpty())
            continue;
        const auto file = DecodedAudioFile::open(url);
        const auto channels = file->processingFormat().channelCount;
        QVERIFY(qint64(readToEnd(*file).size()) <= file->length() * channels);
        file->seek(file->length() / 2);
        readToEnd(*file);
    }
}

void UndecodableFilesTest::junkAroundMp3()
{
    const QByteArray song = bytesOf(m_folder.encode(u"j.mp3"_s, samples, {u"-id3v2_version"_s, u"0"_s}));
    const Sound whole = readToEnd(*DecodedAudioFile::open(m_folder.write(u"plain.mp3"_s, song)));
    const QByteArray tag = "TAG" + QByteArray(125, ' ');
    const auto file =
        DecodedAudioFile::open(m_folder.write(u"junk.mp3"_s, QByteArray(3000, '\0') + song + tag));
    QCOMPARE(file->length(), samples);
    QVERIFY(readToEnd(*file) == whole);
}

void UndecodableFilesTest::fileThatVanishesIsReadOn()
{
    const QUrl url = m_folder.encode(u"gone.m4a"_s, samples);
    const auto file = DecodedAudioFile::open(url);
    QVERIFY(QFile::remove(url.toLocalFile()));
    QCOMPARE(qint64(readToEnd(*file).size()), file->length() * 2);
    file->seek(0);
    QCOMPARE(qint64(readToEnd(*file).size()), file->length() * 2);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::UndecodableFilesTest)
#include "tst_undecodable_files.moc"
