// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/TestCertificate.h"

#include "Fixtures/Sound/RunProgram.h"

#include <QFile>
#include <QTemporaryDir>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

TestCertificate makeCertificate()
{
    const QTemporaryDir folder;
    const bool isMade =
        runProgram(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                                  u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                                  u"-subj"_s, u"/CN=127.0.0.1"_s, u"-addext"_s,
                                  u"subjectAltName=IP:127.0.0.1,IP:127.0.0.2,DNS:localhost"_s, u"-keyout"_s,
                                  folder.filePath(u"key.pem"_s), u"-out"_s, folder.filePath(u"cert.pem"_s)});
    if (!isMade)
        qFatal("openssl made no certificate");
    QFile certificate(folder.filePath(u"cert.pem"_s));
    QFile key(folder.filePath(u"key.pem"_s));
    if (!certificate.open(QIODevice::ReadOnly) || !key.open(QIODevice::ReadOnly))
        qFatal("openssl left no certificate behind");
    return {.certificate = QSslCertificate(&certificate), .key = QSslKey(&key, QSsl::Ec)};
}

} // namespace

const TestCertificate &TestCertificate::shared()
{
    static const TestCertificate certificate = makeCertificate();
    return certificate;
}

} // namespace cadorel
