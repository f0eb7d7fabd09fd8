// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "ledger/EntryCodec.h"
#include "logs/LogFileReader.h"

#include <algorithm>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace burnwick::fuzz {

namespace {

/// A file in memory, which a path can open.
class MemoryFile {
public:
    MemoryFile()
        : m_descriptor(::memfd_create("log", MFD_CLOEXEC)) {
        require(m_descriptor >= 0, "the system has files in memory");
    }
    ~MemoryFile() { ::close(m_descriptor); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    void append(std::string_view bytes) const {
        require(::write(m_descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
                "a file in memory grows");
    }
    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

void checkCodec(std::string_view input, const FileReading &reading) {
    std::vector<JSONLEntry> entries;
    const InternedString session =
        reading.entries->empty() ? InternedString() : reading.entries->front().sessionId();
    require(decodeEntries(encodeEntries(*reading.entries), session, entries) && entries == *reading.entries,
            "entries survive the ledger");
    std::vector<UsageDetails> details;
    require(decodeDetails(encodeDetails(reading.newDetails), details) && details == reading.newDetails,
            "details survive the ledger");
    // Any bytes are refused or decoded, and nothing else.
    static_cast<void>(decodeEntries(input, session, entries));
    static_cast<void>(decodeDetails(input, details));
}

} // namespace

const char *checkLogGrowth(std::string_view input) {
    static LogFileReader reader(LineSelection::usageOnly);
    const MemoryFile file;
    std::optional<FileReading> former;
    bool hasGrown = false;
    // The first byte chooses the size of the parts.
    std::size_t part = input.empty() ? 1 : 1 + static_cast<unsigned char>(input.front());
    for (std::string_view rest = input; !rest.empty(); part += part / 2) {
        const std::size_t size = std::min(part, rest.size());
        file.append(rest.substr(0, size));
        rest.remove_prefix(size);
        const auto fresh = reader.readFile(file.path());
        const auto resumed = reader.readFile(file.path(), former ? &*former : nullptr, Watch::continuous);
        require(fresh && resumed && *fresh->entries == *resumed->entries,
                "a reading that continues has the entries of a fresh one");
        require(fresh->position.offset == resumed->position.offset &&
                    fresh->position.fingerprint == resumed->position.fingerprint &&
                    fresh->position.entries == resumed->position.entries,
                "a reading that continues ends where a fresh one does");
        const std::size_t known = resumed->isContinued ? former->position.entries : 0;
        require(known + resumed->newDetails.size() == resumed->entries->size(), "each line has details");
        hasGrown |= resumed->isContinued;
        checkCodec(input, *fresh);
        former = resumed;
    }
    return hasGrown ? "continued" : "anew";
}

} // namespace burnwick::fuzz
