// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace burnwick::test {

/// Sets a variable of this process, or removes it if the value is null. The destructor restores it.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_before(qgetenv(name)) {
        set(value);
    }
    ~EnvironmentVariable() { set(m_before); }
    EnvironmentVariable(const EnvironmentVariable &) = delete;
    EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

    void set(const QByteArray &value) const { value.isNull() ? qunsetenv(m_name) : qputenv(m_name, value); }

private:
    const char *m_name;
    QByteArray m_before;
};

} // namespace burnwick::test
