// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace burnwick::test {

struct HostileText {
    const char *what;
    std::string text;
    std::string shown; ///< its displayText()
    bool isUtf8 = true;

    friend std::ostream &operator<<(std::ostream &out, const HostileText &hostile) {
        return out << hostile.what;
    }
};

/// Names of models, components and versions that an attacker may choose.
inline const std::vector<HostileText> &hostileTexts() {
    using namespace std::string_literals;
    static const std::vector<HostileText> texts{
        {"markup", "<b>&amp;</b><img src=x>&lt;", "<b>&amp;</b><img src=x>&lt;"},
        {"closing tags", "</p></span>\"'/>", "</p></span>\"'/>"},
        {"placeholders and accelerators", "%1 & %2 &x %n", "%1 & %2 &x %n"},
        {"lines", "one\ntwo\r\t\v\f\u2028\u2029\u0085.",
         "one\uFFFDtwo\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD."},
        {"NUL", "a\0b"s, "a\uFFFDb"},
        {"escape sequences", "\033]0;own\a\u009b2J\x7f", "\uFFFD]0;own\uFFFD\uFFFD2J\uFFFD"},
        {"direction of writing", "\u202egnp\u202c\u2066x\u2069\u200f\u061c",
         "\uFFFDgnp\uFFFD\uFFFDx\uFFFD\uFFFD\uFFFD"},
        {"invisible characters", "a\u200b\u00ad\ufeff\u2060\U000e0041b", "a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDb"},
        {"malformed UTF-8", "\xff\xc0\x80\xed\xa0\x80\xf4\x90\x80\x80\xe2\x82",
         "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", false},
        {"a megabyte", std::string(1 << 20, 'w'), std::string(200, 'w') + "…" + std::string(199, 'w')},
        {"a megabyte of controls", std::string(1 << 20, '\033'),
         [] {
             std::string marks;
             for (int i = 0; i < 399; ++i)
                 marks += i == 200 ? "…\uFFFD" : "\uFFFD";
             return marks;
         }()},
    };
    return texts;
}

/// Whether the text contains a control character, or one of the characters above that hide or reorder others.
inline bool hasControls(const std::string &text) {
    for (const char *part : {"\u202e", "\u2066", "\u200b", "\u009b", "\u2028", "\U000e0041"}) {
        if (text.find(part) != std::string::npos)
            return true;
    }
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            return true;
    }
    return false;
}

} // namespace burnwick::test
