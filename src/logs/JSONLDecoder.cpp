// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include "model/Timestamp.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

namespace burnwick {

namespace {

std::int64_t *countNamed(std::string_view key, SessionTokens &counts) {
    if (key == "input_tokens")
        return &counts.input;
    if (key == "output_tokens")
        return &counts.output;
    if (key == "cache_creation_input_tokens")
        return &counts.cacheCreation;
    if (key == "cache_read_input_tokens")
        return &counts.cacheRead;
    return nullptr;
}

/// Lines of one file mostly repeat the last text; comparing with it avoids the pool's lock.
InternedString intern(std::optional<std::string_view> text, InternedString &last) {
    if (!text)
        return {};
    if (!last.hasValue() || last.view() != *text)
        last = InternedString(*text);
    return last;
}

std::uint64_t keyOf(std::string_view text) {
    if (text.empty())
        return 0;
    const std::uint64_t hash = XXH3_64bits(text.data(), text.size());
    return hash != 0 ? hash : 1;
}

std::int64_t integerOf(std::string_view json) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(json.data(), json.data() + json.size(), value);
    return error == std::errc() && end == json.data() + json.size() ? value : 0;
}

/// Null if it is no number, negative, or too large.
std::optional<std::int64_t> picodollarsOf(std::string_view json) {
    if (json.empty() || json.front() == '"')
        return std::nullopt;
    // Not from_chars, which libc++ lacks for this type. Only old versions of Claude Code write costs.
    std::istringstream in{std::string(json)};
    in.imbue(std::locale::classic());
    double dollars = 0;
    constexpr double limit = 9e6;
    if (!(in >> dollars) || !(dollars >= 0) || dollars > limit)
        return std::nullopt;
    return std::llround(dollars * 1e12);
}

} // namespace

std::optional<JSONLEntry> JSONLDecoder::decode(std::string_view line) {
    m_raw = {};
    m_type.value.reset();
    m_timestamp.value.reset();
    m_model.value.reset();
    m_usage.reset();
    m_json = JsonScanner(line);
    m_json.skipSpace();
    if (!m_json.readObject([this](std::string_view key) { return readMember(key); }))
        return std::nullopt;
    m_json.skipSpace();
    if (!m_json.rest().empty())
        return std::nullopt;
    return JSONLEntry(intern(m_type.value, m_lastType), parseLogInstant(m_timestamp.value.value_or("")),
                      intern(m_model.value, m_lastModel), m_usage);
}

std::string_view *JSONLDecoder::RawLine::named(std::string_view key) {
    if (key == "uuid")
        return &uuid;
    if (key == "sessionId")
        return &session;
    if (key == "cwd")
        return &folder;
    if (key == "requestId")
        return &request;
    if (key == "isSidechain")
        return &sidechain;
    if (key == "isApiErrorMessage")
        return &apiError;
    if (key == "costUSD")
        return &cost;
    return nullptr;
}

std::string_view *JSONLDecoder::RawUsage::named(std::string_view key) {
    if (key == "cache_creation")
        return &cacheWrites;
    if (key == "service_tier")
        return &tier;
    if (key == "speed")
        return &speed;
    if (key == "inference_geo")
        return &geography;
    if (key == "server_tool_use")
        return &serverTools;
    if (key == "iterations")
        return &iterations;
    return nullptr;
}

bool JSONLDecoder::readMember(std::string_view key) {
    if (key == "type")
        return readText(m_type);
    if (key == "timestamp")
        return readText(m_timestamp);
    if (key == "message")
        return readMessage();
    if (std::string_view *json = m_raw.named(key))
        return readRaw(*json);
    return m_json.skipValue();
}

bool JSONLDecoder::readMessage() {
    m_model.value.reset();
    m_usage.reset();
    m_raw.message = {};
    return m_json.skipWord("null") || m_json.readObject([this](std::string_view key) {
        if (key == "model")
            return readText(m_model);
        if (key == "usage")
            return readUsage();
        if (key == "id")
            return readRaw(m_raw.message.id);
        return m_json.skipValue();
    });
}

bool JSONLDecoder::readUsage() {
    m_usage.reset();
    m_raw.message.usage = {};
    if (m_json.skipWord("null"))
        return true;
    SessionTokens &counts = m_usage.emplace();
    return m_json.readObject([&](std::string_view key) {
        if (std::int64_t *count = countNamed(key, counts))
            return readCount(*count);
        if (std::string_view *json = m_raw.message.usage.named(key))
            return readRaw(*json);
        return m_json.skipValue();
    });
}

