// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AppIcon.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The icons that a listener can choose from.
class AppIconTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void iconsAreOfferedInTheirOrder();
    void anIconIsFoundByItsName();
    void screensReadTheDefaultIconAsAnEmptyName();
    void thePictureOfTwiceTheSizeIsTriedFirst();
};

void AppIconTest::iconsAreOfferedInTheirOrder()
{
    const QList<AppIcon> expected{
        {std::nullopt, u"默认"_s, u"AppIcon11"_s},
        {u"AppIcon22"_s, u"图标 2"_s, u"AppIcon22"_s},
        {u"AppIcon33"_s, u"图标 3"_s, u"AppIcon33"_s},
        {u"AppIcon44"_s, u"图标 4"_s, u"AppIcon44"_s},
    };
    QCOMPARE(allAppIcons(), expected);
}

void AppIconTest::anIconIsFoundByItsName()
{
    QCOMPARE(appIconOf(std::nullopt), allAppIcons().at(0));
    QCOMPARE(appIconOf(u"AppIcon33"_s), allAppIcons().at(2));
    // The default icon has a picture but no name.
    for (const QString &unknown : {u"AppIcon11"_s, u"appicon22"_s, u"AppIcon55"_s, u"cartoon1"_s, QString()})
        QCOMPARE(appIconOf(unknown), std::nullopt);
}

void AppIconTest::screensReadTheDefaultIconAsAnEmptyName()
{
    const AppIcon &first = allAppIcons().at(0);
    const AppIcon &second = allAppIcons().at(1);
    const QMetaObject &meta = AppIcon::staticMetaObject;
    const QMetaProperty name = meta.property(meta.indexOfProperty("iconName"));
    QCOMPARE(name.readOnGadget(&first).toString(), QString());
    QCOMPARE(name.readOnGadget(&second).toString(), u"AppIcon22"_s);
}

void AppIconTest::thePictureOfTwiceTheSizeIsTriedFirst()
{
    QStringList asked;
    QStringList known;
    const auto lookUp = [&](const QString &name) {
        asked.append(name);
        return known.contains(name) ? u":/"_s + name : QString();
    };
    QCOMPARE(appIconPicture(u"AppIcon11"_s, lookUp), QString());
    QCOMPARE(asked, QStringList({u"AppIcon11@2x"_s, u"AppIcon11"_s}));
    known = {u"AppIcon11"_s};
    QCOMPARE(appIconPicture(u"AppIcon11"_s, lookUp), u":/AppIcon11"_s);
    known.append(u"AppIcon11@2x"_s);
    asked.clear();
    QCOMPARE(appIconPicture(u"AppIcon11"_s, lookUp), u":/AppIcon11@2x"_s);
    QCOMPARE(asked, QStringList{u"AppIcon11@2x"_s});
}

QTEST_GUILESS_MAIN(AppIconTest)
#include "tst_app_icon.moc"
