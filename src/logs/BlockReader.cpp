// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/BlockReader.h"

#include "logs/ByteSearch.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace burnwick {

namespace {

/// How many bytes there are before a character of UTF-8 that may be cut at the end.
std::size_t endOfCharacters(std::string_view bytes) {
    const std::size_t longestCut = std::min<std::size_t>(3, bytes.size());
    for (std::size_t back = 1; back <= longestCut; ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if (byte >= 0xC0)
            return bytes.size() - back;
        if (byte < 0x80)
            break;
    }
    return bytes.size();
}

} // namespace

BlockReader::BlockReader(std::size_t blockSize, std::size_t padding, std::size_t longestLine)
    : m_blockSize(std::max<std::size_t>(blockSize, 1))
    , m_padding(padding)
    , m_longestLine(longestLine) {}

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

bool BlockReader::readAll(const Read &read, const Consume &consume, const PassOver &passOver) {
    reserve(m_blockSize);
    std::size_t filled = 0;
    const auto hand = [&](const std::function<bool(std::string_view)> &take, std::size_t size) {
        char *data = m_buffer.get();
        if (!take(std::string_view(data, size)))
            return false;
        filled -= size;
        std::memmove(data, data + size, filled);
        return true;
    };
    bool inLongLine = false;
    while (true) {
        if (m_capacity - filled < (m_blockSize + 1) / 2)
            reserve(std::min(m_capacity * 2, m_longestLine + m_blockSize));
        char *data = m_buffer.get();
        const ssize_t count = read(data + filled, std::min(m_capacity - filled, m_blockSize));
        if (count < 0)
            return false;
        if (count == 0)
            break;
        std::size_t searched = filled;
        filled += static_cast<std::size_t>(count);
        // Any value would do, but memory checkers object to what was never written.
        std::memset(data + filled, 0, m_padding);
        if (inLongLine) {
            const std::string_view piece(data, filled);
            const std::size_t feed = piece.find('\n', searched);
            inLongLine = feed == std::string_view::npos;
            if (!hand(passOver, inLongLine ? endOfCharacters(piece) : feed + 1))
                return false;
            if (inLongLine)
                continue;
            searched = 0;
        }
        const std::string_view added(data + searched, filled - searched);
        const std::size_t feed = findLast<1>(added, [](const char *p) { return *p == '\n'; });
        if (feed != std::string_view::npos) {
            if (!hand(consume, searched + feed + 1))
                return false;
        } else if (filled > m_longestLine) {
            inLongLine = true;
            if (!hand(passOver, endOfCharacters({data, filled})))
                return false;
        }
    }
    return filled == 0 || hand(inLongLine ? passOver : consume, filled);
}

} // namespace burnwick
