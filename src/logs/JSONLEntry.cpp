// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLEntry.h"

#include <cstddef>
#include <cstdio>

namespace burnwick {

namespace {

using Usage = JSONLEntry::UsageWrapper;

struct CountKey {
    const char *key;
    std::optional<std::int64_t> Usage::*member;
};

/// In the order of the stored counts.
constexpr std::array<CountKey, 4> countKeys{{
    {"input_tokens", &Usage::inputTokens},
    {"output_tokens", &Usage::outputTokens},
    {"cache_creation_input_tokens", &Usage::cacheCreationInputTokens},
    {"cache_read_input_tokens", &Usage::cacheReadInputTokens},
}};

std::string jsonString(std::string_view text) {
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            json += escape.data();
        } else {
            json += c;
        }
    }
    return json + '"';
}

/// Collects `"key":value` pairs into an object.
class ObjectWriter {
public:
    void add(const char *key, const std::string &value) {
        m_text += m_text.empty() ? "{" : ",";
        m_text += jsonString(key) + ':' + value;
    }
    [[nodiscard]] std::string finish() const { return m_text.empty() ? "{}" : m_text + '}'; }

private:
    std::string m_text;
};

} // namespace

JSONLEntry::JSONLEntry(InternedString type, LogTimestamp timestamp,
                       const std::optional<MessageWrapper> &message)
    : m_type(type)
    , m_timestamp(timestamp) {
    if (!message)
        return;
    m_present |= messagePresent;
    m_model = message->model;
    if (!message->usage)
        return;
    m_present |= usagePresent;
    for (std::size_t i = 0; i < countKeys.size(); ++i) {
        if (const auto &count = *message->usage.*countKeys[i].member) {
            m_counts[i] = *count;
            m_present |= static_cast<std::uint8_t>(1U << i);
        }
    }
}

std::optional<JSONLEntry::MessageWrapper> JSONLEntry::message() const noexcept {
    if ((m_present & messagePresent) == 0)
        return std::nullopt;
    MessageWrapper message{m_model, std::nullopt};
    if ((m_present & usagePresent) != 0) {
        message.usage.emplace();
        for (std::size_t i = 0; i < countKeys.size(); ++i) {
            if ((m_present >> i & 1U) != 0)
                *message.usage.*countKeys[i].member = m_counts[i];
        }
    }
    return message;
}

std::string encodeEntry(const JSONLEntry &entry) {
    ObjectWriter line;
    if (entry.type().hasValue())
        line.add("type", jsonString(entry.type().view()));
    if (const auto timestamp = entry.timestamp().text())
        line.add("timestamp", jsonString(*timestamp));
    if (const auto message = entry.message()) {
        ObjectWriter messageObject;
        if (message->model.hasValue())
            messageObject.add("model", jsonString(message->model.view()));
        if (message->usage) {
            ObjectWriter usageObject;
            for (const CountKey &count : countKeys) {
                if (const auto &value = *message->usage.*count.member)
                    usageObject.add(count.key, std::to_string(*value));
            }
            messageObject.add("usage", usageObject.finish());
        }
        line.add("message", messageObject.finish());
    }
    return line.finish();
}

} // namespace burnwick
