// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSslCertificate>
#include <QSslKey>

namespace cadorel {

/// A certificate for 127.0.0.1 and localhost that nobody has signed, made by the program openssl once for the
/// process. A test that wants it trusted adds it to QSslConfiguration::defaultConfiguration(). Any thread.
struct TestCertificate
{
    QSslCertificate certificate;
    QSslKey key;

    /// Fails fatally when openssl does.
    static const TestCertificate &shared();
};

} // namespace cadorel
