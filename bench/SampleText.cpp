// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "SampleText.h"

#include <cstdio>
#include <span>
#include <string_view>

namespace burnwick::bench {

namespace {

constexpr std::size_t linesOfAKind = 2048;

constexpr std::array<std::string_view, 32> words{
    "session", "window",  "buffer", "render", "parse",   "token",  "handler", "queue",
    "widget",  "payload", "index",  "cursor", "request", "header", "cache",   "stream",
    "user",    "config",  "layout", "event",  "retry",   "offset", "record",  "shutdown",
    "invoice", "usage",   "tenant", "policy", "worker",  "schema", "locale",  "fixture",
};

// In the patterns below $ stands for a word and # for a number.

constexpr std::array<std::string_view, 18> codePatterns{
    "    if ($.find(\"$\") == $.end())",
    "        return std::make_unique<$_$>(std::move($), \"$\");",
    "    for (const auto &[$, $] : m_$) {",
    "\tconst $ = await this.$.$({ $: \"$\", limit: #, $: true });",
    "\t\tthrow new Error(`$ ${$.$} is not a $: \\\"${$}\\\"`);",
    "    }",
    "",
    "def $_$(self, $: str, *, $: int = #) -> dict[str, \"$\"]:",
    "        \"\"\"Return the $ of the $, or ``None`` when the $ is gone.\"\"\"",
    "            logger.warning(\"$ %s has no $ (%d)\", $.$, #)",
    "export interface $Props { readonly $: string; $?: number; on$: ($: $) => void }",
    "    static constexpr std::size_t $_$ = #; // bytes per $",
    "  <div className=\"$-$\" data-$=\"#\" onClick={() => set$(!$)}>",
    "    assert_eq!($.$(b\"$\\n\")?, Some(#));",
    "const path = \"C:\\\\Users\\\\$\\\\$\\\\$.json\";",
    "  { \"type\": \"$\", \"usage\": { \"input_tokens\": #, \"output_tokens\": # } },",
    "    $_$->$(QStringLiteral(\"$/%1\").arg($));",
    "\tif err != nil {",
};

constexpr std::array<std::string_view, 7> diffPatterns{
    "@@ -#,# +#,# @@ void $::$()",
    "-    const auto $ = m_$.$(\"$\");",
    "+    const auto $ = m_$.$(\"$\", #);",
    "+    if (!$)",
    "+        return $Error::$;",
    "     m_$.$($.$());",
    "diff --git a/src/$/$.cpp b/src/$/$.cpp",
};

constexpr std::array<std::string_view, 10> terminalPatterns{
    " \x1b[32m\u2713\x1b[39m $/$.test.ts \x1b[2m(\x1b[22m# tests\x1b[2m)\x1b[22m \x1b[33m#ms\x1b[39m",
    "\x1b[1m\x1b[31merror\x1b[39m\x1b[22m: cannot find value `$` in module `$` \x1b[2m--> "
    "src/$/$.rs:#:#\x1b[0m",
    "[#/#] Building CXX object src/$/CMakeFiles/$_$.dir/$.cpp.o",
    "-rw-r--r-- 1 dev dev   # Mar 17 #:# $_$.json",
    "drwxr-xr-x 4 dev dev   # Feb 24 #:# $",
    "src/$/$_$.py:#:    $ = $($, \"$\")",
    "PASSED tests/$/test_$.py::test_$_$[$-#]",
    "npm \x1b[33mWARN\x1b[0m deprecated $-$@#.#.#: use $ instead",
    "    at $.$ (/home/ada/$/node_modules/$/lib/$.js:#:#)",
    "\u251c\u2500\u2500 $_$.ts\t# kB \u2502 gzip: # kB",
};

constexpr std::array<std::string_view, 9> prosePatterns{
    "The $ test fails because the $ is read before the $ has been written; I'll look at `$.$` next.",
    "Let me check how the $ handler treats an empty $.",
    "## What changed in the $",
    "- **$**: keeps its $ until the $ closes, so a second $ no longer waits (# ms instead of #).",
    "Now I\u2019ll run the $ tests again \u2014 the $ should stay at #.",
    "Die \u00dcberpr\u00fcfung f\u00fcr \u201e$\u201c schl\u00e4gt fehl, weil das $ schon geschlossen ist.",
    "\u8a2d\u5b9a\u30d5\u30a1\u30a4\u30eb $ "
    "\u306e\u8aad\u307f\u8fbc\u307f\u304c\u9045\u3044\u306e\u3067\u3001$ "
    "\u306b\u79fb\u3057\u307e\u3059\u3002",
    "\u041f\u0440\u043e\u0432\u0435\u0440\u044c, "
    "\u043f\u043e\u0436\u0430\u043b\u0443\u0439\u0441\u0442\u0430, \u043f\u043e\u0447\u0435\u043c\u0443 $ "
    "\u043d\u0435 \u043e\u0431\u043d\u043e\u0432\u043b\u044f\u0435\u0442\u0441\u044f "
    "\u043f\u043e\u0441\u043b\u0435 $.",
    "Done \U0001f389 the $ is # % faster and `$_$` is gone.",
};

std::string fillIn(std::string_view pattern, Random &random) {
    std::string line;
    for (const char c : pattern) {
        if (c == '$')
            line += random.oneOf(words);
        else if (c == '#')
            line += std::to_string(random.skewed(1, 9000));
        else
            line += c;
    }
    return line;
}

std::string escape(std::string_view text) {
    std::string json;
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (c == '\n') {
            json += "\\n";
        } else if (c == '\t') {
            json += "\\t";
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
            json += code.data();
        } else {
            json += c;
        }
    }
    return json;
}

std::vector<std::string> makeLines(std::span<const std::string_view> patterns, Random &random) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < linesOfAKind; ++i)
        lines.push_back(escape(fillIn(patterns[random.below(patterns.size())], random) + '\n'));
    return lines;
}

} // namespace

SampleText::SampleText(Random &random)
    : m_lines{makeLines(codePatterns, random), makeLines(diffPatterns, random),
              makeLines(terminalPatterns, random), makeLines(prosePatterns, random)} {}

void SampleText::append(std::string &json, TextKind kind, std::size_t size, Random &random) const {
    const std::vector<std::string> &lines = m_lines[static_cast<std::size_t>(kind)];
    const std::size_t end = json.size() + size;
    while (json.size() < end)
        json += lines[random.below(lines.size())];
}

void SampleText::appendWithEscapedLetters(std::string &json, std::size_t size, Random &random) const {
    append(json, TextKind::code, size / 2, random);
    json += escape("    return /[^\\u0061-\\u007a]/g;\n");
    append(json, TextKind::code, size / 2, random);
}

} // namespace burnwick::bench
