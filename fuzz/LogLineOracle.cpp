// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "logs/JSONLDecoder.h"
#include "model/Timestamp.h"

#include <QUtf8StringView>

#include <map>
#include <optional>
#include <string_view>

namespace burnwick::fuzz {

namespace {

using simdjson::dom::element;
using simdjson::dom::object;

// Another JSON library reads the entry. Each function returns false for a value of the wrong type.

using Text = std::optional<std::string_view>;

bool readText(const element &value, Text &text) {
    std::string_view view;
    text = value.get_string().get(view) == simdjson::SUCCESS ? Text(view) : std::nullopt;
    return text || value.is_null();
}

bool readUsage(const element &value, std::optional<SessionTokens> &usage) {
    usage.reset();
    object members;
    if (value.get_object().get(members) != simdjson::SUCCESS)
        return value.is_null();
    SessionTokens &counts = usage.emplace();
    const std::map<std::string_view, std::int64_t *> named{
        {"input_tokens", &counts.input},
        {"output_tokens", &counts.output},
        {"cache_creation_input_tokens", &counts.cacheCreation},
        {"cache_read_input_tokens", &counts.cacheRead},
    };
    for (const auto &[key, count] : members) {
        const auto found = named.find(key);
        if (found == named.end())
            continue;
        // Not is_int64(), which also takes an unsigned value.
        const bool integer = count.type() == simdjson::dom::element_type::INT64;
        if (!integer && !count.is_null())
            return false;
        *found->second = integer ? count.get_int64().value_unsafe() : 0;
    }
    return true;
}

std::optional<JSONLEntry> plainEntry(const element &line) {
    Text type, timestamp, model;
    std::optional<SessionTokens> usage;
    object members;
    if (line.get_object().get(members) != simdjson::SUCCESS)
        return std::nullopt;
    for (const auto &[key, value] : members) {
        if ((key == "type" && !readText(value, type)) || (key == "timestamp" && !readText(value, timestamp)))
            return std::nullopt;
        if (key != "message")
            continue;
        model.reset();
        usage.reset();
        object message;
        if (value.get_object().get(message) != simdjson::SUCCESS && !value.is_null())
            return std::nullopt;
        if (value.is_null())
            continue;
        for (const auto &[name, part] : message) {
            if ((name == "model" && !readText(part, model)) || (name == "usage" && !readUsage(part, usage)))
                return std::nullopt;
        }
    }
    const auto interned = [](const Text &text) { return text ? InternedString(*text) : InternedString(); };
    return JSONLEntry(interned(type), parseLogInstant(timestamp.value_or("")), interned(model), usage);
}

} // namespace

const char *checkLogLine(std::string_view input) {
    if (!QUtf8StringView(input.data(), static_cast<qsizetype>(input.size())).isValidUtf8())
        return "notutf8";
    static JSONLDecoder decoder;
    const auto entry = decoder.decode(input);
    const auto document = plainReading(input);
    if (!document) {
        require(!entry || mayBeBeyondPlainReading(input), "only valid lines are decoded");
        return entry ? "beyond" : "refused";
    }
    require(entry == plainEntry(*document), "a line decodes to what another library reads");
    return entry ? "decoded" : "refused";
}

} // namespace burnwick::fuzz
