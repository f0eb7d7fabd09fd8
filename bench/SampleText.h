// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "Random.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace burnwick::bench {

enum class TextKind { code, diff, terminal, prose };

/// Text of the kinds that fill session logs: lines made once from patterns, then drawn at random.
class SampleText {
public:
    explicit SampleText(Random &random);

    /// Appends about `size` bytes as the inside of a JSON string, whole lines of text at a time. A text that
    /// has escaped letters shows in places a regular expression with \u0061 and the like in its source.
    void append(std::string &json, TextKind kind, std::size_t size, Random &random) const;
    void appendWithEscapedLetters(std::string &json, std::size_t size, Random &random) const;

private:
    std::array<std::vector<std::string>, 4> m_lines;
};

} // namespace burnwick::bench
