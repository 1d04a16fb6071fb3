// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace cadorel {

class FilePicker;
class ThemeService;

/// The listener's own pictures on the player's screen: chosen in a dialog, read off the main thread, and
/// handed to the store of the appearance, which everything else in these settings speaks to itself. Main
/// thread.
class NowPlayingSettingsViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList pictureExtensions READ pictureExtensions CONSTANT)
    Q_PROPERTY(QString backgroundNotice READ backgroundNotice NOTIFY noticesChanged)
    Q_PROPERTY(QString dancingNotice READ dancingNotice NOTIFY noticesChanged)

public:
    /// @param theme and @param picker outlive this object; a desktop without a dialog has no picker
    NowPlayingSettingsViewModel(ThemeService &theme, FilePicker *picker, QObject *parent = nullptr);
    ~NowPlayingSettingsViewModel() override;
    Q_DISABLE_COPY_MOVE(NowPlayingSettingsViewModel)

    /// Endings of the files that hold pictures.
    QStringList pictureExtensions() const;
    /// Why the last picture was not taken for that use; empty when nothing is to be said.
    QString backgroundNotice() const { return m_noticeOf == Use::background ? m_notice : QString(); }
    QString dancingNotice() const { return m_noticeOf == Use::dancing ? m_notice : QString(); }

    /// Ask for a picture with the desktop's dialog, or for ours where there is none.
    Q_INVOKABLE void chooseBackgroundImage();
    Q_INVOKABLE void chooseDancingImage();
    /// Takes the picture that the listener has chosen in our dialog, for what was asked last.
    Q_INVOKABLE void takePicture(const QList<QUrl> &urls);
    /// It has been read, or its sheet is closed.
    Q_INVOKABLE void dismissNotice();

Q_SIGNALS:
    void noticesChanged();
    /// The desktop has no dialog: the screen shows the player's own.
    void ownPictureDialogRequested();

private:
    enum class Use { background, dancing };

    void begin(Use use);
    QCoro::Task<void> choose(Use use);
    QCoro::Task<void> take(Use use, QList<QUrl> urls);
    void setNotice(Use use, const QString &notice);

    ThemeService &m_theme;
    FilePicker *m_picker;
    Use m_asked = Use::background;
    /// Of pictures chosen one after the other the last is wanted, whichever is read first.
    int m_pictures = 0;
    Use m_noticeOf = Use::background;
    QString m_notice;
};

} // namespace cadorel
