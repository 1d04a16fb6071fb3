// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "App/CadorelApp.h"
#include "Fakes/FakeStreamPlayer.h"
#include "Platform/Platform.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Seams/ServerChannels.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"

#include <QPromise>
#include <QStringList>
#include <QTemporaryDir>

#include <QCoroFuture>

#include <memory>

namespace cadorel {

/// The makers' channels: they note what they were asked, and the update check answers when the test says so.
class FakeChannels : public UsageLog, public UpdateCheck, public AnnouncementCheck
{
public:
    QStringList calls;
    bool forced = false;
    QPromise<void> updateAnswer;

    FakeChannels() { updateAnswer.start(); }
    void logAppLaunch() override { calls.append(QStringLiteral("launch")); }
    void logAppBackground() override { calls.append(QStringLiteral("background")); }
    QCoro::Task<void> checkForUpdates(bool forceShowPopup) override
    {
        calls.append(forceShowPopup ? QStringLiteral("updates with popup") : QStringLiteral("updates"));
        co_await updateAnswer.future();
    }
    bool isForceUpdateRequired() const override { return forced; }
    QCoro::Task<void> checkAnnouncements() override
    {
        calls.append(QStringLiteral("announcements"));
        co_return;
    }
};

/// The application object over the real services, which stand on fakes and on a throw-away home.
class TestApp
{
public:
    TestApp();
    ~TestApp();
    Q_DISABLE_COPY_MOVE(TestApp)

    /// Plays a song of ten seconds, and forgets the snapshot that this has left.
    bool playASong();

    QTemporaryDir home;
    Platform platform;
    /// Null until the first song.
    FakeStreamPlayer *streamPlayer = nullptr;
    FakeChannels channels;
    std::unique_ptr<LocalMusicImportService> importService;
    std::unique_ptr<AudioPlayerService> player;
    std::unique_ptr<ThemeManager> themeManager;
    std::unique_ptr<ThemeService> themeService;
    std::unique_ptr<CadorelApp> app;
};

} // namespace cadorel
