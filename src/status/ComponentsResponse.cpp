// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "status/ComponentsResponse.h"

#include "json/JsonReading.h"

#include <QJsonArray>

#include <string_view>

namespace burnwick {

namespace {

// The ids of the two components on the status page.
constexpr std::string_view claudeCodeID = "yyzkbfz2thpt";
constexpr std::string_view claudeAPIID = "k8w3r06qmzrp";

/// Degraded as long as part of the service works.
ClaudeComponentStatus::Status statusNamed(std::string_view text) {
    using Status = ClaudeComponentStatus::Status;
    if (text == "operational")
        return Status::operational;
    if (text == "degraded_performance" || text == "partial_outage" || text == "under_maintenance")
        return Status::degraded;
    if (text == "major_outage")
        return Status::outage;
    return Status::unknown;
}

} // namespace

ComponentsResponse decodeComponentsResponse(const QByteArray &body) {
    const QJsonValue components = parseJsonObject(body).value(QLatin1String("components"));
    if (!components.isArray())
        throw DecodeError("\"components\" is no array");
    ComponentsResponse response;
    for (const QJsonValue element : components.toArray()) {
        if (!element.isObject())
            throw DecodeError("a component is no object");
        const QJsonObject component = element.toObject();
        response.components.push_back({requiredString(component, QLatin1String("id")).toStdString(),
                                       requiredString(component, QLatin1String("name")).toStdString(),
                                       requiredString(component, QLatin1String("status")).toStdString()});
    }
    return response;
}

std::vector<ClaudeComponentStatus> claudeStatusesIn(const ComponentsResponse &response) {
    std::vector<ClaudeComponentStatus> statuses;
    for (const auto id : {claudeCodeID, claudeAPIID}) {
        for (const auto &component : response.components) {
            if (component.id == id)
                statuses.push_back({component.name, statusNamed(component.status)});
        }
    }
    return statuses;
}

} // namespace burnwick
