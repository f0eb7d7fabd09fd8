// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace burnwick {

/// The body of a request that must not be sent twice. It cannot be rewound, so that the network library
/// cannot repeat a request whose connection broke before a response.
class SingleUseBody final : public QIODevice {
public:
    explicit SingleUseBody(QByteArray bytes)
        : m_bytes(std::move(bytes)) {
        open(ReadOnly | Unbuffered);
    }

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] bool reset() override { return false; }
    [[nodiscard]] bool atEnd() const override { return m_read == m_bytes.size() && QIODevice::atEnd(); }
    [[nodiscard]] qint64 bytesAvailable() const override {
        return m_bytes.size() - m_read + QIODevice::bytesAvailable();
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override {
        const auto size = std::min<qint64>(maxSize, m_bytes.size() - m_read);
        std::copy_n(m_bytes.constData() + m_read, size, data);
        m_read += size;
        return size;
    }
    qint64 writeData(const char * /*data*/, qint64 /*maxSize*/) override { return -1; }

private:
    QByteArray m_bytes;
    qsizetype m_read = 0;
};

} // namespace burnwick
