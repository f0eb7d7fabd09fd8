// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <functional>

namespace burnwick {

/// Returns the absolute path of a program given by name or path; empty when there is no such executable.
using FindExecutable = std::function<QString(const QString &program)>;

} // namespace burnwick
