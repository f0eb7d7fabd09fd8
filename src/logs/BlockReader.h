// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string_view>

#include <sys/types.h>

namespace burnwick {

/// Splits a stream of bytes at line ends into blocks, in one buffer that is reused from stream to stream and
/// grows only for a line longer than it. For one thread.
class BlockReader {
public:
    /// Reads at most `size` bytes; returns their number, 0 at the end, -1 on an error.
    using Read = std::function<ssize_t(char *data, std::size_t size)>;

    enum class Content {
        lines,         ///< whole lines with their line feeds, and at the end of the stream the rest
        partOfLongLine ///< the last part includes the line feed; none ends within a UTF-8 character
    };
    /// Gets the bytes in their order; false ends the reading.
    using Take = std::function<bool(std::string_view bytes, Content content)>;

    /// A line that is longer than `longestLine` by a block or more is not stored as a whole but taken in
    /// parts; one that is longer by less may be.
    BlockReader(std::size_t blockSize, std::size_t longestLine);

    /// Returns whether the stream was read to its end and `take` never returned false. Throws std::bad_alloc
    /// when the buffer cannot grow; the next stream can be read all the same.
    bool readAll(const Read &read, const Take &take);

private:
    struct Free {
        void operator()(char *data) const noexcept { std::free(data); } // NOLINT: realloc needs its like
    };

    void reserve(std::size_t capacity);

    std::size_t m_blockSize;
    std::size_t m_longestLine;
    std::size_t m_capacity = 0;
    std::unique_ptr<char, Free> m_buffer;
};

} // namespace burnwick
