// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretStore.h"

#include <utility>
#include <vector>

namespace burnwick::test {

/// Keeps one blob in memory, for whatever service.
class MemorySecretStore final : public SecretStore {
public:
    void read(const std::string &, std::function<void(std::optional<std::string>)> answer) override {
        ++reads;
        if (holdsReads)
            m_waiting.push_back(std::move(answer));
        else
            answer(blob);
    }
    void replace(const std::string &, const std::string &newBlob, std::function<void(bool)> answer) override {
        ++replacements;
        const bool replaced = blob.has_value() && writable;
        if (replaced)
            blob = newBlob;
        answer(replaced);
    }

    /// Answers the reads that are held.
    void answerReads() {
        for (const auto &answer : std::exchange(m_waiting, {}))
            answer(blob);
    }

    std::optional<std::string> blob;
    bool writable = true;
    bool holdsReads = false;
    int reads = 0;
    int replacements = 0;

private:
    std::vector<std::function<void(std::optional<std::string>)>> m_waiting;
};

} // namespace burnwick::test
