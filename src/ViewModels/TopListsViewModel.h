// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace cadorel {

class OnlineMusicService;
class TopListListModel;
class TopListPageViewModel;

/// The charts of the platforms, and the page of one of them. Main thread.
class TopListsViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/TopListListModel.h")
    Q_MOC_INCLUDE("ViewModels/TopListPageViewModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(QStringList platforms READ platforms CONSTANT)
    Q_PROPERTY(int platformIndex READ platformIndex NOTIFY platformIndexChanged)
    Q_PROPERTY(cadorel::TopListListModel *charts READ charts CONSTANT)
    Q_PROPERTY(Content content READ content NOTIFY contentChanged)
    Q_PROPERTY(cadorel::TopListPageViewModel *page READ page CONSTANT)

public:
    /// What stands in the place of the charts. Capitalised, because QML reads no other enumerators.
    enum class Content { Charts, Loading, Empty };
    Q_ENUM(Content)

    /// @param service outlives this object, @param page becomes its child
    TopListsViewModel(OnlineMusicService &service, TopListPageViewModel *page, QObject *parent);
    ~TopListsViewModel() override;
    Q_DISABLE_COPY_MOVE(TopListsViewModel)

    bool isOpen() const { return m_isOpen; }
    QStringList platforms() const;
    int platformIndex() const;
    MusicPlatform selectedPlatform() const { return m_selectedPlatform; }
    TopListListModel *charts() const { return m_charts; }
    Content content() const { return m_content; }
    TopListPageViewModel *page() const { return m_page; }

    /// Comes up, and loads the charts of the platform unless they are there.
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    /// Chooses a platform by its place in platforms(), and loads its charts.
    Q_INVOKABLE void selectPlatform(int index);
    Q_INVOKABLE void retry();
    Q_INVOKABLE void openChart(int row);
    /// The charts come from another server now.
    void serverChanged();

Q_SIGNALS:
    void isOpenChanged();
    void platformIndexChanged();
    void contentChanged();

private:
    QCoro::Task<void> load(MusicPlatform platform);
    void refreshCharts();
    void refreshContent();
    void setOpen(bool isOpen);

    OnlineMusicService &m_service;
    TopListListModel *m_charts;
    TopListPageViewModel *m_page;
    MusicPlatform m_selectedPlatform = MusicPlatform::netease;
    bool m_isOpen = false;
    /// Requests under way, by platform.
    QHash<MusicPlatform, int> m_loads;
    Content m_content = Content::Empty;
};

} // namespace cadorel
