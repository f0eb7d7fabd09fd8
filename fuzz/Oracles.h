// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <stdexcept>
#include <string_view>

namespace burnwick::fuzz {

/// What an oracle throws when the code breaks its word; the text says which.
class Violation final : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char *claim) {
    if (!holds)
        throw Violation(claim);
}

// Each hands any bytes to one reader of foreign data, holds its answer against what must be true of it,
// mostly against a second reading that is plain and slow, and says what became of the input: the word with
// which its file's name begins in the corpus. They throw Violation, and nothing else if the code is right.

/// "decoded", or "beyond" if simdjson refuses the line, "refused", or "notutf8" without a check.
[[nodiscard]] const char *checkLogLine(std::string_view input);
/// "counted" when the file has usage lines, otherwise "nothing".
[[nodiscard]] const char *checkLogFile(std::string_view input);
/// "accepted" or "refused".
[[nodiscard]] const char *checkTimestamp(std::string_view input);
/// "patched" or "refused".
[[nodiscard]] const char *checkCredentials(std::string_view input);
/// "accepted" or "refused".
[[nodiscard]] const char *checkUsageResponse(std::string_view input);
/// "newer" or "current" by the first version element, or "failed" without one.
[[nodiscard]] const char *checkAppcast(std::string_view input);
/// "kept" or "setaside", by what becomes of the file.
[[nodiscard]] const char *checkSettings(std::string_view input);

struct Oracle {
    std::string_view name; ///< also of the folder of its corpus
    const char *(*check)(std::string_view input);
};

[[nodiscard]] const std::array<Oracle, 7> &allOracles();

} // namespace burnwick::fuzz
