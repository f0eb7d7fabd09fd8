// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LimitTable.h"

#include "ledger/ByteCodec.h"
#include "ledger/TableRow.h"
#include "model/QuotaWindow.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace burnwick {

namespace {

using std::chrono::seconds;

/// Small enough to be written anew with each sample; large enough that the rest of the row matters little.
constexpr std::size_t samplesPerPart = 64;
constexpr std::size_t maxModelSize = 256;
/// A percent that stays the same is written no more often.
constexpr std::chrono::minutes unchangedInterval{1};

std::int64_t secondsOf(Instant instant) {
    return std::chrono::duration_cast<seconds>(instant.time_since_epoch()).count();
}

std::int64_t hundredthsOf(double percent) {
    constexpr double most = 1e10;
    return std::llround(std::min(percent, most) * 100);
}

LimitSample sampleOf(std::int64_t time, std::int64_t hundredths) {
    return {Instant(seconds(time)), static_cast<double>(hundredths) / 100};
}

Instant moved(Instant instant, Instant::duration time) {
    if (time.count() < 0)
        return instant < Instant::min() - time ? Instant::min() : instant + time;
    return instant > Instant::max() - time ? Instant::max() : instant + time;
}

std::string encodeSamples(Limit::Source source, std::int64_t begin, const std::vector<LimitSample> &samples) {
    ByteWriter out;
    out.addUnsigned(static_cast<std::uint64_t>(source));
    std::int64_t time = begin;
    std::int64_t percent = 0;
    for (const LimitSample &sample : samples) {
        out.add(secondsOf(sample.at) - time);
        out.add(hundredthsOf(sample.percent) - percent);
        time = secondsOf(sample.at);
        percent = hundredthsOf(sample.percent);
    }
    return out.bytes;
}

bool decodeSamples(std::string_view bytes, std::int64_t begin, Limit::Source &source,
                   std::vector<LimitSample> &samples) {
    constexpr std::int64_t mostSeconds = std::chrono::floor<seconds>(Instant::duration::max()).count();
    ByteReader in(bytes);
    const std::uint64_t number = in.readUnsigned();
    source = static_cast<Limit::Source>(number);
    std::int64_t time = begin;
    std::int64_t percent = 0;
    while (!in.atEnd()) {
        time = wrappingSum(time, in.read());
        percent = wrappingSum(percent, in.read());
        if (time < -mostSeconds || time > mostSeconds)
            return false;
        samples.push_back(sampleOf(time, percent));
    }
    return !in.failed() && !samples.empty() && number <= 1;
}

std::int64_t checksumOf(std::int64_t resetsAt, std::int64_t kind, std::string_view model, std::int64_t begin,
                        std::string_view samples) {
    const std::array numbers{resetsAt, kind, begin};
    const std::string_view bytes(reinterpret_cast<const char *>(numbers.data()),
                                 sizeof numbers); // NOLINT: a hash of them
    return burnwick::checksumOf(samples, burnwick::checksumOf(model, burnwick::checksumOf(bytes, 0)));
}

} // namespace

struct LimitTable::Statements {
    SQLite::Database &database;
    SQLite::Statement find{database, "SELECT reset, kind, model, begin, samples, checksum FROM limitPart "
                                     "WHERE reset >= ? AND reset <= ? ORDER BY reset, kind, model, begin"};
    SQLite::Statement replace{database,
                              "REPLACE INTO limitPart(reset, kind, model, begin, samples, checksum) "
                              "VALUES(?, ?, ?, ?, ?, ?)"};
};

LimitTable::LimitTable(SQLite::Database &database)
    : m_statements(new Statements{database}) {}

LimitTable::~LimitTable() = default;

/// Returns the parts of the windows with these resets, by reset, limit and time.
std::vector<LimitTable::Part> LimitTable::partsBetween(Instant firstReset, Instant lastReset) {
    std::vector<Part> parts;
    StatementUse find(m_statements->find, firstReset.time_since_epoch().count(),
                      lastReset.time_since_epoch().count());
    while (find.next()) {
        const std::int64_t resetsAt = find.integer(0);
        const std::int64_t kind = find.integer(1);
        Part part{Instant(Instant::duration(resetsAt)),
                  static_cast<Limit::Kind>(kind),
                  std::string(find.bytes(2)),
                  find.integer(3),
                  {},
                  {}};
        const std::string_view samples = find.bytes(4);
        if (checksumOf(resetsAt, kind, part.model, part.begin, samples) != find.integer(5))
            throw DamagedLedger("a row is altered");
        if (!decodeSamples(samples, part.begin, part.source, part.samples))
            throw DamagedLedger("samples are malformed");
        parts.push_back(std::move(part));
    }
    return parts;
}

