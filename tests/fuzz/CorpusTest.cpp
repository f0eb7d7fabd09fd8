// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace burnwick::fuzz {

// Called by GoogleTest.
void PrintTo(const Oracle &oracle, std::ostream *out) { // NOLINT: its name
    *out << oracle.name;
}

namespace {

class CorpusTest : public testing::TestWithParam<Oracle> {};

TEST_P(CorpusTest, EachInputHasTheOutcomeInItsName) {
    const Oracle &oracle = GetParam();
    std::set<std::string> outcomes;
    const std::filesystem::path folder = std::filesystem::path(BURNWICK_CORPUS_DIRECTORY) / oracle.name;
    for (const auto &file : std::filesystem::directory_iterator(folder)) {
        const std::string name = file.path().filename();
        const std::string expected = name.substr(0, name.find('-'));
        outcomes.insert(expected);
        try {
            EXPECT_EQ(oracle.check(test::bytesOf(file.path())), expected) << name;
        } catch (const Violation &violation) {
            ADD_FAILURE() << name << ": " << violation.what();
        }
    }
    EXPECT_GE(outcomes.size(), 2U) << "inputs of each kind";
}

INSTANTIATE_TEST_SUITE_P(Corpora, CorpusTest, testing::ValuesIn(allOracles()), [](const auto &test) {
    std::string name(test.param.name);
    std::erase(name, '-');
    return name;
});

} // namespace
} // namespace burnwick::fuzz
