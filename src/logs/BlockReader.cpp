// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/BlockReader.h"

#include "logs/ByteSearch.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace burnwick {

namespace {

/// The length of the bytes without a UTF-8 character that may be cut off at the end.
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

/// The length of the bytes up to and including the last line feed.
std::size_t sizeOfLines(std::string_view bytes) {
    std::size_t size = 0;
    static_cast<void>(visitMatchesFromEnd<1>(
        bytes, [](const char *p) { return isByte(*p, '\n'); },
        [&size](std::size_t at) {
            size = at + 1;
            return false;
        }));
    return size;
}

} // namespace

BlockReader::BlockReader(std::size_t blockSize, std::size_t longestLine)
    : m_blockSize(std::max<std::size_t>(blockSize, 1))
    , m_longestLine(longestLine) {}

void BlockReader::reserve(std::size_t capacity) {
    if (capacity <= m_capacity)
        return;
    // Not a vector: it would write every byte, and could not grow a long line's buffer in place.
    void *grown = std::realloc(m_buffer.get(), capacity);
    if (grown == nullptr)
        throw std::bad_alloc();
    static_cast<void>(m_buffer.release());
    m_buffer.reset(static_cast<char *>(grown));
    m_capacity = capacity;
}

bool BlockReader::readAll(const Read &read, const Take &take) {
    reserve(m_blockSize);
    std::size_t filled = 0;
    auto content = Content::lines;
    const auto takeFirst = [&](std::size_t size) {
        char *data = m_buffer.get();
        if (!take({data, size}, content))
            return false;
        filled -= size;
        std::memmove(data, data + size, filled);
        return true;
    };
    while (true) {
        if (m_capacity - filled < (m_blockSize + 1) / 2)
            reserve(std::min(m_capacity * 2, m_longestLine + m_blockSize));
        char *data = m_buffer.get();
        const ssize_t count = read(data + filled, std::min(m_capacity - filled, m_blockSize));
        if (count < 0)
            return false;
        if (count == 0)
            return filled == 0 || takeFirst(filled);
        std::size_t searched = filled;
        filled += static_cast<std::size_t>(count);
        if (content == Content::partOfLongLine) {
            const std::string_view part(data, filled);
            const std::size_t feed = part.find('\n', searched);
            const bool ends = feed != std::string_view::npos;
            if (!takeFirst(ends ? feed + 1 : endOfCharacters(part)))
                return false;
            if (!ends)
                continue;
            content = Content::lines;
            searched = 0;
        }
        const std::size_t lines = sizeOfLines({data + searched, filled - searched});
        if (lines > 0) {
            if (!takeFirst(searched + lines))
                return false;
        } else if (filled > m_longestLine) {
            content = Content::partOfLongLine;
            if (!takeFirst(endOfCharacters({data, filled})))
                return false;
        }
    }
}

} // namespace burnwick
