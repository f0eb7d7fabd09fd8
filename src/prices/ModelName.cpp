// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prices/ModelName.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace burnwick {

namespace {

std::string_view withoutSuffix(std::string_view name, std::string_view suffix) {
    return name.ends_with(suffix) ? name.substr(0, name.size() - suffix.size()) : name;
}

std::string_view withoutReseller(std::string_view name) {
    constexpr std::array<std::string_view, 6> prefixes{
        "anthropic/", "anthropic.", "us.anthropic.", "eu.anthropic.", "apac.anthropic.", "global.anthropic."};
    name = withoutSuffix(name, "-v1:0");
    const auto *prefix =
        std::ranges::find_if(prefixes, [name](std::string_view each) { return name.starts_with(each); });
    return prefix != prefixes.end() ? name.substr(prefix->size()) : name;
}

/// Without "-YYYYMMDD" or "@YYYYMMDD".
std::string_view withoutDate(std::string_view name) {
    constexpr std::size_t digits = 8;
    if (name.size() <= digits + 1)
        return name;
    const std::string_view date = name.substr(name.size() - digits);
    const char separator = name[name.size() - digits - 1];
    const bool isDate = (separator == '-' || separator == '@') &&
                        std::ranges::all_of(date, [](char digit) { return digit >= '0' && digit <= '9'; });
    return isDate ? name.substr(0, name.size() - digits - 1) : name;
}

} // namespace

std::vector<std::string_view> priceListNames(std::string_view model) {
    std::vector<std::string_view> names{model};
    const auto add = [&names](std::string_view name) {
        if (name != names.back())
            names.push_back(name);
    };
    add(withoutSuffix(names.back(), "[1m]"));
    add(withoutReseller(names.back()));
    add(withoutDate(names.back()));
    return names;
}

} // namespace burnwick
