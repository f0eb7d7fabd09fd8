// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "quota/OAuthFetcher.h"

#include <vector>

namespace burnwick {

/// Takes an answer of the usage endpoint, received at `now`. Keeps limits that the answer does not have if
/// the status line observed them in their present window.
void takeAnswer(AccountFigures &figures, const OAuthFetcher::Usage &answer, Instant now);

/// Takes observations of the status line. One in the future counts as of `now`. Ignores those that are older
/// than the known observation of the same limit, and those of a window that is over when the known one is of
/// the present window. Returns whether the session's limit is among those taken.
bool takeObservations(AccountFigures &figures, std::vector<Limit> observed, Instant now);

} // namespace burnwick
