// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/OnlineAnswers.h"
#include "Fakes/PlayerBench.h"
#include "Services/APIConfigService.h"
#include "Services/OnlineMusicService.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/OnlineSearchViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/TopListListModel.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"

#include <QTest>

namespace cadorel {

/// The view model of the online platforms over the real services, on a machine of fakes.
class OnlineBench : public PlayerBench
{
public:
    OnlineBench()
    {
        start();
        m_apiConfig = std::make_unique<APIConfigService>(home.platform);
        m_apiConfig->setBaseURL(QStringLiteral("https://api.example"));
        m_service = std::make_unique<OnlineMusicService>(home.platform, *m_apiConfig);
        m_viewModel = std::make_unique<CadorelViewModel>(
            player(), importService(), LibrarySources{.onlineMusicService = m_service.get()});
        m_online = std::make_unique<OnlineViewModel>(*m_viewModel, *m_service, *m_apiConfig);
    }
    ~OnlineBench()
    {
        // The screens go while requests are under way, whose answers then touch none of them.
        m_online.reset();
        while (!web().pending.empty())
            answer(onlineAnswers::broken(QStringLiteral("the test has ended")));
        m_viewModel.reset();
        m_service.reset();
    }
    Q_DISABLE_COPY_MOVE(OnlineBench)

    FakeHttpClient &web() { return home.web(); }
    APIConfigService &apiConfig() { return *m_apiConfig; }
    OnlineMusicService &service() { return *m_service; }
    OnlineSearchViewModel &search() { return *m_online->search(); }
    TopListsViewModel &charts() { return *m_online->charts(); }
    TopListPageViewModel &page() { return *charts().page(); }
    APISettingsViewModel &settings() { return *m_online->settings(); }

    /// Types a text and submits it.
    void searchFor(const QString &text)
    {
        search().setSearchText(text);
        search().performSearch();
    }
    /// Answers the oldest request that waits, and lets the player take it.
    void answer(const FakeHttpClient::Result &result)
    {
        web().answer(result);
        settle();
    }
    /// Answers the request whose address holds @p text.
    void answer(const QString &text, const FakeHttpClient::Result &result)
    {
        if (!web().answer(text, result))
            qFatal("nobody has asked for %s", qPrintable(text));
        settle();
    }
    qsizetype sent() { return web().sent.size(); }
    /// The address that was asked for last, as it was sent.
    QString lastAddress()
    {
        return web().sent.isEmpty() ? QString() : web().sent.constLast().url.toString(QUrl::FullyEncoded);
    }
    QStringList titles(const OnlineSongListModel &model)
    {
        QStringList titles;
        for (const OnlineSong &song : model.songs())
            titles.append(song.name);
        return titles;
    }
    static TopList chart(const QString &id, MusicPlatform platform = MusicPlatform::netease)
    {
        return {.id = id,
                .name = QStringLiteral("榜 ") + id,
                .updateFrequency = QStringLiteral("每天更新"),
                .platform = platform};
    }

private:
    std::unique_ptr<APIConfigService> m_apiConfig;
    std::unique_ptr<OnlineMusicService> m_service;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<OnlineViewModel> m_online;
};

} // namespace cadorel
