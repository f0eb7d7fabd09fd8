// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/BlockReader.h"

#include "logs/ByteSearch.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace burnwick {

BlockReader::BlockReader(std::size_t blockSize, std::size_t padding)
    : m_blockSize(std::max<std::size_t>(blockSize, 1))
    , m_padding(padding) {}

void BlockReader::reserve(std::size_t capacity) {
    if (capacity <= m_capacity)
        return;
    // Not a vector: it would touch every byte, and could not grow a long line's buffer in place.
    void *grown = std::realloc(m_buffer.get(), capacity + m_padding);
    if (grown == nullptr)
        throw std::bad_alloc();
    static_cast<void>(m_buffer.release());
    m_buffer.reset(static_cast<char *>(grown));
    m_capacity = capacity;
}

bool BlockReader::readAll(const Read &read, const Consume &consume) {
    reserve(m_blockSize);
    std::size_t filled = 0;
    while (true) {
        if (m_capacity - filled < (m_blockSize + 1) / 2)
            reserve(m_capacity * 2);
        char *data = m_buffer.get();
        const ssize_t count = read(data + filled, m_capacity - filled);
        if (count < 0)
            return false;
        if (count == 0)
            break;
        const std::string_view added(data + filled, static_cast<std::size_t>(count));
        filled += added.size();
        const std::size_t feed = findLast<1>(added, [](const char *p) { return *p == '\n'; });
        if (feed == std::string_view::npos)
            continue;
        const std::size_t end = filled - added.size() + feed + 1;
        std::memset(data + filled, 0, m_padding);
        if (!consume(std::string_view(data, end)))
            return false;
        filled -= end;
        std::memmove(data, data + end, filled);
    }
    if (filled == 0)
        return true;
    std::memset(m_buffer.get() + filled, 0, m_padding);
    return consume(std::string_view(m_buffer.get(), filled));
}

} // namespace burnwick
