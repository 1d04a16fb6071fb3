// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/WebDAVService.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
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
        t->click(QStringLiteral("serversButton"));
        QTRY_VERIFY(t->item(QStringLiteral("serversView"))->property("covers").toBool());
    }
    void openForm()
    {
        t->click(QStringLiteral("addServerButton"));
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
};

} // namespace cadorel
