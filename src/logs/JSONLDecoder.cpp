// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLDecoder.h"

#include "logs/TolerantLineReader.h"

#include <simdjson.h>

namespace burnwick {

namespace {

namespace dom = simdjson::dom;

/// Longer lines go to the tolerant reader, which needs no memory in proportion to them.
constexpr std::size_t longestFastLine = std::size_t{16} << 20U;

/// No part of JSON: simdjson 3.0 refuses it before a document, 3.12 ignores it.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

enum class Reading { done, wrongType, refused };

/// The value as a text, null as absent; false for any other type.
bool readText(const dom::element &value, std::optional<std::string_view> &text) {
    text.reset();
    if (value.is_null())
        return true;
    std::string_view view;
    if (value.get_string().get(view) != simdjson::SUCCESS)
        return false;
    text = view;
    return true;
}

bool readUsage(const dom::element &value, std::optional<JSONLEntry::UsageWrapper> &usage) {
    usage.reset();
    if (value.is_null())
        return true;
    dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS)
        return false;
    JSONLEntry::UsageWrapper &counts = usage.emplace();
    for (const auto &[key, member] : object) {
        auto *count = countNamed(key, counts);
        if (count == nullptr)
            continue;
        count->reset();
        if (member.is_null())
            continue;
        // Not get_int64(), which also takes an unsigned value.
        if (member.type() != dom::element_type::INT64)
            return false;
        *count = member.get_int64().value_unsafe();
    }
    return true;
}

bool readMessage(const dom::element &value, std::optional<LineFields::Message> &message) {
    message.reset();
    if (value.is_null())
        return true;
    dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS)
        return false;
    LineFields::Message &fields = message.emplace();
    for (const auto &[key, member] : object) {
        if (key == "model" && !readText(member, fields.model))
            return false;
        if (key == "usage" && !readUsage(member, fields.usage))
            return false;
    }
    return true;
}

bool readLine(const dom::element &root, LineFields &fields) {
    dom::object object;
    if (root.get_object().get(object) != simdjson::SUCCESS)
        return false;
    for (const auto &[key, member] : object) {
        if (key == "type" && !readText(member, fields.type))
            return false;
        if (key == "timestamp" && !readText(member, fields.timestamp))
            return false;
        if (key == "message" && !readMessage(member, fields.message))
            return false;
    }
    return true;
}

} // namespace

struct JSONLDecoder::Readers {
    dom::parser fast{longestFastLine};
    TolerantLineReader tolerant;

    Reading readFast(std::string_view line, bool copy, LineFields &fields) {
        if (line.size() > longestFastLine || line.starts_with(byteOrderMark))
            return Reading::refused;
        dom::element root;
        if (fast.parse(line.data(), line.size(), copy).get(root) != simdjson::SUCCESS)
            return Reading::refused;
        return readLine(root, fields) ? Reading::done : Reading::wrongType;
    }
};

const std::size_t JSONLDecoder::padding = simdjson::SIMDJSON_PADDING;

JSONLDecoder::JSONLDecoder()
    : m_readers(std::make_unique<Readers>()) {}

JSONLDecoder::~JSONLDecoder() = default;

std::optional<JSONLEntry> JSONLDecoder::decode(std::string_view line) {
    return decodeTwice(line, Padding::absent);
}

std::optional<JSONLEntry> JSONLDecoder::decodePadded(std::string_view line) {
    return decodeTwice(line, Padding::present);
}

std::optional<JSONLEntry> JSONLDecoder::decodeTwice(std::string_view line, Padding linePadding) {
    LineFields fields;
    switch (m_readers->readFast(line, linePadding == Padding::absent, fields)) {
    case Reading::done:
        return makeEntry(fields);
    case Reading::wrongType:
        return std::nullopt;
    case Reading::refused:
        break;
    }
    return decodeTolerant(line);
}

std::optional<JSONLEntry> JSONLDecoder::decodeFast(std::string_view line) {
    LineFields fields;
    if (m_readers->readFast(line, true, fields) != Reading::done)
        return std::nullopt;
    return makeEntry(fields);
}

std::optional<JSONLEntry> JSONLDecoder::decodeTolerant(std::string_view line) {
    if (!simdjson::validate_utf8(line))
        return std::nullopt;
    const auto fields = m_readers->tolerant.read(line);
    if (!fields)
        return std::nullopt;
    return makeEntry(*fields);
}

JSONLEntry JSONLDecoder::makeEntry(const LineFields &fields) {
    // Lines of one file mostly repeat the last type and model; comparing spares the pool's lock.
    const auto intern = [](const std::optional<std::string_view> &text, InternedString &last) {
        if (!text)
            return InternedString();
        if (!last.hasValue() || last.view() != *text)
            last = InternedString(*text);
        return last;
    };
    std::optional<JSONLEntry::MessageWrapper> message;
    if (fields.message)
        message = {intern(fields.message->model, m_lastModel), fields.message->usage};
    return {intern(fields.type, m_lastType),
            fields.timestamp ? LogTimestamp(*fields.timestamp) : LogTimestamp(), message};
}

} // namespace burnwick
