// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include "model/Timestamp.h"

#include <charconv>

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

} // namespace

std::optional<JSONLEntry> JSONLDecoder::decode(std::string_view line) {
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

bool JSONLDecoder::readMember(std::string_view key) {
    if (key == "type")
        return readText(m_type);
    if (key == "timestamp")
        return readText(m_timestamp);
    if (key == "message")
        return readMessage();
    return m_json.skipValue();
}

bool JSONLDecoder::readMessage() {
    m_model.value.reset();
    m_usage.reset();
    return m_json.skipWord("null") || m_json.readObject([this](std::string_view key) {
        if (key == "model")
            return readText(m_model);
        if (key == "usage")
            return readUsage();
        return m_json.skipValue();
    });
}

bool JSONLDecoder::readUsage() {
    m_usage.reset();
    if (m_json.skipWord("null"))
        return true;
    SessionTokens &counts = m_usage.emplace();
    return m_json.readObject([&](std::string_view key) {
        std::int64_t *count = countNamed(key, counts);
        return count != nullptr ? readCount(*count) : m_json.skipValue();
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

} // namespace burnwick
