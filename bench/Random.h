// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>

namespace burnwick::bench {

/// Numbers that are the same on every machine; the standard distributions are not.
class Random {
public:
    explicit Random(std::uint64_t seed)
        : m_engine(seed) {}

    [[nodiscard]] std::uint64_t bits() { return m_engine(); }
    /// 0 to limit - 1.
    [[nodiscard]] std::uint64_t below(std::uint64_t limit) { return m_engine() % limit; }
    /// True once in so many times on average.
    [[nodiscard]] bool oneIn(std::uint64_t times) { return below(times) == 0; }
    /// From `least` to `most`, mostly small: a seventh of the way on average.
    [[nodiscard]] std::uint64_t skewed(std::uint64_t least, std::uint64_t most) {
        constexpr std::uint64_t steps = 1U << 20U;
        const double fraction = static_cast<double>(below(steps)) / static_cast<double>(steps);
        const double cubed = fraction * fraction * fraction;
        return least + static_cast<std::uint64_t>(static_cast<double>(most - least) * cubed * cubed);
    }
    template <typename T, std::size_t size>
    [[nodiscard]] const T &oneOf(const std::array<T, size> &choices) {
        return choices[below(size)];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace burnwick::bench
