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

/// Cuts a stream of bytes into blocks that end at line ends, in one buffer that is kept from file to file and
/// grows only for a line longer than it, up to the longest line that is taken. For one thread.
class BlockReader {
public:
    /// Fills at most `size` bytes; how many it did, 0 at the end, -1 on an error.
    using Read = std::function<ssize_t(char *data, std::size_t size)>;
    /// Gets each block: whole lines with their feeds, and at the end what follows the last feed. Behind it
    /// `padding` bytes are readable. False ends the reading.
    using Consume = std::function<bool(std::string_view block)>;

    /// Gets the pieces of a line that is too long to be in a block, up to and with its feed. A piece ends
    /// where a character of UTF-8 does, if it is UTF-8. False ends the reading.
    using PassOver = std::function<bool(std::string_view piece)>;

    /// Lines up to `longestLine` come in blocks, much longer ones in pieces, those between either way.
    BlockReader(std::size_t blockSize, std::size_t padding, std::size_t longestLine);

    /// True when the stream was read to its end and every block and piece was taken. Throws std::bad_alloc
    /// when the buffer cannot grow; it can be used again then.
    bool readAll(const Read &read, const Consume &consume, const PassOver &passOver);

private:
    struct Free {
        void operator()(char *data) const noexcept { std::free(data); } // NOLINT: realloc needs its like
    };

    void reserve(std::size_t capacity);

    std::size_t m_blockSize;
    std::size_t m_padding;
    std::size_t m_longestLine;
    std::size_t m_capacity = 0; ///< without the padding
    std::unique_ptr<char, Free> m_buffer;
};

} // namespace burnwick
