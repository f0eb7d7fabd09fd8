// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

const burnwick::fuzz::Oracle *chosen = nullptr;

} // namespace

// The engine's entry points. The engine ignores options that begin with two dashes.

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments) {
    const auto &oracles = burnwick::fuzz::allOracles();
    for (int i = 1; i < *count; ++i) {
        const std::string_view argument = (*arguments)[i];
        const auto *found = std::ranges::find_if(oracles, [&](const auto &oracle) {
            return argument.starts_with("--target=") && argument.substr(9) == oracle.name;
        });
        if (found != oracles.end())
            chosen = found;
    }
    if (chosen == nullptr) {
        std::fputs("usage: fuzzer --target=NAME [options of libFuzzer] [folders of inputs]\nnames:", stderr);
        for (const auto &oracle : oracles)
            std::fprintf(stderr, " %s", oracle.name.data());
        std::fputs("\n", stderr);
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size) {
    // No copy: the memory ends with the input, so that the sanitizer detects a read behind it.
    static_cast<void>(chosen->check({reinterpret_cast<const char *>(data), size})); // NOLINT: bytes
    return 0;
}
