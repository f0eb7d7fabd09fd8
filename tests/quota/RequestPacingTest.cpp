// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RequestPacing.h"

#include <gtest/gtest.h>

#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Seconds = std::chrono::seconds;

struct Event {
    enum class Kind { request, refusal, answer, observation };
    Seconds at;
    Kind kind;
    std::optional<Seconds> retryAfter{};
    double jitter = 0;
};

constexpr Instant start{std::chrono::sys_days(std::chrono::January / 1 / 2025)};

TEST(RequestPacing, EventsPostponeRequests) {
    using enum Event::Kind;
    const struct {
        const char *what;
        std::vector<Event> events;
        Seconds now;
        Seconds timer, user; ///< the earliest requests
    } rows[] = {
        {"first request", {}, 0s, 0s, 0s},
        {"after a refusal", {{0s, refusal}}, 1s, 10min, 30s},
        {"the user's pause is over", {{0s, refusal}}, 30s, 10min, 30s},
        {"the pause is over", {{0s, refusal}}, 10min, 10min, 10min},
        {"no wait is no permission", {{0s, refusal, 0s}}, 0s, 10min, 30s},
        {"a long wait", {{0s, refusal, 1600s}}, 0s, 1600s, 30s},
        {"a wait of two hours", {{0s, refusal, 7200s}}, 0s, 2h, 30s},
        {"an absurd wait", {{0s, refusal, 4294967295s}}, 0s, 24h, 30s},
        {"the longest jitter", {{0s, refusal, 1600s, 1}}, 0s, 1760s, 30s},
        {"half the jitter of an hour", {{0s, refusal, 3600s, 0.5}}, 0s, 63min, 30s},
        {"a second refusal", {{0s, refusal}, {10min, refusal}}, 10min, 30min, 10min + 30s},
        {"a wait below the minimum", {{0s, refusal}, {10min, refusal, 900s}}, 10min, 30min, 10min + 30s},
        {"a third", {{0s, refusal}, {10min, refusal}, {30min, refusal}}, 30min, 70min, 30min + 30s},
        {"a fifth", {5, {0s, refusal}}, 0s, 1h, 30s},
        {"an answer", {{0s, refusal}, {10min, refusal}, {1h, answer}}, 1h, 1h, 1h},
        {"a refusal after an answer", {{0s, refusal}, {1h, answer}, {1h, refusal}}, 1h, 70min, 1h + 30s},
        {"the clock was set back", {{0s, refusal}}, -1s, -1s, -1s},
        {"a young observation", {{0s, request}, {1min, observation}}, 2min, 6min, 2min},
        {"a young one all the time", {{0s, request}, {28min, observation}}, 28min, 30min, 28min},
        {"an old one", {{0s, request}, {0s, observation}}, 5min, 5min, 5min},
        {"one before the first request", {{0s, observation}}, 1s, 1s, 1s},
        {"one in the future", {{0s, request}, {1h, observation}}, 1min, 1min, 1min},
        {"a request in the future", {{1h, request}, {0s, observation}}, 1min, 1min, 1min},
        {"a refusal beside one", {{0s, request}, {0s, refusal}, {8min, observation}}, 9min, 13min, 9min},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        RequestPacing pacing;
        for (const Event &event : row.events) {
            switch (event.kind) {
            case request:
                pacing.noteRequest(start + event.at);
                break;
            case refusal:
                pacing.noteRefusal(start + event.at, event.retryAfter, event.jitter);
                break;
            case answer:
                pacing.forgetRefusals();
                break;
            case observation:
                pacing.noteObservation(start + event.at);
                break;
            }
        }
        EXPECT_EQ(pacing.earliest(RequestPacing::Asker::timer, start + row.now) - start, row.timer);
        EXPECT_EQ(pacing.earliest(RequestPacing::Asker::user, start + row.now) - start, row.user);
    }
}

} // namespace
} // namespace burnwick