/// Returns the parts of the limit's window in order.
std::vector<LimitTable::Part> LimitTable::partsOf(const Limit &limit) {
    constexpr std::chrono::minutes farther{2};
    std::vector<Part> parts = partsBetween(moved(*limit.resetsAt, -farther), moved(*limit.resetsAt, farther));
    std::erase_if(parts, [&limit](const Part &part) {
        return part.kind != limit.kind || part.model != limit.model ||
               !isSameQuotaWindow(part.resetsAt, *limit.resetsAt);
    });
    if (!parts.empty())
        std::erase_if(parts,
                      [first = parts.front().resetsAt](const Part &part) { return part.resetsAt != first; });
    return parts;
}

bool LimitTable::record(const Limit &limit, bool mayWrite, std::vector<LimitSample> &samples) {
    if (!isInItsWindow(limit) || !(limit.usedPct >= 0) || limit.model.size() > maxModelSize) {
        samples.push_back({limit.observedAt, limit.usedPct});
        return true;
    }
    const std::vector<Part> parts = partsOf(limit);
    const LimitSample sample = sampleOf(secondsOf(limit.observedAt), hundredthsOf(limit.usedPct));
    for (const Part &part : parts) {
        for (const LimitSample &former : part.samples) {
            if (former.at < sample.at && isInWindow(former.at, *limit.resetsAt, windowLengthOf(limit.kind)))
                samples.push_back(former);
        }
    }
    addSample(samples, {limit.observedAt, limit.usedPct});

    const std::int64_t time = secondsOf(sample.at);
    const auto next = std::ranges::upper_bound(parts, time, {}, &Part::begin);
    const Part *const present = next != parts.begin() ? &*(next - 1) : nullptr;
    if (present != nullptr) {
        const LimitSample &last = present->samples.back();
        if (isSamePercent(last.percent, sample.percent) && last.at <= sample.at &&
            sample.at - last.at < unchangedInterval)
            return true;
    }
    const bool isNew = present == nullptr ||
                       (present->samples.size() >= samplesPerPart && present->samples.back().at < sample.at);
    Part part = isNew ? Part{parts.empty() ? *limit.resetsAt : parts.front().resetsAt,
                             limit.kind,
                             limit.model,
                             time,
                             limit.source,
                             {}}
                      : *present;
    addSample(part.samples, sample);
    if (!isNew && part.samples == present->samples)
        return true;
    if (part.samples.back() == sample)
        part.source = limit.source;
    if (mayWrite)
        replace(part);
    return mayWrite;
}

void LimitTable::replace(const Part &part) {
    const std::int64_t resetsAt = part.resetsAt.time_since_epoch().count();
    const auto kind = static_cast<std::int64_t>(part.kind);
    const std::string samples = encodeSamples(part.source, part.begin, part.samples);
    StatementUse(m_statements->replace, resetsAt, kind, std::string_view(part.model), part.begin,
                 std::string_view(samples), checksumOf(resetsAt, kind, part.model, part.begin, samples))
        .run();
}

std::vector<Limit> LimitTable::lastLimits(Instant now) {
    std::vector<Limit> limits;
    for (const Part &part : partsBetween(now, Instant::max())) {
        for (const LimitSample &sample : part.samples) {
            if (sample.at > now || part.resetsAt == now)
                break;
            const Limit limit{part.kind, part.model, sample.percent, part.resetsAt, sample.at, part.source};
            const auto known = std::ranges::find_if(
                limits, [&limit](const Limit &other) { return isSameLimit(limit, other); });
            if (known == limits.end())
                limits.push_back(limit);
            else if (known->observedAt < limit.observedAt)
                *known = limit;
        }
    }
    std::ranges::sort(limits, {}, [](const Limit &limit) { return std::tie(limit.kind, limit.model); });
    return limits;
}

void LimitTable::check() {
    static_cast<void>(partsBetween(Instant::min(), Instant::max()));
}

} // namespace burnwick
