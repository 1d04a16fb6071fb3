// SPDX-License-Identifier: GPL-3.0-or-later
// Writes what each server answers about some folders: record_answers DIRECTORY
#include "Servers/DavTree.h"
#include "Servers/PlainRequest.h"
#include "Servers/WebDAVServer.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QUrl>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

struct Folder
{
    QString label;
    QString path;
};

/// rclone dates the root with its own start.
QByteArray withoutToday(const QByteArray &answer)
{
    static const QRegularExpression date(u"[A-Z][a-z]{2}, \\d\\d [A-Z][a-z]{2} \\d{4} [\\d:]{8} GMT"_s);
    return QString::fromUtf8(answer).replace(date, DavTree::date()).toUtf8();
}

void record(WebDAVServer &server, const QString &kind, const DavTree &tree, const QString &directory)
{
    const QString user = u"user"_s;
    const QString password = u"password"_s;
    if (!server.start(tree.root(), user, password))
        qFatal("%s does not start", qPrintable(kind));
    const QList<Folder> folders{{u"root"_s, u"/"_s},
                                {u"chinese"_s, u"/中文专辑/"_s},
                                {u"special"_s, u"/#1 & 100% a+b_c/"_s},
                                {u"empty"_s, u"/Empty/"_s}};
    for (const Folder &folder : folders) {
        const auto answer =
            plainPropfind(server.address(), QUrl::toPercentEncoding(folder.path, "/"_ba), user, password);
        QFile file(directory + u"/%1-%2.xml"_s.arg(kind, folder.label));
        if (!answer || answer->status != 207 || !file.open(QIODevice::WriteOnly) ||
            file.write(withoutToday(answer->body)) < 0)
            qFatal("cannot record the folder %s of %s", qPrintable(folder.path), qPrintable(kind));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc != 2)
        qFatal("usage: record_answers DIRECTORY");
    DavTree tree;
    for (const QString &path :
         {u"开场.mp3"_s, u"readme.txt"_s, u"no ending"_s, u".hidden.mp3"_s, u"With Spaces/two  spaces.flac"_s,
          u"中文专辑/歌曲 一.flac"_s, u"中文专辑/Disc 2/第二首.m4a"_s, u"#1 & 100% a+b_c/#1 song.mp3"_s,
          u"#1 & 100% a+b_c/50% off.mp3"_s, u"#1 & 100% a+b_c/%41 literal.mp3"_s,
          u"#1 & 100% a+b_c/C+D.ogg"_s, u"#1 & 100% a+b_c/Soul & Blues.m4a"_s,
          u"#1 & 100% a+b_c/track_01.mp3"_s, u"#1 & 100% a+b_c/Why?.mp3"_s,
          u"#1 & 100% a+b_c/Quote's [live] {take}; a=b, c \"d\" <e>.wav"_s,
          u"#1 & 100% a+b_c/Emoji 🎵 ♥/♥.opus"_s})
        tree.addFile(path);
    tree.addFolder(u"Empty"_s);
    tree.setDates();
    for (const QString &kind : WebDAVServer::kinds()) {
        const std::unique_ptr<WebDAVServer> server = WebDAVServer::make(kind);
        record(*server, kind, tree, QString::fromLocal8Bit(argv[1]));
    }
    return 0;
}
