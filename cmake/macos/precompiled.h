// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// What most sources include, so that it is parsed once.
#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <QBoxLayout>
#include <QCoroTask>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QWidget>
#include <QtCore/QFuture>
