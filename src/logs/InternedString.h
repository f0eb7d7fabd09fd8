// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace burnwick {

/// A text that is stored once per process, or null: the size of a pointer, compared by identity. For the few
/// distinct model names, line types and session identifiers of a log tree; texts are never freed. Safe from
/// any thread.
class InternedString {
public:
    InternedString() noexcept = default;
    explicit InternedString(std::string_view text);

    [[nodiscard]] bool hasValue() const noexcept { return m_text != nullptr; }
    /// The text; empty when null.
    [[nodiscard]] std::string_view view() const noexcept {
        return m_text != nullptr ? std::string_view(*m_text) : std::string_view();
    }

    bool operator==(const InternedString &) const noexcept = default;

private:
    friend struct std::hash<InternedString>;
    const std::string *m_text = nullptr;
};

} // namespace burnwick

template <>
struct std::hash<burnwick::InternedString> {
    std::size_t operator()(const burnwick::InternedString &string) const noexcept {
        return std::hash<const void *>()(string.m_text);
    }
};
