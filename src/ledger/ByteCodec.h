// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/InternedString.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Encodes numbers in groups of seven bits, and each text once.
class ByteWriter {
public:
    void addUnsigned(std::uint64_t value) {
        for (; value >= 0x80; value >>= 7U)
            bytes += static_cast<char>(value | 0x80U);
        bytes += static_cast<char>(value);
    }
    /// Numbers near 0 of either sign become short.
    void add(std::int64_t value) {
        const auto bits = static_cast<std::uint64_t>(value);
        addUnsigned(value < 0 ? ~(bits << 1U) : bits << 1U);
    }
    void addKey(std::uint64_t key) {
        for (unsigned i = 0; i < 8; ++i)
            bytes += static_cast<char>(key >> (8 * i) & 0xFFU);
    }
    /// 0 for null; otherwise the text's ordinal, which the text follows when it is new.
    void addName(InternedString name) {
        if (!name.hasValue())
            return addUnsigned(0);
        const auto known = std::ranges::find(m_names, name);
        addUnsigned(static_cast<std::uint64_t>(known - m_names.begin()) + 1);
        if (known != m_names.end())
            return;
        m_names.push_back(name);
        addUnsigned(name.view().size());
        bytes += name.view();
    }

    std::string bytes;

private:
    std::vector<InternedString> m_names;
};

/// After malformed bytes every value is 0 and failed() true.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes)
        : m_bytes(bytes) {}

    [[nodiscard]] bool atEnd() const { return m_bytes.empty() || m_failed; }
    [[nodiscard]] bool failed() const { return m_failed; }
    std::uint64_t readUnsigned() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const std::uint64_t byte = next();
            value |= (byte & 0x7FU) << shift;
            if (byte < 0x80)
                return value;
        }
        return fail();
    }
    std::int64_t read() {
        const std::uint64_t value = readUnsigned();
        return static_cast<std::int64_t>((value & 1U) != 0 ? ~(value >> 1U) : value >> 1U);
    }
    std::uint64_t readKey() {
        std::uint64_t key = 0;
        for (unsigned i = 0; i < 8; ++i)
            key |= next() << (8 * i);
        return key;
    }
    InternedString readName() {
        const std::uint64_t ordinal = readUnsigned();
        if (ordinal == m_names.size() + 1) {
            const std::uint64_t size = readUnsigned();
            if (m_failed || size > m_bytes.size()) {
                fail();
                return {};
            }
            m_names.emplace_back(m_bytes.substr(0, size));
            m_bytes.remove_prefix(size);
        } else if (ordinal > m_names.size()) {
            fail();
            return {};
        }
        return ordinal != 0 ? m_names[ordinal - 1] : InternedString();
    }

private:
    std::uint64_t fail() {
        m_failed = true;
        return 0;
    }
    std::uint64_t next() {
        if (atEnd())
            return fail();
        const auto byte = static_cast<unsigned char>(m_bytes.front());
        m_bytes.remove_prefix(1);
        return byte;
    }

    std::string_view m_bytes;
    std::vector<InternedString> m_names;
    bool m_failed = false;
};

/// Numbers that are sums of differences, modulo 2^64.
inline std::int64_t wrappingSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
inline std::int64_t wrappingDifference(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

} // namespace burnwick
