// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NowPlayingSettingsViewModel.h"

#include "Platform/FilePicker.h"
#include "Services/ThemeService.h"
#include "Utils/Tasks.h"
#include "ViewModels/PictureFile.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

NowPlayingSettingsViewModel::NowPlayingSettingsViewModel(ThemeService &theme, FilePicker *picker,
                                                         QObject *parent)
    : QObject(parent)
    , m_theme(theme)
    , m_picker(picker)
{
}

NowPlayingSettingsViewModel::~NowPlayingSettingsViewModel() = default;

QStringList NowPlayingSettingsViewModel::pictureExtensions() const
{
    return cadorel::pictureExtensions();
}

void NowPlayingSettingsViewModel::chooseBackgroundImage()
{
    begin(Use::background);
}

void NowPlayingSettingsViewModel::chooseDancingImage()
{
    begin(Use::dancing);
}

void NowPlayingSettingsViewModel::begin(Use use)
{
    m_asked = use;
    dismissNotice();
    detach(choose(use));
}

QCoro::Task<void> NowPlayingSettingsViewModel::choose(Use use)
{
    const QPointer<NowPlayingSettingsViewModel> self(this);
    std::optional<QList<QUrl>> chosen;
    if (m_picker) {
        chosen = co_await m_picker->pick({.kind = FilePicker::Kind::picture,
                                          .title = u"选择图片"_s,
                                          .extensions = cadorel::pictureExtensions(),
                                          .filterName = u"图片"_s,
                                          .parentWindow = {}});
    }
    if (!self)
        co_return;
    if (chosen)
        detach(take(use, *chosen));
    else
        Q_EMIT ownPictureDialogRequested();
}

void NowPlayingSettingsViewModel::takePicture(const QList<QUrl> &urls)
{
    detach(take(m_asked, urls));
}

QCoro::Task<void> NowPlayingSettingsViewModel::take(Use use, QList<QUrl> urls)
{
    if (urls.isEmpty())
        co_return;
    const QPointer<NowPlayingSettingsViewModel> self(this);
    const int number = ++m_pictures;
    const QString path = urls.constFirst().toLocalFile();
    const QImage picture = co_await QtConcurrent::run(readPicture, path);
    if (!self || number != m_pictures)
        co_return;
    if (picture.isNull()) {
        setNotice(use, u"“"_s + urls.constFirst().fileName() + u"”不是能读取的图片"_s);
        co_return;
    }
    if (use == Use::background)
        m_theme.setCustomBackgroundImage(picture);
    else
        m_theme.setCustomDancingImage(picture);
}

void NowPlayingSettingsViewModel::dismissNotice()
{
    setNotice(m_noticeOf, QString());
}

void NowPlayingSettingsViewModel::setNotice(Use use, const QString &notice)
{
    if (use == m_noticeOf && notice == m_notice)
        return;
    m_noticeOf = use;
    m_notice = notice;
    Q_EMIT noticesChanged();
}

} // namespace cadorel
