// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace cadorel {

/// What the gallery shows its components with. Main thread.
class GallerySamples : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Addresses of covers.
    Q_PROPERTY(QStringList covers READ covers CONSTANT)
    /// The vocabulary of symbols: `name` of each family, and its `icons` with `constant` and `symbol`.
    Q_PROPERTY(QVariantList iconFamilies READ iconFamilies CONSTANT)
    /// Symbols that stand in no family.
    Q_PROPERTY(QStringList otherSymbols READ otherSymbols CONSTANT)
    /// Names of the pictures that stand for symbols in the pink look.
    Q_PROPERTY(QStringList kawaiiIcons READ kawaiiIcons CONSTANT)
    /// The cassettes: `displayName`, `imageName`, and the usual `scale`, `offsetX` and `offsetY` of the
    /// cover.
    Q_PROPERTY(QVariantList cassettes READ cassettes CONSTANT)
public:
    explicit GallerySamples(QObject *parent = nullptr);

    QStringList covers() const { return m_covers; }
    static QVariantList iconFamilies();
    static QStringList otherSymbols();
    static QStringList kawaiiIcons();
    static QVariantList cassettes();

private:
    const QStringList m_covers;
};

} // namespace cadorel
