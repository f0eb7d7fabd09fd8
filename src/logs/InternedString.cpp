// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/InternedString.h"

#include <mutex>
#include <unordered_set>

namespace burnwick {

namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>()(text);
    }
};

/// Never destroyed: threads may still hold its texts while the process ends.
struct Pool {
    std::mutex mutex;
    std::unordered_set<std::string, TextHash, std::equal_to<>> texts;
};

Pool &pool() {
    static Pool &instance = *new Pool; // NOLINT(cppcoreguidelines-owning-memory)
    return instance;
}

} // namespace

InternedString::InternedString(std::string_view text) {
    Pool &texts = pool();
    const std::lock_guard lock(texts.mutex);
    auto found = texts.texts.find(text);
    if (found == texts.texts.end())
        found = texts.texts.emplace(text).first;
    m_text = &*found;
}

} // namespace burnwick
