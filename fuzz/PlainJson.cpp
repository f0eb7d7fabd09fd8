// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/PlainJson.h"

#include <algorithm>
#include <string>

namespace burnwick::fuzz {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::optional<simdjson::dom::element> plainReading(std::string_view text) {
    static simdjson::dom::parser parser;
    simdjson::dom::element root;
    // simdjson 3.12 would ignore it.
    if (text.starts_with(byteOrderMark))
        return std::nullopt;
    if (parser.parse(simdjson::padded_string(text)).get(root) != simdjson::SUCCESS)
        return std::nullopt;
    return root;
}

bool hasByteOrderMark(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text.find(byteOrderMark) != std::string_view::npos || lower.find("\\ufeff") != std::string::npos;
}

bool mayBeBeyondPlainReading(std::string_view text) {
    constexpr std::ptrdiff_t deepest = 1000;
    constexpr std::size_t mostDigits = 18;
    if (std::ranges::count_if(text, [](char c) { return c == '[' || c == '{'; }) >= deepest)
        return true;
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool exponent = i > 0 && isDigit(text[i - 1]) && (text[i] == 'e' || text[i] == 'E');
        digits = isDigit(text[i]) ? digits + 1 : 0;
        const std::string_view rest = text.substr(i);
        if (exponent || digits > mostDigits || rest.starts_with("\\ud") || rest.starts_with("\\uD"))
            return true;
    }
    return false;
}

std::optional<simdjson::dom::element> lastMember(const simdjson::dom::element &object, std::string_view key) {
    std::optional<simdjson::dom::element> found;
    simdjson::dom::object members;
    if (object.get_object().get(members) != simdjson::SUCCESS)
        return std::nullopt;
    for (const auto &[name, value] : members) {
        if (name == key)
            found = value;
    }
    return found;
}

} // namespace burnwick::fuzz
