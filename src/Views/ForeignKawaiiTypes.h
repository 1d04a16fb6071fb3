// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of decorations, cassettes and application icons by.
#pragma once

#include "Models/AppIcon.h"
#include "Services/AppIconService.h"
#include "Theme/CassetteLayout.h"
#include "Theme/FloatingHearts.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/StickerPlace.h"
#include "Views/InterfaceParts.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignAppIcon
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcon)
    QML_VALUE_TYPE(appIcon)
};

struct ForeignAppIconService
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIconService)
    QML_NAMED_ELEMENT(AppIconService)
    QML_SINGLETON
public:
    static AppIconService *create(QQmlEngine *engine, QJSEngine *)
    {
        return partOf(engine, &InterfaceParts::appIconService);
    }
};

struct ForeignCassetteLayout
{
    Q_GADGET
    QML_FOREIGN(cadorel::CassetteLayout)
    QML_NAMED_ELEMENT(CassetteLayout)
    QML_SINGLETON
public:
    static CassetteLayout *create(QQmlEngine *, QJSEngine *) { return new CassetteLayout; }
};

struct ForeignFloatingHearts
{
    Q_GADGET
    QML_FOREIGN(cadorel::FloatingHearts)
    QML_NAMED_ELEMENT(FloatingHearts)
    QML_UNCREATABLE("made by KawaiiDecorations")
};

namespace ForeignKawaiiCorners {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::KawaiiCorners)
QML_NAMED_ELEMENT(KawaiiCorners)
} // namespace ForeignKawaiiCorners

struct ForeignKawaiiDecorations
{
    Q_GADGET
    QML_FOREIGN(cadorel::KawaiiDecorations)
    QML_NAMED_ELEMENT(KawaiiDecorations)
    QML_SINGLETON
public:
    static KawaiiDecorations *create(QQmlEngine *engine, QJSEngine *)
    {
        return partOf(engine, &InterfaceParts::kawaiiDecorations);
    }
};

struct ForeignStickerPlace
{
    Q_GADGET
    QML_FOREIGN(cadorel::StickerPlace)
    QML_VALUE_TYPE(stickerPlace)
};

} // namespace cadorel
