// SPDX-License-Identifier: GPL-3.0-or-later
// A window and the choice of its icon. Each line of standard input is the name of an icon, an empty one the
// default; what is current then is said.
#include "Platform/Linux/LinuxSystem.h"
#include "Services/AppIconService.h"

#include <QGuiApplication>
#include <QRasterWindow>
#include <QTextStream>

using namespace cadorel;
using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QTextStream input(stdin);
    QTextStream output(stdout);
    LinuxSystem system(QGuiApplication::arguments().value(1));
    AppIconService service(system);
    QRasterWindow window;
    window.setTitle(u"icons"_s);
    window.show();
    QGuiApplication::processEvents();
    const auto say = [&] {
        output << "icon " << service.currentIconName().value_or(u"default"_s) << Qt::endl;
    };
    say();
    for (QString line; input.readLineInto(&line);) {
        service.choose(line);
        QGuiApplication::processEvents();
        say();
    }
    return 0;
}
