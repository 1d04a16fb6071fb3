// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/OnlineAnswers.h"
#include "Services/APIConfigService.h"
#include "Services/OnlineMusicService.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/OnlineSearchViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/TopListListModel.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"
#include "Views/ScreenTest.h"

namespace cadorel {

/// What the tests of the online platforms' screens do in the window.
class OnlineScreenTest : public ScreenTest
{
    Q_OBJECT
protected:
    OnlineSearchViewModel &search() const { return *t->online->search(); }
    TopListsViewModel &charts() const { return *t->online->charts(); }

    /// Shows the search of the online platforms in the window.
    void openPlace()
    {
        t->click(QStringLiteral("searchTab"));
        QTRY_VERIFY(t->shows(QStringLiteral("searchView")));
        // What it holds stands at its place once it has been drawn.
        QVERIFY(!t->window->grabWindow().isNull());
        t->click(QStringLiteral("searchScope1"));
        QVERIFY(!t->window->grabWindow().isNull());
    }
    void showPlace()
    {
        QVERIFY(t->show());
        openPlace();
        t->item(QStringLiteral("onlineSearchText"))->forceActiveFocus(Qt::OtherFocusReason);
    }
    void type(const QString &text) const
    {
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, t->window, Qt::Key_unknown, QString(c), {});
    }
    /// Puts a text into a field in place of what it holds.
    void fill(const QString &field, const QString &text) const
    {
        t->item(field)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keySequence(t->window, QKeySequence::SelectAll);
        QTest::keyClick(t->window, Qt::Key_Delete);
        type(text);
    }
    /// Types a text into the search field and submits it.
    void searchFor(const QString &text) const
    {
        fill(QStringLiteral("onlineSearchText"), text);
        QTest::keyClick(t->window, Qt::Key_Return);
    }
    /// Waits for a request to an address that holds @p text and answers it.
    bool answers(const QString &text, const FakeHttpClient::Result &result) const
    {
        return QTest::qWaitFor([&] { return t->web->answer(text, result); });
    }
    QQuickItem *rowOf(const QString &list, int index) const
    {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(t->item(list), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                  Q_ARG(int, index));
        return found;
    }
    bool isOpen(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return found && found->property("opened").toBool();
    }
    bool isGone(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return !found || !found->property("visible").toBool();
    }
    bool covers(const QString &page) const { return t->item(page)->property("covers").toBool(); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    /// Name of the online song that the player holds; empty when there is none.
    QString currentName() const
    {
        const auto &song = t->audioPlayer->currentOnlineSong();
        return song ? song->name : QString();
    }

    static QList<OnlineSong> songs(int count, MusicPlatform platform = MusicPlatform::netease)
    {
        QList<OnlineSong> made;
        for (int i = 0; i < count; ++i) {
            made.append({.id = QString::number(i),
                         .name = QStringLiteral("歌 %1").arg(i),
                         .artist = QStringLiteral("歌手"),
                         .album = QStringLiteral("专辑"),
                         .platform = platform,
                         .picUrl = {},
                         .lrcUrl = {}});
        }
        return made;
    }
    static QList<TopList> topLists(int count)
    {
        QList<TopList> made;
        for (int i = 0; i < count; ++i) {
            made.append({.id = QStringLiteral("c%1").arg(i),
                         .name = QStringLiteral("榜 %1").arg(i),
                         .updateFrequency = QStringLiteral("每天更新"),
                         .platform = MusicPlatform::netease});
        }
        return made;
    }
};

} // namespace cadorel
