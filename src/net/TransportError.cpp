// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/TransportError.h"

namespace burnwick {

namespace {

std::string textOf(TransportError::Kind kind) {
    switch (kind) {
    case TransportError::Kind::unreachable:
        return "The server cannot be reached";
    case TransportError::Kind::untrustedServer:
        return "No trusted connection to the server";
    case TransportError::Kind::timedOut:
        return "The server took too long";
    case TransportError::Kind::incomplete:
        return "The connection broke before the answer was complete";
    case TransportError::Kind::notHttp:
        return "The answer is not HTTP";
    case TransportError::Kind::tooLarge:
        return "The answer is too large";
    case TransportError::Kind::invalidRequest:
        return "The request cannot be sent";
    case TransportError::Kind::cancelled:
        break;
    }
    return "The request was given up";
}

} // namespace

TransportError::TransportError(Kind kind, const std::string &detail)
    : std::runtime_error(textOf(kind) + (detail.empty() ? detail : " (" + detail + ')'))
    , m_kind(kind) {}

} // namespace burnwick
