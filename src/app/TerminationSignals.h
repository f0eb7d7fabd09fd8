// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace burnwick {

/// Emits a signal in the event loop after SIGTERM, SIGINT or SIGHUP, so that the program ends as if the user
/// had quit it. Signals ignored at start stay ignored. A second SIGTERM or SIGINT ends the process at once.
/// One per process.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void received();

private:
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace burnwick
