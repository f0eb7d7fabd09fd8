// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace burnwick {

/// An exchange with a server that did not end in an answer. Its text names what went wrong and nothing of
/// the request: no address, header or body.
class TransportError final : public std::runtime_error {
public:
    enum class Kind {
        unreachable,     ///< no such host, refused, no network
        untrustedServer, ///< no encrypted connection to the host that was asked for
        timedOut,        ///< the deadline for the whole exchange passed
        incomplete,      ///< the connection broke, or garbage came over it
        notHttp,         ///< an answer that has no HTTP status
        tooLarge,        ///< the body exceeds the limit
        invalidRequest,  ///< refused before it was sent
        cancelled,       ///< whoever would have finished the exchange is gone
    };

    /// `detail` is appended in parentheses; it must be free of the request's data.
    explicit TransportError(Kind kind, const std::string &detail = {});

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }

private:
    Kind m_kind;
};

} // namespace burnwick
