// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Gallery.h"

namespace cadorel::gallery {

void settingsStates(const Gallery &gallery)
{
    TestWindow test;
    gallery.show(test);
    test.click(u"settingsTab"_s);
    gallery.save(test, u"settings"_s);
    QTest::keyClick(test.window, Qt::Key_Tab);
    test.click(u"showWebDAVSwitch"_s);
    gallery.save(test, u"settings-changed"_s);
    test.click(u"appearanceRowButton"_s);
    gallery.save(test, u"settings-appearance"_s);
    test.click(u"appIconRowButton"_s);
    gallery.save(test, u"settings-icons"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.click(u"aboutRowButton"_s);
    gallery.save(test, u"settings-about"_s);
}

} // namespace cadorel::gallery
