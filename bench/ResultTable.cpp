// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ResultTable.h"

#include <iomanip>
#include <iostream>
#include <sstream>

namespace burnwick::bench {

namespace {

std::string withUnit(double figure, std::string_view unit, int digits) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << figure << ' ' << unit;
    return text.str();
}

void print(std::string_view what, const std::string &figure, const std::string &target,
           std::string_view verdict) {
    std::cout << std::left << std::setw(48) << what << std::right << std::setw(12) << figure << "   "
              << std::left << std::setw(20) << target << verdict << std::endl;
}

} // namespace

void ResultTable::addFigure(std::string_view what, double figure, std::string_view unit, int digits) {
    print(what, withUnit(figure, unit, digits), "", "");
}

void ResultTable::addAtMost(std::string_view what, double figure, double target, std::string_view unit,
                            int digits) {
    addJudged(what, withUnit(figure, unit, digits), "at most " + withUnit(target, unit, digits),
              figure <= target);
}

void ResultTable::addAtLeast(std::string_view what, double figure, double target, std::string_view unit,
                             int digits) {
    addJudged(what, withUnit(figure, unit, digits), "at least " + withUnit(target, unit, digits),
              figure >= target);
}

void ResultTable::addJudged(std::string_view what, const std::string &figure, const std::string &target,
                            bool met) {
    m_anyMissed = m_anyMissed || !met;
    print(what, figure, target, met ? "ok" : "MISSED");
}

} // namespace burnwick::bench
