// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusContext>

namespace burnwick {

/// An instance of Burnwick as far as another one can tell: it owns the name on a connection of its own.
class FakeApplication final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Conduct {
        answers,
        hangs, ///< takes calls and never answers
        leaves ///< gives up the name and fails the call as the bus does for a name without an owner
    };

    explicit FakeApplication(Conduct conduct = Conduct::answers);
    ~FakeApplication() override;

    /// What was asked, in order: "Activate token=x id=y", "settings token=x id=y".
    [[nodiscard]] QStringList requests() const { return m_requests; }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    void take(const QString &what, const QVariantMap &platformData);

    Conduct m_conduct;
    QDBusConnection m_bus;
    QStringList m_requests;
};

} // namespace burnwick
