// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/LogTreeFixture.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>

namespace burnwick::test {

TemporaryDirectory::TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "burnwick-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary directory");
    m_path = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void writeFile(const std::filesystem::path &file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

void writeProgram(const std::filesystem::path &file, std::string_view script) {
    writeFile(file, script);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

std::string bytesOf(const std::filesystem::path &file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::ptrdiff_t entriesOf(const std::filesystem::path &folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

void setModified(const std::filesystem::path &file, Instant modified) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(modified);
    const timespec time{seconds.time_since_epoch().count(), (modified - seconds).count()};
    const std::array<timespec, 2> times{time, time};
    if (::utimensat(AT_FDCWD, file.c_str(), times.data(), 0) != 0)
        throw std::runtime_error("cannot set the time of " + file.string());
}

std::filesystem::path LogHome::add(const std::string &name, std::string_view bytes, Instant modified) const {
    // Written elsewhere and moved in, so that no reader sees an incomplete file.
    const auto draft = path() / "draft";
    writeFile(draft, bytes);
    setModified(draft, modified);
    auto file = projects() / name;
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::rename(draft, file);
    return file;
}

std::string usageLine(std::string_view timestamp, long long input, long long output, long long cacheCreation,
                      long long cacheRead, std::string_view model) {
    return R"({"type":"assistant","timestamp":")" + std::string(timestamp) + R"(","message":{"model":")" +
           std::string(model) + R"(","usage":{"input_tokens":)" + std::to_string(input) +
           R"(,"output_tokens":)" + std::to_string(output) + R"(,"cache_creation_input_tokens":)" +
           std::to_string(cacheCreation) + R"(,"cache_read_input_tokens":)" + std::to_string(cacheRead) +
           "}}}\n";
}

} // namespace burnwick::test
