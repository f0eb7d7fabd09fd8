// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace burnwick {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop, so that the program ends as if the user
/// had quit it. Those that whoever started it had it ignore stay ignored. A second SIGTERM or SIGINT ends the
/// process at once. One per process.
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
