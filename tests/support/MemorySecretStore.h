// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretStore.h"

#include <utility>
#include <vector>

namespace burnwick::test {

/// Stores one blob in memory, the same for each service.
class MemorySecretStore final : public SecretStore {
    using ReadAnswer = std::function<void(std::optional<StoredSecret>)>;

public:
    void read(const std::string &, ReadAnswer answer) override {
        ++reads;
        if (holdsReads)
            m_waiting.push_back(std::move(answer));
        else
            give(answer);
    }
    void replace(const std::string &, const StoredSecret &secret, std::function<void(bool)> answer) override {
        ++replacements;
        const bool replaced = blob.has_value() && writable;
        if (replaced)
            blob = secret.blob;
        answer(replaced);
    }

    /// Answers the held reads.
    void answerReads() {
        for (const auto &answer : std::exchange(m_waiting, {}))
            give(answer);
    }

    std::optional<std::string> blob;
    bool writable = true;
    bool holdsReads = false;
    int reads = 0;
    int replacements = 0;

private:
    void give(const ReadAnswer &answer) const {
        answer(blob ? std::optional(StoredSecret{*blob, {}}) : std::nullopt);
    }

    std::vector<ReadAnswer> m_waiting;
};

} // namespace burnwick::test
