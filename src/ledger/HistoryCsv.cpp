// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/HistoryCsv.h"

#include "ledger/HistoryCells.h"

#include <algorithm>
#include <exception>
#include <unordered_map>
#include <utility>

#include <csv.h>

namespace burnwick {

namespace {

/// Bytes. Names have no limit in the logs; a longer line is no usage line.
constexpr std::size_t longestLine = std::size_t{16} << 20U;
/// Bytes that are parsed at once, so that a longer line is noticed in time.
constexpr std::size_t longestPart = std::size_t{1} << 16U;

/// A usage line while it is decoded.
struct Line {
    InternedString session;
    std::optional<Instant> time;
    InternedString model;
    SessionTokens counts;
    UsageDetails details;
};
/// A usage line while it is encoded.
struct LineView {
    InternedString session;
    std::optional<Instant> time;
    InternedString model;
    const SessionTokens &counts;
    const UsageDetails &details;
};

/// The table of columns. Calls visit(name, value) for each; the value's type determines its form.
template <typename AnyLine, typename Visit>
void forEachColumn(AnyLine &&line, Visit visit) {
    visit("session", line.session);
    visit("time", line.time);
    visit("model", line.model);
    visit("input_tokens", line.counts.input);
    visit("output_tokens", line.counts.output);
    visit("cache_write_tokens", line.counts.cacheCreation);
    visit("cache_read_tokens", line.counts.cacheRead);
    visit("cache_write_5m", line.details.cacheWrite5m);
    visit("cache_write_1h", line.details.cacheWrite1h);
    visit("web_searches", line.details.webSearches);
    visit("cost_usd", line.details.cost);
    visit("service_tier", line.details.serviceTier);
    visit("speed", line.details.speed);
    visit("geography", line.details.geography);
    visit("sidechain", line.details.isSidechain);
    visit("api_error", line.details.isApiError);
    visit("project", line.details.folder);
    visit("log_session", line.details.session);
    visit("line_key", line.details.lineKey);
    visit("message_key", line.details.messageKey);
    visit("request_key", line.details.requestKey);
    visit("advisors", line.details.advisors);
}

} // namespace

std::string historyCsvHeader() {
    std::string header;
    forEachColumn(Line(), [&](const char *name, const auto &) {
        header += header.empty() ? "" : ",";
        header += name;
    });
    return header + '\n';
}

void appendHistoryCsv(std::string &text, const SessionLines &lines) {
    for (std::size_t i = 0; i < lines.entries.size(); ++i) {
        const JSONLEntry &entry = lines.entries[i];
        const LineView line{lines.session, entry.timestamp(), entry.model(), entry.counts(),
                            lines.details[i]};
        forEachColumn(line, [&](const char *, const auto &value) {
            printCell(text, value);
            text += ',';
        });
        text.back() = '\n';
    }
}

/// Receives the cells from the parser.
class HistoryCsvReader::Rows {
public:
    Rows() {
        csv_init(&m_parser, CSV_STRICT | CSV_REPALL_NL | CSV_EMPTY_IS_NULL);
        csv_set_space_func(&m_parser, [](unsigned char) { return 0; }); // keeps blanks around a text
        csv_set_blk_size(&m_parser, longestPart);
    }
    ~Rows() { csv_free(&m_parser); }
    Rows(const Rows &) = delete;
    Rows &operator=(const Rows &) = delete;

    void add(std::string_view part) {
        const bool isParsed =
            csv_parse(&m_parser, part.data(), part.size(), receiveCell, receiveEnd, this) == part.size();
        rethrow();
        if (!isParsed)
            fail("malformed quotes");
        m_unfinished = m_hasEnded ? 0 : m_unfinished + part.size();
        m_hasEnded = false;
        if (m_unfinished > longestLine)
            fail("the line is too long");
    }
    std::vector<SessionLines> finish() {
        csv_fini(&m_parser, receiveCell, receiveEnd, this);
        rethrow();
        if (m_cellOf.empty())
            readHeader();
        return std::move(m_sessions);
    }

private:
    // No exception passes through the parser, which is in C.
    template <typename Work>
    void attempt(Work work) noexcept {
        if (m_failure != nullptr)
            return;
        try {
            work();
        } catch (...) {
            m_failure = std::current_exception();
        }
    }
    void rethrow() {
        if (m_failure != nullptr)
            std::rethrow_exception(m_failure);
    }
    [[noreturn]] void fail(const std::string &reason) const {
        throw MalformedHistory("line " + std::to_string(m_line) + ": " + reason);
    }

