// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/BarForms.h"

#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "display/PriceText.h"
#include "display/StatusTitle.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>

namespace burnwick {

namespace {

/// As numbers, because older Pango has no name for semibold.
std::string weightAttribute(TitleSegment::Weight weight) {
    switch (weight) {
    case TitleSegment::Weight::semibold:
        return " weight=\"600\"";
    case TitleSegment::Weight::heavy:
        return " weight=\"900\"";
    case TitleSegment::Weight::regular:
        break;
    }
    return {};
}

std::string attributesOf(const TitleSegment &segment) {
    std::string attributes = weightAttribute(segment.weight);
    if (segment.color)
        attributes += " foreground=\"" + hexOf(*segment.color) + '"';
    if (segment.dimmed)
        attributes += " alpha=\"" + percentText(dimmedOpacity * 100) + '"';
    return attributes;
}

/// Without escaping: the title contains no reserved character.
std::string pangoTitle(const Snapshot &snapshot) {
    std::string markup;
    for (const TitleSegment &segment : buildStatusTitle(snapshot)) {
        const std::string attributes = attributesOf(segment);
        markup += attributes.empty() ? segment.text : "<span" + attributes + '>' + segment.text + "</span>";
    }
    return markup;
}

/// Behind a line feed each, such as "Session: Probably 92% when it resets at 15:00".
std::string pangoLimitLines(const Snapshot &snapshot, Instant now) {
    std::string lines;
    for (const std::string &line : limitLines(snapshot, now))
        lines += '\n' + QString::fromStdString(line).toHtmlEscaped().toStdString();
    return lines;
}

std::string pangoToolTip(const Snapshot &snapshot, Instant now) {
    const auto &[usage, account] = snapshot;
    const SessionTokens &tokens = usage.sessionTokens;
    const PricedTokens price = shownPrice(usage);
    const std::string quota =
        account.quotaData ? percentText(account.quotaData->fiveHourUsagePct) + " used" : "not known";
    return "<b>Burnwick</b>\nTokens: " + tokenCountText(tokens.total()) + "\n  " +
           tokenCountText(tokens.input) + " in · " + tokenCountText(tokens.output) + " out\n  " +
           tokenCountText(tokens.cacheCreation) + " cache creation · " + tokenCountText(tokens.cacheRead) +
           " cache read\nCost: " + priceText(price) +
           (price.unpriced > 0 ? " · " + unpricedText(price) : "") +
           "\nBurn rate: " + burnRateText(usage.burnRateTokensPerMin) +
           "\nProjected: " + projectionText(usage, &UsageFigures::projectedTodayCost) + " today · " +
           projectionText(usage, &UsageFigures::projectedWeeklyCost) + " week · " +
           projectionText(usage, &UsageFigures::projectedMonthlyCost) + " month\n5-hour window: " + quota +
           " (" + std::string(nameOf(account.statusIndicator())) + ")" + pangoLimitLines(snapshot, now);
}

} // namespace

std::string waybarForm(const Snapshot &snapshot, Instant now) {
    const std::string indicator(nameOf(snapshot.account.statusIndicator()));
    QJsonObject module{
        {QStringLiteral("text"), QString::fromStdString(pangoTitle(snapshot))},
        {QStringLiteral("tooltip"), QString::fromStdString(pangoToolTip(snapshot, now))},
        {QStringLiteral("class"), QString::fromStdString(indicator)},
    };
    if (const auto &quota = snapshot.account.quotaData)
        module.insert(QStringLiteral("percentage"),
                      static_cast<qint64>(std::lround(quota->fiveHourUsagePct)));
    return QJsonDocument(module).toJson(QJsonDocument::Compact).toStdString() + '\n';
}

std::string genmonForm(const Snapshot &snapshot, Instant now) {
    return "<txt>" + pangoTitle(snapshot) + "</txt>\n<tool>" + pangoToolTip(snapshot, now) + "</tool>\n";
}

} // namespace burnwick
