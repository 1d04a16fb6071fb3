// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryStage.h"

#include "Platform/Sql/SqlitePreferences.h"
#include "Views/UserInterface.h"

#include <QCoroTimer>
#include <QElapsedTimer>
#include <QQuickItem>

#include <chrono>

// Generated with the module; the library is static, so nothing else calls it.
void qml_register_types_CadorelGallery();

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A page is at rest when this many looks at it, one after the other, are the same.
constexpr int looksAtRest = 4;
constexpr std::chrono::milliseconds betweenLooks{60};
constexpr std::chrono::milliseconds patience{60000};

std::unique_ptr<Preferences> preferencesWith(const QString &file, ThemeType look)
{
    auto preferences = std::make_unique<SqlitePreferences>(file);
    preferences->setString(QLatin1StringView(ThemeManager::themeStorageKey), rawValue(look));
    return preferences;
}

/// Whether a picture below @p item is still being read.
bool isLoading(const QQuickItem *item)
{
    constexpr int loading = 2; // QQuickImageBase::Loading, whose header is not public
    if (item->isVisible() && item->inherits("QQuickImageBase") && item->property("status").toInt() == loading)
        return true;
    const QList<QQuickItem *> children = item->childItems();
    return std::ranges::any_of(children, &isLoading);
}

} // namespace

GalleryStage::GalleryStage(const GalleryOptions &options)
    : m_preferences(preferencesWith(m_home.filePath(u"preferences.sqlite"_s), options.look))
    , m_themeManager(*m_preferences, m_appearance)
    , m_themeService(*m_preferences, m_themeManager, m_appearance)
    , m_options(options)
{
    m_appearance.setDark(options.isDark);
    m_appearance.setTextScale(options.textScale);
}

GalleryStage::~GalleryStage() = default;

bool GalleryStage::load()
{
    static const bool registered = [] {
        qml_register_types_CadorelGallery();
        return true;
    }();
    Q_UNUSED(registered)
    m_engine = std::make_unique<QQmlApplicationEngine>();
    installUserInterface(*m_engine, {.desktopAppearance = &m_appearance,
                                     .themeManager = &m_themeManager,
                                     .kawaiiDecorations = &m_decorations,
                                     .themeService = &m_themeService,
                                     .appIconService = &m_appIconService});
    m_engine->setInitialProperties({{u"appearance"_s, QVariant::fromValue(&m_appearance)},
                                    {u"page"_s, m_options.page},
                                    {u"width"_s, m_options.size.width()},
                                    {u"height"_s, m_options.size.height()}});
    m_engine->load(u"qrc:/qt/qml/CadorelGallery/GalleryWindow.qml"_s);
    m_window = m_engine->rootObjects().isEmpty()
                   ? nullptr
                   : qobject_cast<QQuickWindow *>(m_engine->rootObjects().constFirst());
    return m_window != nullptr;
}

QCoro::Task<QImage> GalleryStage::picture()
{
    m_appearance.setReducesMotion(true);
    m_window->show();
    QElapsedTimer timer;
    timer.start();
    QImage last;
    int same = 0;
    while (!timer.hasExpired(std::chrono::milliseconds(patience).count())) {
        co_await QCoro::sleepFor(betweenLooks);
        const int height = qCeil(m_window->property("wholeHeight").toDouble());
        if (m_window->height() != height) {
            m_window->resize(m_window->width(), height);
            same = 0;
            continue;
        }
        if (isLoading(m_window->contentItem()))
            continue;
        const QImage now = m_window->grabWindow();
        same = now == last ? same + 1 : 0;
        last = now;
        if (same == looksAtRest)
            co_return last;
    }
    co_return QImage();
}

} // namespace cadorel
