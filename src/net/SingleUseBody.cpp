// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/SingleUseBody.h"

#include <algorithm>
#include <utility>

namespace burnwick {

SingleUseBody::SingleUseBody(QByteArray bytes)
    : m_bytes(std::move(bytes)) {
    open(ReadOnly | Unbuffered);
}

qint64 SingleUseBody::bytesAvailable() const {
    return m_bytes.size() - m_read + QIODevice::bytesAvailable();
}

qint64 SingleUseBody::readData(char *data, qint64 maxSize) {
    const auto size = std::min<qint64>(maxSize, m_bytes.size() - m_read);
    std::copy_n(m_bytes.constData() + m_read, size, data);
    m_read += size;
    return size;
}

qint64 SingleUseBody::writeData(const char *, qint64) {
    return -1;
}

} // namespace burnwick
