// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "logs/JSONLDecoder.h"

#include <string>

namespace burnwick::fuzz {

namespace {

std::string described(const std::optional<JSONLEntry> &entry) {
    return entry ? encodeEntry(*entry) : "none";
}

} // namespace

const char *checkLogLine(std::string_view input) {
    static JSONLDecoder decoder;
    const auto fast = decoder.decodeFast(input);
    const auto tolerant = decoder.decodeTolerant(input);
    require(!fast || described(fast) == described(tolerant), "both readings of a line agree");
    require(fast || !tolerant || mayBeBeyondPlainReading(input),
            "the tolerant reading takes only what the fast one has no room for");
    // The fast reading saves time and changes nothing.
    require(described(decoder.decode(input)) == described(tolerant),
            "a line is what its tolerant reading is");
    const std::string padded = std::string(input) + std::string(JSONLDecoder::padding, '"');
    require(described(decoder.decodePadded(std::string_view(padded).substr(0, input.size()))) ==
                described(tolerant),
            "what stands behind a line does not matter");
    if (tolerant) {
        const std::string encoded = encodeEntry(*tolerant);
        require(described(decoder.decode(encoded)) == encoded, "an entry's own JSON is read back");
    }
    return fast ? "fast" : tolerant ? "tolerant" : "refused";
}

} // namespace burnwick::fuzz
