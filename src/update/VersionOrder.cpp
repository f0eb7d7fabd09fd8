// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/VersionOrder.h"

namespace burnwick {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Takes the digits at the front of the text, without leading zeros.
QStringView takeNumber(QStringView &text) {
    qsizetype end = 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    qsizetype start = 0;
    while (start < end && text[start] == u'0')
        ++start;
    const QStringView number = text.sliced(start, end - start);
    text = text.sliced(end);
    return number;
}

std::strong_ordering compareUnits(QStringView left, QStringView right) {
    const qsizetype common = qMin(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (left[i] != right[i])
            return left[i].unicode() <=> right[i].unicode();
    }
    return left.size() <=> right.size();
}

std::strong_ordering compareNumbers(QStringView left, QStringView right) {
    if (left.size() != right.size())
        return left.size() <=> right.size();
    return compareUnits(left, right);
}

} // namespace

std::weak_ordering compareVersions(QStringView left, QStringView right) noexcept {
    while (!left.isEmpty() && !right.isEmpty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const QStringView leftNumber = takeNumber(left);
            const QStringView rightNumber = takeNumber(right);
            if (const auto order = compareNumbers(leftNumber, rightNumber); std::is_neq(order))
                return order;
        } else {
            if (left.front() != right.front())
                return left.front().unicode() <=> right.front().unicode();
            left = left.sliced(1);
            right = right.sliced(1);
        }
    }
    return left.size() <=> right.size();
}

} // namespace burnwick
