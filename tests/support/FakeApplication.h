// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

namespace burnwick {

/// An instance of Burnwick as far as another one can tell: it owns the name on a connection of its own.
class FakeApplication final : public FakeService {
public:
    enum class Conduct {
        answers,
        hangs, ///< takes calls and never answers
        leaves ///< gives up the name and fails the call as the bus does for a name without an owner
    };

    explicit FakeApplication(Conduct conduct = Conduct::answers);

    /// What was asked and answered, in order: "Activate token=x id=y", "settings token=x id=y".
    [[nodiscard]] QStringList requests() const { return m_requests; }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override;

    Conduct m_conduct;
    QStringList m_requests;
};

} // namespace burnwick
