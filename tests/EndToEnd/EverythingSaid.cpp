// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/EverythingSaid.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTest>

#include <cstdio>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

EverythingSaid::EverythingSaid()
{
    if (!m_errors.open())
        qFatal("there is no file for what is said");
    m_standardError = ::dup(STDERR_FILENO);
    ::dup2(m_errors.handle(), STDERR_FILENO);
    QLoggingCategory::setFilterRules(u"cadorel.*=true"_s);
    s_current = this;
    m_previous = qInstallMessageHandler(&EverythingSaid::handle);
}

EverythingSaid::~EverythingSaid()
{
    qInstallMessageHandler(m_previous);
    s_current = nullptr;
    QLoggingCategory::setFilterRules({});
    const QByteArray said = text();
    ::dup2(m_standardError, STDERR_FILENO);
    ::close(m_standardError);
    if (QTest::currentTestFailed())
        std::fprintf(stderr, "%s\n", said.constData());
}

QByteArray EverythingSaid::text()
{
    std::fflush(stderr);
    QFile errors(m_errors.fileName());
    const QByteArray written = errors.open(QIODevice::ReadOnly) ? errors.readAll() : QByteArray();
    const QMutexLocker lock(&m_mutex);
    return m_messages + written;
}

void EverythingSaid::handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    EverythingSaid *current = s_current;
    // The process ends with it: this is where somebody reads it.
    if (type == QtFatalMsg)
        current->m_previous(type, context, message);
    const QMutexLocker lock(&current->m_mutex);
    current->m_messages += QByteArray(context.category) + ": " + message.toUtf8() + '\n';
}

} // namespace cadorel
