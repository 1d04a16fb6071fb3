// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"

#include <QElapsedTimer>
#include <QQuickAsyncImageProvider>
#include <QQuickImageResponse>
#include <QQuickTextureFactory>

#include <algorithm>
#include <map>
#include <mutex>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds that a picture stays when another one is wanted.
constexpr int patience = 300;
/// Milliseconds between two sizes of one picture.
constexpr int redrawInterval = 100;

class HeldAnswer : public QQuickImageResponse
{
public:
    QQuickTextureFactory *textureFactory() const override
    {
        return m_image.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    QString errorString() const override { return m_image.isNull() ? u"none"_s : QString(); }
    void answer(const QImage &image)
    {
        m_image = image;
        Q_EMIT finished();
    }

private:
    QImage m_image;
};

/// Answers once it is told to. A picture "red" is red; "broken" is none.
class HeldProvider : public QQuickAsyncImageProvider
{
public:
    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &size) override
    {
        const std::lock_guard lock(m_mutex);
        auto *response = new HeldAnswer;
        m_asked.append(id);
        m_waiting.append({id, size, response});
        return response;
    }
    /// All addresses that were asked for, with what was told of the corners.
    QStringList asked() const
    {
        const std::lock_guard lock(m_mutex);
        return m_asked;
    }
    bool isAskedFor(const QString &name) const
    {
        const std::lock_guard lock(m_mutex);
        return std::ranges::any_of(m_waiting, [&](const Waiting &one) { return isOf(one, name); });
    }
    /// Answers what is asked for by that name.
    void answer(const QString &name)
    {
        QList<Waiting> answered;
        {
            const std::lock_guard lock(m_mutex);
            std::ranges::copy_if(m_waiting, std::back_inserter(answered),
                                 [&](const Waiting &one) { return isOf(one, name); });
            m_waiting.removeIf([&](const Waiting &one) { return isOf(one, name); });
        }
        for (const Waiting &one : std::as_const(answered)) {
            // What nobody wants any more has gone.
            if (!one.response)
                continue;
            QImage image;
            if (name != "broken"_L1) {
                image = QImage(one.size, QImage::Format_RGB32);
                image.fill(QColor(name));
            }
            one.response->answer(image);
        }
    }

private:
    struct Waiting
    {
        QString id;
        QSize size;
        QPointer<HeldAnswer> response;
    };
    static bool isOf(const Waiting &one, const QString &name) { return one.id.section(u'?', 0, 0) == name; }

    mutable std::mutex m_mutex; // the engine's thread of pictures asks
    QStringList m_asked;
    QList<Waiting> m_waiting;
};

} // namespace

/// A picture that does not blink, whose provider answers when it wants to.
class TestSteadyImage : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;
    HeldProvider *m_provider = nullptr; // the engine's

    void want(const QString &name) { s->root()->setProperty("source", u"image://held/"_s + name); }
    bool isPicture() const { return s->root()->property("isPicture").toBool(); }
    bool isDrawn(const QColor &color)
    {
        return isPicture() && s->grab().pixelColor(ThemedScene::centre(s->root())) == color;
    }
    /// Answers until the picture is shown; one from before may still be known.
    bool comes(const QString &name)
    {
        return QTest::qWaitFor([&] {
            m_provider->answer(name);
            return isDrawn(QColor(name));
        });
    }
    /// Whether that holds from now on until what a picture is given has long passed.
    template <typename Condition>
    static bool holdsPastPatience(Condition condition)
    {
        QElapsedTimer passed;
        passed.start();
        return QTest::qWaitFor([&] { return !condition() || passed.hasExpired(2 * patience); }) &&
               condition();
    }

