// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace burnwick {

/// An exchange with a server that failed without a response. The text names the failure, and contains no
/// address, header or body of the request.
class TransportError final : public std::runtime_error {
public:
    enum class Kind {
        unreachable,     ///< unknown host, refused connection or no network
        untrustedServer, ///< no encrypted connection to the host in the URL
        timedOut,        ///< the whole exchange exceeded its deadline
        incomplete,      ///< the connection broke or the response is garbage
        notHttp,         ///< a response without an HTTP status
        tooLarge,        ///< the body exceeds the limit
        invalidRequest,  ///< rejected before it was sent
        cancelled,       ///< the object that runs the exchange was destroyed
    };

    /// Appends `detail` in parentheses; it must not contain data of the request.
    explicit TransportError(Kind kind, const std::string &detail = {});

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }

private:
    Kind m_kind;
};

} // namespace burnwick
