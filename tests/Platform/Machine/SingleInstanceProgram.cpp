// SPDX-License-Identifier: GPL-3.0-or-later
// A player without a window: SingleInstanceProgram DATA-DIRECTORY LIMIT-MS [wait]
// Prints "first" and runs until it is stopped, printing "raise TOKEN" for each request; or ends with 10 when
// another runs and with 11 when another does not answer. With "wait" it starts at a line on standard input.
#include "Platform/Linux/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

void say(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(3) == u"wait") {
        say("ready");
        std::getchar();
    }
    const auto instance = SingleInstance::acquire(arguments.value(1), SingleInstance::activationToken(),
                                                  std::chrono::milliseconds(arguments.value(2).toInt()));
    if (!instance)
        return instance.error() == SingleInstance::Refusal::raised ? 10 : 11;
    QObject::connect(instance->get(), &SingleInstance::raiseRequested, &application,
                     [](const QByteArray &token) { say("raise " + token); });
    say("first");
    return QCoreApplication::exec();
}