private Q_SLOTS:
    void init()
    {
        s = std::make_unique<ThemedScene>();
        QVERIFY(s->show("SteadyImage { width: 200; height: 200 }"));
        m_provider = new HeldProvider;
        qmlEngine(s->root())->addImageProvider(u"held"_s, m_provider);
    }
    void cleanup()
    {
        s->warnings.take(); // a picture that cannot be had is one
        s.reset();
    }

    void thePictureBeforeStaysUntilTheNextIsThere()
    {
        want(u"red"_s);
        QVERIFY(!isPicture());
        QVERIFY(comes(u"red"_s));
        want(u"lime"_s);
        QTRY_VERIFY(m_provider->isAskedFor(u"lime"_s));
        QVERIFY(isDrawn(Qt::red));
        QVERIFY(comes(u"lime"_s));
    }
    void whatIsLongInComingIsNotShownAsTheOneBefore()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        QElapsedTimer passed;
        passed.start();
        want(u"lime"_s);
        QTRY_VERIFY(!isPicture());
        QVERIFY(passed.elapsed() >= patience - 50);
        QVERIFY(comes(u"lime"_s));
    }
    void aPictureThatIsWantedAgainStays()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        want(u"lime"_s);
        QTRY_VERIFY(m_provider->isAskedFor(u"lime"_s));
        want(u"red"_s);
        QVERIFY(holdsPastPatience([this] { return isPicture(); }));
        QVERIFY(isDrawn(Qt::red));
        // What came too late is not shown.
        m_provider->answer(u"lime"_s);
        QVERIFY(isDrawn(Qt::red));
    }
    void aPictureThatIsWantedAgainInAnotherSizeStays()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        want(u"lime"_s);
        QTRY_VERIFY(m_provider->isAskedFor(u"lime"_s));
        s->root()->setSize({300, 300});
        want(u"red"_s);
        QVERIFY(holdsPastPatience([this] { return isDrawn(Qt::red); }));
        QVERIFY(comes(u"red"_s));
    }
    void aPictureThatWentIsAskedForAnew()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        want(u"lime"_s);
        QTRY_VERIFY(!isPicture());
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
    }
    void manyThatPassByCountAsOneWait()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        QElapsedTimer passed;
        passed.start();
        // Each of them comes before the one before has had its time.
        int name = 0;
        QVERIFY(QTest::qWaitFor([&] {
            want(u"blue%1"_s.arg(name++));
            return !isPicture();
        }));
        QVERIFY(passed.elapsed() >= patience - 50);
    }
    void oneThatCannotBeHadIsNoPicture()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        want(u"broken"_s);
        QTRY_VERIFY(m_provider->isAskedFor(u"broken"_s));
        m_provider->answer(u"broken"_s);
        QTRY_VERIFY(!isPicture());
        want(u"lime"_s);
        QVERIFY(comes(u"lime"_s));
    }
    void noPictureIsNoneAtOnce()
    {
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        s->root()->setProperty("source", QString());
        QVERIFY(!isPicture());
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
    }

    void itsSizesAskForFewPictures_data()
    {
        QTest::addColumn<bool>("answers");
        QTest::addRow("that come at once") << true;
        QTest::addRow("that are long in coming") << false;
    }
    void itsSizesAskForFewPictures()
    {
        QFETCH(bool, answers);
        s->root()->setProperty("cornerRadius", 12.0);
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        QCOMPARE(m_provider->asked(), QStringList{u"red?radius=0.0600"_s});
        QElapsedTimer passed;
        passed.start();
        // The share of the corners is another one with each pixel.
        int width = 200;
        QVERIFY(QTest::qWaitFor(
            [&] {
                ++width;
                s->root()->setSize({qreal(width), qreal(width)});
                if (answers)
                    m_provider->answer(u"red"_s);
                return !isPicture() || (width - 200 >= 60 && passed.hasExpired(2 * patience));
            },
            30'000));
        QVERIFY(isPicture());
        const qint64 rests = passed.elapsed() / redrawInterval;
        QVERIFY2(m_provider->asked().size() <= 3 + rests, qPrintable(m_provider->asked().join(u' ')));
        // In the end it is drawn as large as it is shown.
        const QString last = u"red?radius=%1"_s.arg(12.0 / width, 0, 'f', 4);
        QTRY_COMPARE(m_provider->asked().last(), last);
        QVERIFY(comes(u"red"_s));
    }
    void manyCornersAskForFewPictures()
    {
        s->root()->setProperty("cornerRadius", 0.0);
        want(u"red"_s);
        QVERIFY(comes(u"red"_s));
        for (int radius = 1; radius <= 40; ++radius)
            s->root()->setProperty("cornerRadius", qreal(radius));
        QTRY_COMPARE(m_provider->asked().last(), u"red?radius=0.2000"_s);
        QVERIFY(isPicture());
        // The first, one at once and one after the rest.
        QVERIFY2(m_provider->asked().size() <= 3, qPrintable(m_provider->asked().join(u' ')));
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestSteadyImage)
#include "tst_steady_image.moc"