bool JSONLDecoder::readText(Text &text) {
    text.value.reset();
    if (m_json.skipWord("null"))
        return true;
    text.value = m_json.readString(text.unescaped);
    return text.value.has_value();
}

bool JSONLDecoder::readCount(std::int64_t &count) {
    count = 0;
    if (m_json.skipWord("null"))
        return true;
    const char *begin = m_json.rest().data();
    if (!m_json.skipNumber())
        return false;
    const char *end = m_json.rest().data();
    const auto [integerEnd, error] = std::from_chars(begin, end, count);
    return error == std::errc() && integerEnd == end;
}

/// Consumes any value.
bool JSONLDecoder::readRaw(std::string_view &json) {
    const std::string_view rest = m_json.rest();
    if (!m_json.skipValue())
        return false;
    json = rest.substr(0, rest.size() - m_json.rest().size());
    return true;
}

/// Returns the value of a member of a JSON object; empty if it has none, or is no object.
std::string_view JSONLDecoder::member(std::string_view object, std::string_view name) {
    m_json = JsonScanner(object);
    std::string_view value;
    static_cast<void>(m_json.readObject(
        [&](std::string_view key) { return key == name ? readRaw(value) : m_json.skipValue(); }));
    return value;
}

/// Returns the string's text; empty if the value is no string. Valid until the next call.
std::string_view JSONLDecoder::textOf(std::string_view json) {
    if (!json.starts_with('"'))
        return {};
    return JsonScanner(json).readString(m_unescaped).value_or("");
}

InternedString JSONLDecoder::nameOf(std::string_view json, InternedString &last) {
    const std::string_view text = textOf(json);
    return text.empty() ? InternedString() : intern(text, last);
}

UsageDetails JSONLDecoder::details() {
    const auto &[id, usage] = m_raw.message;
    UsageDetails details;
    details.lineKey = keyOf(textOf(m_raw.uuid));
    details.messageKey = keyOf(textOf(id));
    details.requestKey = keyOf(textOf(m_raw.request));
    details.session = nameOf(m_raw.session, m_lastSession);
    details.folder = nameOf(m_raw.folder, m_lastFolder);
    details.serviceTier = nameOf(usage.tier, m_lastTier);
    details.speed = nameOf(usage.speed, m_lastSpeed);
    details.geography = nameOf(usage.geography, m_lastGeography);
    details.cacheWrite5m = integerOf(member(usage.cacheWrites, "ephemeral_5m_input_tokens"));
    details.cacheWrite1h = integerOf(member(usage.cacheWrites, "ephemeral_1h_input_tokens"));
    details.webSearches = integerOf(member(usage.serverTools, "web_search_requests"));
    details.cost = picodollarsOf(m_raw.cost);
    details.isSidechain = m_raw.sidechain == "true";
    details.isApiError = m_raw.apiError == "true";
    if (usage.iterations.find("advisor") != std::string_view::npos)
        details.advisors = advisors(usage.iterations);
    return details;
}

/// Returns the usage in those elements of the JSON array that are of the type "advisor_message".
std::vector<AdvisorUsage> JSONLDecoder::advisors(std::string_view array) {
    std::vector<AdvisorUsage> advisors;
    JsonScanner elements(array);
    const auto readElement = [&] {
        elements.skipSpace();
        const std::string_view rest = elements.rest();
        if (!elements.skipValue())
            return false;
        const std::string_view element = rest.substr(0, rest.size() - elements.rest().size());
        elements.skipSpace();
        if (textOf(member(element, "type")) != "advisor_message")
            return true;
        AdvisorUsage &advisor = advisors.emplace_back();
        advisor.model = nameOf(member(element, "model"), m_lastAdvisor);
        // The counts are in the element itself or in a usage of its own.
        for (const std::string_view object : {element, member(element, "usage")}) {
            m_json = JsonScanner(object);
            static_cast<void>(m_json.readObject([&](std::string_view key) {
                std::int64_t *count = countNamed(key, advisor.counts);
                std::string_view value;
                if (!readRaw(value))
                    return false;
                if (count != nullptr)
                    *count = integerOf(value);
                return true;
            }));
        }
        return true;
    };
    if (elements.accept('['))
        while (readElement() && elements.accept(',')) {
        }
    return advisors;
}

} // namespace burnwick
