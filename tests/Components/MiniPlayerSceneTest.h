// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Components/MiniPlayerScene.h"

#include <QSignalSpy>

namespace cadorel {

/// What the tests of the floating disc have in common: a fresh scene for each function, and no warning may
/// come up.
class MiniPlayerSceneTest : public QObject
{
    Q_OBJECT
protected:
    std::unique_ptr<MiniPlayerScene> s;

    QQuickWindow *window() { return s->scene->window(); }
    /// What the row of test data names.
    Pointer pointer()
    {
        QFETCH(const bool, finger);
        return {window(), finger};
    }
    static void addPointers()
    {
        QTest::addColumn<bool>("finger");
        QTest::newRow("mouse") << false;
        QTest::newRow("finger") << true;
    }

private Q_SLOTS:
    void init()
    {
        s = std::make_unique<MiniPlayerScene>();
        s->scene->warnings.take();
    }
    void cleanup()
    {
        const QStringList warnings = s->scene->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }
};

} // namespace cadorel
