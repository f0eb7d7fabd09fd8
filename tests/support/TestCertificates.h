// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick::test {

/// A certificate signed by itself and its key, both in PEM. They protect nothing and are valid until 2125.
struct TestCertificate {
    const char *certificate;
    const char *key; ///< elliptic curve
};

/// For localhost, 127.0.0.1 and ::1.
extern const TestCertificate localhostCertificate;
/// For elsewhere.example.
extern const TestCertificate elsewhereCertificate;

} // namespace burnwick::test
