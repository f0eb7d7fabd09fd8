// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// A text that is stored once per process, however many entries bear it: a pointer's size, compared by
/// identity. Meant for the few model names, line types and session identifiers of a log tree; texts are kept
/// for the life of the process. A default-made value is absent. Safe from any thread.
class InternedString {
public:
    InternedString() noexcept = default;
    /// The one copy of the text, made on its first use.
    explicit InternedString(std::string_view text);

    [[nodiscard]] bool hasValue() const noexcept { return m_text != nullptr; }
    /// The text; empty when absent.
    [[nodiscard]] std::string_view view() const noexcept {
        return m_text != nullptr ? std::string_view(*m_text) : std::string_view();
    }
    [[nodiscard]] std::optional<std::string_view> optionalView() const noexcept {
        return m_text != nullptr ? std::optional<std::string_view>(*m_text) : std::nullopt;
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
