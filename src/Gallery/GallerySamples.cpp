// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GallerySamples.h"

#include "Gallery/GalleryCovers.h"
#include "Models/CassetteStyle.h"
#include "Utils/AppIcons.h"
#include "Utils/KawaiiIcon.h"
#include "Utils/SymbolFiles.h"

#include <QMetaProperty>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// The names that screens use and what they stand for, as the family itself tells them.
template <typename Family>
QVariantMap familyOf(const QString &name)
{
    const Family family;
    const QMetaObject &about = Family::staticMetaObject;
    QVariantList icons;
    for (int i = 0; i < about.propertyCount(); ++i) {
        const QMetaProperty property = about.property(i);
        icons.append(QVariantMap{{u"constant"_s, QString::fromLatin1(property.name())},
                                 {u"symbol"_s, property.readOnGadget(&family)}});
    }
    return {{u"name"_s, name}, {u"icons"_s, icons}};
}

} // namespace

GallerySamples::GallerySamples(QObject *parent)
    : QObject(parent)
    , m_covers(makeGalleryCovers())
{
}

QVariantList GallerySamples::iconFamilies()
{
    return {familyOf<AppIcons::Playback>(u"Playback"_s),   familyOf<AppIcons::Audio>(u"Audio"_s),
            familyOf<AppIcons::Music>(u"Music"_s),         familyOf<AppIcons::Navigation>(u"Navigation"_s),
            familyOf<AppIcons::Action>(u"Action"_s),       familyOf<AppIcons::Favorite>(u"Favorite"_s),
            familyOf<AppIcons::File>(u"File"_s),           familyOf<AppIcons::User>(u"User"_s),
            familyOf<AppIcons::Settings>(u"Settings"_s),   familyOf<AppIcons::Timer>(u"Timer"_s),
            familyOf<AppIcons::Status>(u"Status"_s),       familyOf<AppIcons::Appearance>(u"Appearance"_s),
            familyOf<AppIcons::Animation>(u"Animation"_s), familyOf<AppIcons::Misc>(u"Misc"_s)};
}

QStringList GallerySamples::otherSymbols()
{
    QStringList others = symbolNames();
    const QVariantList families = iconFamilies();
    for (const QVariant &family : families) {
        const QVariantList icons = family.toMap().value(u"icons"_s).toList();
        for (const QVariant &icon : icons)
            others.removeAll(icon.toMap().value(u"symbol"_s).toString());
    }
    std::ranges::sort(others);
    return others;
}

QStringList GallerySamples::kawaiiIcons()
{
    const KawaiiIcon vocabulary;
    const QMetaObject &about = KawaiiIcon::staticMetaObject;
    QStringList names;
    for (int i = about.propertyOffset(); i < about.propertyCount(); ++i)
        names.append(about.property(i).read(&vocabulary).toString());
    return names;
}

QVariantList GallerySamples::cassettes()
{
    QVariantList cassettes;
    for (const CassetteStyle style : allCassetteStyles()) {
        if (style == CassetteStyle::none)
            continue;
        const CassetteConfig config = defaultConfig(style);
        cassettes.append(QVariantMap{{u"displayName"_s, displayName(style)},
                                     {u"imageName"_s, imageName(style)},
                                     {u"scale"_s, config.scale},
                                     {u"offsetX"_s, config.offsetX},
                                     {u"offsetY"_s, config.offsetY}});
    }
    return cassettes;
}

} // namespace cadorel