    static void receiveCell(void *bytes, std::size_t size, void *rows) noexcept {
        auto &self = *static_cast<Rows *>(rows);
        self.attempt([&] {
            self.m_texts.append(bytes != nullptr ? static_cast<const char *>(bytes) : "", size);
            self.m_ends.emplace_back(self.m_texts.size(), bytes == nullptr);
        });
    }
    /// `end` is -1 after the last byte of the file.
    static void receiveEnd(int end, void *rows) noexcept {
        auto &self = *static_cast<Rows *>(rows);
        self.attempt([&] {
            if (end < 0)
                self.fail("the line is truncated");
            self.readRow();
            self.m_line += std::ranges::count(self.m_texts, '\n') + (end == '\n' ? 1 : 0);
            self.m_texts.clear();
            self.m_ends.clear();
            self.m_hasEnded = true;
        });
    }

    void readRow() {
        if (m_ends.empty())
            return; // the line feed after a carriage return, or an empty line
        m_cells.clear();
        std::size_t begin = 0;
        for (const auto &[end, isNull] : m_ends) {
            m_cells.push_back({std::string_view(m_texts).substr(begin, end - begin), isNull});
            begin = end;
        }
        if (m_cellOf.empty())
            readHeader();
        else
            readLine();
    }
    /// Finds the cell of each column.
    void readHeader() {
        forEachColumn(Line(), [&](const std::string &name, const auto &) {
            const auto found = std::ranges::find(m_cells, name, &Cell::text);
            if (found == m_cells.end())
                fail("no column \"" + name + "\", so this is no history that Burnwick exported");
            m_cellOf.push_back(static_cast<std::size_t>(found - m_cells.begin()));
        });
        m_width = m_cells.size();
    }
    void readLine() {
        if (m_cells.size() != m_width)
            fail("the number of cells is " + std::to_string(m_cells.size()) + " instead of " +
                 std::to_string(m_width));
        Line line;
        auto cell = m_cellOf.begin();
        forEachColumn(line, [&](const char *name, auto &value) {
            if (!parseCell(m_cells[*cell++], value))
                fail(std::string("malformed value in the column \"") + name + '"');
        });
        static const InternedString assistant("assistant");
        const auto [known, isNew] = m_ordinals.try_emplace(line.session, m_sessions.size());
        if (isNew)
            m_sessions.push_back({line.session, {}, {}});
        SessionLines &session = m_sessions[known->second];
        session.entries.emplace_back(assistant, line.time, line.model, line.counts)
            .setSessionId(line.session);
        session.details.push_back(std::move(line.details));
    }

    csv_parser m_parser{};
    std::exception_ptr m_failure;
    std::ptrdiff_t m_line = 1; ///< in which the row begins
    std::size_t m_unfinished = 0;
    bool m_hasEnded = false; ///< whether a row has ended in this part
    // Of the row: its texts without separators, and for each its end and whether the cell is null.
    std::string m_texts;
    std::vector<std::pair<std::size_t, bool>> m_ends;
    std::vector<Cell> m_cells;
    std::vector<std::size_t> m_cellOf; ///< of each column; empty before the header
    std::size_t m_width = 0;
    std::vector<SessionLines> m_sessions;
    std::unordered_map<InternedString, std::size_t> m_ordinals;
};

HistoryCsvReader::HistoryCsvReader()
    : m_rows(std::make_unique<Rows>()) {}

HistoryCsvReader::~HistoryCsvReader() = default;

void HistoryCsvReader::add(std::string_view bytes) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), longestPart)))
        m_rows->add(bytes.substr(0, longestPart));
}

std::vector<SessionLines> HistoryCsvReader::finish() {
    return m_rows->finish();
}

} // namespace burnwick
