// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/ContentTab.h"

#include <QAbstractListModel>

namespace cadorel {

/// The tabs of the root screen that are shown, in their order. Main thread.
class ContentTabModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    /// Each as a delegate knows it: tab, name (of the case), title, symbol, selectedSymbol, kawaiiIcon.
    enum Role { TabRole = Qt::UserRole, NameRole, TitleRole, SymbolRole, SelectedSymbolRole, KawaiiIconRole };

    /// @param tabs what is shown to begin with
    explicit ContentTabModel(QList<ContentTab> tabs, QObject *parent = nullptr);

    const QList<ContentTab> &tabs() const { return m_tabs; }
    int count() const { return static_cast<int>(m_tabs.size()); }
    /// Takes a tab in at its place among all, or out.
    void setShown(ContentTab tab, bool isShown);

    /// The tab of a row; -1 beyond the last one.
    Q_INVOKABLE int tabAt(int row) const;
    /// The row of a tab; -1 for one that is not shown.
    Q_INVOKABLE int rowOf(int tab) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    QList<ContentTab> m_tabs;
};

} // namespace cadorel
