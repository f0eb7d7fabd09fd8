// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>

namespace burnwick {

/// The body of a request that must not be sent twice: it can be read once and not be rewound, so that the
/// network library cannot repeat a request whose connection broke before an answer.
class SingleUseBody final : public QIODevice {
public:
    explicit SingleUseBody(QByteArray bytes);

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] bool atEnd() const override { return m_read == m_bytes.size() && QIODevice::atEnd(); }
    [[nodiscard]] qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    QByteArray m_bytes;
    qsizetype m_read = 0;
};

} // namespace burnwick
