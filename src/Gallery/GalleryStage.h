// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Gallery/GalleryAppearance.h"
#include "Gallery/GalleryOptions.h"
#include "Gallery/GallerySystem.h"
#include "Gallery/SeededRandom.h"
#include "Platform/Linux/SystemClock.h"
#include "Services/AppIconService.h"
#include "Services/ThemeService.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"

#include <QCoroTask>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// The gallery's window and what it stands on: preferences that are thrown away, a desktop and chance of its
/// own. Main thread.
class GalleryStage
{
public:
    explicit GalleryStage(const GalleryOptions &options);
    ~GalleryStage();
    Q_DISABLE_COPY_MOVE(GalleryStage)

    /// Makes the window, without showing it; false when the screens do not load, which is told as warnings.
    bool load();
    /// Null before load().
    QQuickWindow *window() const { return m_window; }
    ThemeManager &themeManager() { return m_themeManager; }
    ThemeService &themeService() { return m_themeService; }
    GalleryAppearance &appearance() { return m_appearance; }

    /// Draws the page in its whole height, once everything in it has come to rest. What moves of itself does
    /// not in a picture. The stage outlives the task. @return nothing when that takes too long
    QCoro::Task<QImage> picture();

private:
    QTemporaryDir m_home;
    std::unique_ptr<Preferences> m_preferences;
    GalleryAppearance m_appearance;
    ThemeManager m_themeManager;
    ThemeService m_themeService;
    SystemClock m_clock;
    SeededRandom m_random;
    KawaiiDecorations m_decorations{m_clock, m_random};
    GallerySystem m_system;
    AppIconService m_appIconService{m_system};
    const GalleryOptions m_options;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
};

} // namespace cadorel
