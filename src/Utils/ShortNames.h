// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

/// Names as a question has them, which goes on behind them and is to be read to its end. Screens know it as
/// the singleton of this name. Any thread.
class ShortNames : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// A name of files, tags or servers in one line. Of one that would fill the question only the beginning,
    /// with an ellipsis.
    Q_INVOKABLE static QString of(const QString &name);
};

} // namespace cadorel
