// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ReleaseForm.h"
#include "ui/settings/SettingsCard.h"

#include <QCoroTask>
#include <QUrl>

#include <functional>
#include <memory>

namespace burnwick {

class HttpClient;
class RepeatingTimer;
class Scheduler;

/// Checks for a newer release when the user clicks the button, and shows the result in its label.
class UpdateRow final : public SettingsRow {
    Q_OBJECT

public:
    /// The referenced objects must outlive the row.
    struct Services {
        HttpClient &http;
        Scheduler &scheduler;
        QUrl productBaseURL;
        ReleaseForm releaseForm;
        std::function<void(const QUrl &)> openURL; ///< in the browser
    };

    explicit UpdateRow(Services services);
    ~UpdateRow() override;

private:
    [[nodiscard]] QCoro::Task<void> check();
    void showUpToDate();
    void showAvailable(const QString &version);
    /// Cancels a pending return to the first label.
    void setLabel(const QString &label);

    Services m_services;
    std::unique_ptr<RepeatingTimer> m_revert; ///< the pending return to the first label
    bool m_alertIsOpen = false;
};

} // namespace burnwick
