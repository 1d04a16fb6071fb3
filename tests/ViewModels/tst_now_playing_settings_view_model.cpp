// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakeFilePicker.h"
#include "Fakes/FakePreferences.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/NowPlayingSettingsViewModel.h"

#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The listener's own pictures on the player's screen.
class TestNowPlayingSettingsViewModel : public QObject
{
    Q_OBJECT
private:
    struct Bench
    {
        FakePreferences preferences;
        FakeDesktopAppearance desktop;
        ThemeManager manager{preferences, desktop};
        ThemeService theme{preferences, manager, desktop};
        FakeFilePicker picker;
        NowPlayingSettingsViewModel settings{theme, &picker};
    };
    QTemporaryDir m_directory;
    std::unique_ptr<Bench> b;

    QUrl picture(const QString &name, const QColor &color) const
    {
        QImage image(120, 80, QImage::Format_RGB32);
        image.fill(color);
        const QString path = m_directory.filePath(name);
        return image.save(path) ? QUrl::fromLocalFile(path) : QUrl();
    }

private Q_SLOTS:
    void init() { b = std::make_unique<Bench>(); }
    void cleanup() { b.reset(); }

    void aPictureBecomesTheBackgroundAndTheStyleStays()
    {
        b->picker.answer = QList<QUrl>{picture(u"red.png"_s, Qt::red)};
        const auto style = b->theme.nowPlayingBackgroundStyle();
        b->settings.chooseBackgroundImage();
        QTRY_VERIFY(!b->theme.customBackgroundImage().isNull());
        QCOMPARE(b->theme.customBackgroundImage().size(), QSize(120, 80));
        QCOMPARE(b->theme.nowPlayingBackgroundStyle(), style);
        QCOMPARE(b->picker.requests.constFirst().kind, FilePicker::Kind::picture);
        QCOMPARE(b->settings.backgroundNotice(), QString());
    }
    void aPictureBecomesTheOneThatDances()
    {
        b->picker.answer = QList<QUrl>{picture(u"blue.png"_s, Qt::blue)};
        b->settings.chooseDancingImage();
        QTRY_VERIFY(b->theme.useCustomImage());
        QCOMPARE(b->theme.customDancingImage().size(), QSize(50, 50));
        QVERIFY(b->theme.customBackgroundImage().isNull());
    }
    void cancellingChangesNothing()
    {
        b->picker.answer = QList<QUrl>{};
        b->settings.chooseBackgroundImage();
        QCoreApplication::processEvents();
        QVERIFY(b->theme.customBackgroundImage().isNull());
    }
    void whatIsNoPictureIsToldAndChangesNothing()
    {
        QFile file(m_directory.filePath(u"text.png"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no picture") > 0);
        file.close();
        b->picker.answer = QList<QUrl>{QUrl::fromLocalFile(file.fileName())};
        b->settings.chooseBackgroundImage();
        QTRY_COMPARE(b->settings.backgroundNotice(), u"“text.png”不是能读取的图片"_s);
        QCOMPARE(b->settings.dancingNotice(), QString());
        QVERIFY(b->theme.customBackgroundImage().isNull());
        b->settings.dismissNotice();
        QCOMPARE(b->settings.backgroundNotice(), QString());
        b->picker.answer = QList<QUrl>{QUrl::fromLocalFile(file.fileName())};
        b->settings.chooseDancingImage();
        QTRY_COMPARE(b->settings.dancingNotice(), u"“text.png”不是能读取的图片"_s);
        QCOMPARE(b->settings.backgroundNotice(), QString());
    }
    void withoutADesktopDialogOursIsAskedFor()
    {
        QSignalSpy asked(&b->settings, &NowPlayingSettingsViewModel::ownPictureDialogRequested);
        b->settings.chooseDancingImage();
        QTRY_COMPARE(asked.count(), 1);
        b->settings.takePicture({picture(u"green.png"_s, Qt::green)});
        QTRY_VERIFY(b->theme.useCustomImage());
        QVERIFY(b->theme.customBackgroundImage().isNull());
    }
    void ofTwoPicturesTheLastCounts()
    {
        b->settings.chooseBackgroundImage();
        b->settings.takePicture({picture(u"first.png"_s, Qt::red)});
        b->settings.takePicture({picture(u"second.png"_s, Qt::blue)});
        // The first may be there for a moment: it can be read before the second is given.
        const auto isSecond = [this] {
            const QImage image = b->theme.customBackgroundImage();
            return !image.isNull() && image.pixelColor(10, 10) == QColor(Qt::blue);
        };
        QTRY_VERIFY(isSecond());
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(isSecond());
    }
};

QTEST_GUILESS_MAIN(TestNowPlayingSettingsViewModel)
#include "tst_now_playing_settings_view_model.moc"
