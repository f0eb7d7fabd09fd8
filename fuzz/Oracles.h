// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <stdexcept>
#include <string_view>

namespace burnwick::fuzz {

/// Thrown by an oracle when the code violates a claim; the text is the claim.
class Violation final : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char *claim) {
    if (!holds)
        throw Violation(claim);
}

// Each passes any bytes to one reader of foreign data and compares the result with a second, plain and slow
// reading. It returns the kind of the input, which is the first word of the file's name in the corpus. It
// throws Violation if they differ; correct code makes it throw nothing else.

/// "decoded", "beyond" if simdjson alone rejects the line, "refused", or "notutf8" without a check.
[[nodiscard]] const char *checkLogLine(std::string_view input);
/// "counted" when the file has usage lines, otherwise "nothing".
[[nodiscard]] const char *checkLogFile(std::string_view input);
/// "continued" when a reading continued behind an earlier one of the growing file, otherwise "anew". Also
/// encodes and decodes the lines as the ledger does.
[[nodiscard]] const char *checkLogGrowth(std::string_view input);
/// "accepted" or "refused".
[[nodiscard]] const char *checkTimestamp(std::string_view input);
/// "patched" or "refused".
[[nodiscard]] const char *checkCredentials(std::string_view input);
/// "accepted" or "refused".
[[nodiscard]] const char *checkUsageResponse(std::string_view input);
/// "newer" or "current" by the first version element, or "failed" without one.
[[nodiscard]] const char *checkAppcast(std::string_view input);
/// "kept", or "setaside" for a file that was renamed.
[[nodiscard]] const char *checkSettings(std::string_view input);

struct Oracle {
    std::string_view name; ///< also of the folder of its corpus
    const char *(*check)(std::string_view input);
};

[[nodiscard]] const std::array<Oracle, 8> &allOracles();

} // namespace burnwick::fuzz
