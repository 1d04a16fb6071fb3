// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/RunProgram.h"

#include <QList>

#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cadorel {

bool runProgram(const QString &program, const QStringList &arguments)
{
    QList<QByteArray> texts{program.toLocal8Bit()};
    for (const QString &argument : arguments)
        texts << argument.toLocal8Bit();
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    return posix_spawnp(&child, pointers.front(), nullptr, nullptr, pointers.data(), environ) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace cadorel
