// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

namespace burnwick {

/// A running instance of Burnwick as another one sees it on the bus.
class FakeApplication final : public FakeService {
public:
    enum class Conduct {
        answers,
        hangs, ///< accepts calls and never replies
        leaves ///< releases the name and fails the call as the bus does for a name without an owner
    };

    explicit FakeApplication(Conduct conduct = Conduct::answers);

    /// Returns the requests that were replied to, in order: "Activate token=x id=y", "settings token=x id=y".
    [[nodiscard]] QStringList requests() const { return m_requests; }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override;

    Conduct m_conduct;
    QStringList m_requests;
};

} // namespace burnwick
