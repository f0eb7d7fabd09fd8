// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/TolerantLineReader.h"

#include <charconv>

namespace burnwick {

std::optional<LineFields> TolerantLineReader::read(std::string_view line) {
    m_json = JsonScanner(line);
    m_texts.clear();
    LineFields fields;
    m_json.skipSpace();
    const bool isObject = m_json.peek() == '{' &&
                          m_json.readObject([&](std::string_view key) { return readMember(key, fields); });
    m_json.skipSpace();
    if (!isObject || !m_json.rest().empty())
        return std::nullopt;
    return fields;
}

bool TolerantLineReader::readMember(std::string_view key, LineFields &fields) {
    if (key == "type")
        return readText(fields.type) != Found::failure;
    if (key == "timestamp")
        return readText(fields.timestamp) != Found::failure;
    if (key == "message")
        return readMessage(fields.message) != Found::failure;
    return m_json.skipValue();
}

TolerantLineReader::Found TolerantLineReader::readText(std::optional<std::string_view> &text) {
    if (m_json.peek() != '"') {
        text.reset();
        return m_json.skipWord("null") ? Found::null : Found::failure;
    }
    std::string &value = m_texts.emplace_back();
    if (m_json.readString(&value) != JsonScanner::Text::valid)
        return Found::failure;
    text = value;
    return Found::value;
}

TolerantLineReader::Found TolerantLineReader::readCount(std::optional<std::int64_t> &count) {
    if (m_json.peek() == 'n') {
        count.reset();
        return m_json.skipWord("null") ? Found::null : Found::failure;
    }
    const char *begin = m_json.rest().data();
    if (!m_json.skipNumber())
        return Found::failure;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(begin, m_json.rest().data(), value);
    if (error != std::errc() || end != m_json.rest().data())
        return Found::failure;
    count = value;
    return Found::value;
}

TolerantLineReader::Found TolerantLineReader::readMessage(std::optional<LineFields::Message> &message) {
    message.reset();
    if (m_json.peek() == 'n')
        return m_json.skipWord("null") ? Found::null : Found::failure;
    LineFields::Message &fields = message.emplace();
    const bool read = m_json.readObject([&](std::string_view key) {
        if (key == "model")
            return readText(fields.model) != Found::failure;
        if (key == "usage")
            return readUsage(fields.usage) != Found::failure;
        return m_json.skipValue();
    });
    return read ? Found::value : Found::failure;
}

TolerantLineReader::Found TolerantLineReader::readUsage(std::optional<JSONLEntry::UsageWrapper> &usage) {
    usage.reset();
    if (m_json.peek() == 'n')
        return m_json.skipWord("null") ? Found::null : Found::failure;
    JSONLEntry::UsageWrapper &counts = usage.emplace();
    const bool read = m_json.readObject([&](std::string_view key) {
        auto *count = countNamed(key, counts);
        return count != nullptr ? readCount(*count) != Found::failure : m_json.skipValue();
    });
    return read ? Found::value : Found::failure;
}

} // namespace burnwick
