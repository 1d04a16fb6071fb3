// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/WebDAVService.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerListModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"
#include "Views/ScreenTest.h"

namespace cadorel {

/// What the tests of the servers' screens do in the window.
class ServerScreenTest : public ScreenTest
{
    Q_OBJECT
protected:
    void openPlace()
    {
        t->click(QStringLiteral("webdavTab"));
        QTRY_VERIFY(t->shows(QStringLiteral("webDAVView")));
    }
    void openForm()
    {
        t->click(QStringLiteral("addServerButton"));
        QTRY_VERIFY(isOpen(QStringLiteral("addServerMenu")));
        t->click(QStringLiteral("addWebDAVItem"));
        QTRY_VERIFY(isOpen(QStringLiteral("serverForm")));
    }
    void openPage(const WebDAVConfig &config)
    {
        t->servers->openServer(config.uuidText());
        QTRY_VERIFY(t->item(QStringLiteral("serverPage"))->property("covers").toBool());
    }
    bool isOpen(const QString &popup) const { return t->object(popup)->property("opened").toBool(); }
    bool isGone(const QString &popup) const { return !t->object(popup)->property("visible").toBool(); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    QQuickItem *rowOf(const QString &list, int index) const
    {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(t->item(list), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                  Q_ARG(int, index));
        return found;
    }
    QQuickItem *serverRow(int index) const { return rowOf(QStringLiteral("serverList"), index); }
    QQuickItem *songRow(int index) const { return rowOf(QStringLiteral("serverSongList"), index); }
    void type(const QString &text) const
    {
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, t->window, Qt::Key_unknown, QString(c), {});
    }
    /// Brings a field of the form into sight and puts a text into it.
    void fill(const QString &field, const QString &text) const
    {
        QQuickItem *input = t->item(field + QStringLiteral("Text"));
        input->forceActiveFocus(Qt::TabFocusReason);
        QTest::keySequence(t->window, QKeySequence::SelectAll);
        QTest::keyClick(t->window, Qt::Key_Delete);
        type(text);
    }

    // For windows on the fake web.
    bool answersOne() const
    {
        return QTest::qWaitFor([this] { return t->folders->answerOne(); });
    }
    /// Answers until no server is being scanned or waits for it.
    bool answersAll() const
    {
        return QTest::qWaitFor([this] {
            t->folders->answerAll();
            const WebDAVServerListModel *list = t->servers->servers();
            for (int row = 0; row < list->count(); ++row) {
                const QString status = list->index(row).data(WebDAVServerListModel::StatusRole).toString();
                if (status.startsWith(QStringLiteral("正在")) || status.startsWith(QStringLiteral("等待")))
                    return false;
            }
            return true;
        });
    }
    /// Two servers, the first with three songs.
    QList<WebDAVConfig> twoServers()
    {
        t->folders->add(QStringLiteral("/music"),
                        {QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")});
        t->folders->add(QStringLiteral("/b"), {QStringLiteral("d.mp3")});
        const QList<WebDAVConfig> servers = {t->addServer(QStringLiteral("甲")),
                                             t->addServer(QStringLiteral("乙"), QStringLiteral("/b"))};
        if (!t->scanServer(servers.constFirst()))
            qFatal("a scan does not end");
        return servers;
    }
};

} // namespace cadorel
