// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "LogTreeWriter.h"

#include <charconv>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

using namespace burnwick::bench;

int main(int argc, char **argv) {
    const std::string_view kind = argc == 4 ? argv[1] : "";
    const std::string_view size = argc == 4 ? argv[2] : "";
    std::uint64_t megabytes = 0;
    const auto parsed = std::from_chars(size.data(), size.data() + size.size(), megabytes);
    if ((kind != "sessions" && kind != "long-lines") || parsed.ptr != size.data() + size.size() ||
        megabytes == 0) {
        std::cerr << "Usage: burnwick-bench-logs sessions|long-lines MEGABYTES DIRECTORY\n"
                     "Makes DIRECTORY a home with sample logs of Claude Code, unless it already is one.\n";
        return EXIT_FAILURE;
    }
    try {
        const auto facts = prepareTree(kind == "sessions" ? TreeKind::sessions : TreeKind::longLines,
                                       megabytes * 1'000'000, argv[3]);
        std::cout << argv[3] << ": " << facts.files << " files, " << facts.bytes / 1'000'000 << " MB, "
                  << facts.usageLines << " usage lines\n";
    } catch (const std::exception &error) {
        std::cerr << "burnwick-bench-logs: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
