// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/SecretWatch.h"

#include "Fixtures/EndWithParent.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTest>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int limitMs = 20'000;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SecretWatch::SecretWatch(const QStringList &secrets)
{
    for (const QString &secret : secrets)
        m_secrets.append(SecretForms(secret));
}

SecretWatch::~SecretWatch()
{
    if (m_monitor.state() == QProcess::NotRunning)
        return;
    m_monitor.kill();
    m_monitor.waitForFinished();
}

QByteArray SecretWatch::recorded() const
{
    return contents(m_directory.filePath(u"bus"_s));
}

bool SecretWatch::isRecorded(const QString &marker)
{
    return QTest::qWaitFor(
        [&] {
            m_bus->hasService(marker);
            return recorded().contains(marker.toUtf8());
        },
        limitMs);
}

bool SecretWatch::watchBus(PrivateBus &bus)
{
    m_bus = &bus;
    endWithParent(m_monitor);
    m_monitor.setStandardOutputFile(m_directory.filePath(u"bus"_s));
    m_monitor.setStandardErrorFile(QProcess::nullDevice());
    m_monitor.start(u"dbus-monitor"_s, {u"--address"_s, bus.address(), u"--binary"_s});
    return isRecorded(u"com.cadorel.test.Begin"_s);
}

bool SecretWatch::lookAtBus()
{
    if (!isRecorded(u"com.cadorel.test.End"_s))
        return false;
    lookAt(u"bus"_s, recorded());
    return true;
}

void SecretWatch::lookAt(const QString &place, const QByteArray &bytes)
{
    for (const SecretForms &secret : std::as_const(m_secrets)) {
        for (const QString &form : secret.in(bytes)) {
            const QString finding = place + u": "_s + form;
            if (!m_findings.contains(finding))
                m_findings.append(finding);
        }
    }
}

void SecretWatch::lookAtFiles(const QString &folder, const QStringList &except)
{
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        lookAt(u"name of a file"_s, path.toUtf8());
        if (entries.fileInfo().isFile() && !except.contains(path))
            lookAt(QDir(folder).relativeFilePath(path), contents(path));
    }
}

void SecretWatch::lookAtProcess(qint64 process)
{
    const QString entry = u"/proc/%1/"_s.arg(process);
    lookAt(u"command line"_s, contents(entry + u"cmdline"_s));
    lookAt(u"environment"_s, contents(entry + u"environ"_s));
    for (const QString &thread : QDir(entry + u"task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        lookAt(u"name of a thread"_s, contents(entry + u"task/"_s + thread + u"/comm"_s));
        for (const QByteArray &child :
             contents(entry + u"task/"_s + thread + u"/children"_s).simplified().split(' ')) {
            if (!child.isEmpty())
                lookAtProcess(child.toLongLong());
        }
    }
}

void SecretWatch::lookAtWindows(const QProcessEnvironment &display)
{
    QProcess tool;
    tool.setProcessEnvironment(display);
    tool.start(u"xdotool"_s, {u"search"_s, u"--name"_s, u"."_s, u"getwindowname"_s, u"%@"_s});
    tool.waitForFinished();
    lookAt(u"title of a window"_s, tool.readAllStandardOutput());
}

} // namespace cadorel
