// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace burnwick {

/// A desktop's settings portal. Without a value for a key it answers with the portal's error.
class FakeSettingsPortal final : public FakeService {
public:
    explicit FakeSettingsPortal(QString name = QStringLiteral("fake-portal"));

    /// As they are sent: a variant around the value is the caller's business.
    QHash<QString, QVariant> answers;

    void announce(const QString &group, const QString &key, const QVariant &value);

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override;
};

/// The value in that many D-Bus variants.
[[nodiscard]] QVariant wrapped(const QVariant &value, int depth = 2);

/// Sends what the portal sends about a changed value, from any connection.
void sendSettingChanged(const QDBusConnection &sender, const QString &group, const QString &key,
                        const QVariant &value);

} // namespace burnwick
