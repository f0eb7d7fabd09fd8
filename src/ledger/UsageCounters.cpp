// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/UsageCounters.h"

#include "ledger/LedgerFolder.h"
#include "ledger/TableRow.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <array>
#include <compare>
#include <limits>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

Q_LOGGING_CATEGORY(countersLog, "burnwick.counters")

constexpr int longestWait = 2'000; // milliseconds
constexpr std::int64_t noDay = std::numeric_limits<std::int32_t>::min();
constexpr int presentVersion = 1;
constexpr std::size_t keyBytes = 32;

constexpr const char *schema = R"(
    -- A message of 0 stands for those of a day that have no row of their own. Counts are those of UsageCell.
    CREATE TABLE IF NOT EXISTS cell(
        byProject INTEGER NOT NULL, day INTEGER NOT NULL, project BLOB NOT NULL, model BLOB NOT NULL,
        message INTEGER NOT NULL, c0 INTEGER, c1 INTEGER, c2 INTEGER, c3 INTEGER, c4 INTEGER, c5 INTEGER,
        c6 INTEGER, c7 INTEGER, PRIMARY KEY(byProject, day, project, model, message)) WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS since(byProject INTEGER PRIMARY KEY, day INTEGER NOT NULL);
    CREATE TABLE IF NOT EXISTS key(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL);
)";

using Counts = decltype(UsageCell::counts);

struct Place {
    std::int64_t day;
    std::string project;
    std::string model;
    std::int64_t message;

    auto operator<=>(const Place &) const = default;
};

using Cells = std::map<Place, Counts>;

Cells storedCells(SQLite::Database &database, bool byProject) {
    SQLite::Statement find(database, "SELECT day, project, model, message, c0, c1, c2, c3, c4, c5, c6, c7 "
                                     "FROM cell WHERE byProject = ?");
    Cells cells;
    for (StatementUse use(find, std::int64_t{byProject}); use.next();) {
        Counts &counts =
            cells[{use.integer(0), std::string(use.bytes(1)), std::string(use.bytes(2)), use.integer(3)}];
        for (std::size_t i = 0; i < counts.size(); ++i)
            counts[i] = use.integer(4 + static_cast<int>(i));
    }
    return cells;
}

void add(Counts &sum, const Counts &counts) {
    UsageCell cell{.counts = sum};
    cell.add(counts);
    sum = cell.counts;
}

/// Returns the latest day since which messages were ever counted singly, and keeps it.
std::int64_t latestSince(SQLite::Database &database, bool byProject, std::int64_t day) {
    SQLite::Statement raise(database, "INSERT INTO since VALUES(?, ?) ON CONFLICT DO UPDATE SET "
                                      "day = excluded.day WHERE excluded.day > day");
    StatementUse(raise, std::int64_t{byProject}, day).run();
    SQLite::Statement find(database, "SELECT day FROM since WHERE byProject = ?");
    StatementUse use(find, std::int64_t{byProject});
    use.next();
    return use.integer(0);
}

/// Adds the messages of earlier days to their days.
Cells condensed(const Cells &cells, std::int64_t singlySince) {
    Cells result;
    for (const auto &[place, counts] : cells) {
        Place target = place;
        if (place.day < singlySince)
            target.message = 0;
        add(result[target], counts);
    }
    return result;
}

/// Makes the stored cells those of the map.
void store(SQLite::Database &database, bool byProject, const Cells &stored, const Cells &cells) {
    SQLite::Statement remove(database, "DELETE FROM cell WHERE byProject = ? AND day = ? AND project = ? AND "
                                       "model = ? AND message = ?");
    SQLite::Statement replace(database, "REPLACE INTO cell VALUES(?,?,?,?,?, ?,?,?,?,?,?,?,?)");
    for (const auto &[place, counts] : stored) {
        if (!cells.contains(place))
            StatementUse(remove, std::int64_t{byProject}, place.day, std::string_view(place.project),
                         std::string_view(place.model), place.message)
                .run();
    }
    for (const auto &[place, counts] : cells) {
        if (const auto before = stored.find(place); before != stored.end() && before->second == counts)
            continue;
        StatementUse use(replace, std::int64_t{byProject}, place.day, std::string_view(place.project),
                         std::string_view(place.model), place.message);
        int index = 5;
        for (const std::int64_t number : counts)
            use.bind(++index, number);
        use.run();
    }
}

/// For the user alone.
void makeFile(const fs::path &path) {
    std::error_code ignored; // SQLite fails if the folder is missing
    fs::create_directories(path.parent_path().parent_path(), ignored);
    ::mkdir(path.parent_path().c_str(), S_IRWXU);
    const int file =
        ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
    if (file >= 0)
        ::close(file);
}

std::string randomBytes() {
    std::array<quint32, keyBytes / sizeof(quint32)> numbers{};
    QRandomGenerator::system()->fillRange(numbers.data(), std::ssize(numbers));
    return {reinterpret_cast<const char *>(numbers.data()), keyBytes}; // NOLINT: their bytes
}

} // namespace

class UsageCounters::File {
public:
    explicit File(const fs::path &path)
        : database(path.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, longestWait) {
        const int version = database.execAndGet("PRAGMA user_version").getInt();
        if (version > presentVersion)
            throw std::runtime_error("a later version of Burnwick wrote it");
        if (version == presentVersion)
            return;
        database.exec(schema);
        database.exec("PRAGMA user_version = " + std::to_string(presentVersion));
    }

    SQLite::Database database;
};

UsageCounters::UsageCounters(const fs::path &folder)
    : m_path(folder / "counters.sqlite") {}

UsageCounters::~UsageCounters() = default;

/// Calls the function in a transaction that may write, and once more after damage.
template <typename Work>
auto UsageCounters::attempt(Work work) {
    for (bool isFirst = true;; isFirst = false) {
        try {
            if (m_file == nullptr) {
                makeFile(m_path);
                m_file = std::make_unique<File>(m_path);
            }
            SQLite::Database &database = m_file->database;
            SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
            auto result = work(database);
            transaction.commit();
            return result;
        } catch (const std::exception &error) {
            m_file.reset();
            if (!isFirst || !isDamage(error))
                throw std::runtime_error(m_path.string() + ": " + error.what());
            fs::rename(m_path, fs::path(m_path) += ".damaged");
            qCWarning(countersLog, "%s: damaged and moved aside, so the counters begin anew: %s",
                      m_path.c_str(), error.what());
        }
    }
}

std::vector<UsageCell> UsageCounters::raise(const std::vector<UsageCell> &cells, bool byProject,
                                            std::chrono::sys_days singlySince) {
    return attempt([&](SQLite::Database &database) {
        const std::int64_t since = latestSince(database, byProject, singlySince.time_since_epoch().count());
        const Cells stored = storedCells(database, byProject);
        Cells present = condensed(stored, since);
        std::map<std::pair<std::int64_t, std::string>, Place> places; // of single messages
        for (const auto &[place, counts] : present) {
            if (place.message != 0)
                places.emplace(std::pair(place.message, place.model), place);
        }
        Cells now;
        for (const UsageCell &cell : cells) {
            Place place{cell.day ? cell.day->time_since_epoch().count() : noDay, cell.project, cell.model,
                        static_cast<std::int64_t>(cell.message)};
            // A log that appears later may move a message to another day or project.
            if (const auto known = places.find({place.message, place.model}); known != places.end())
                place = known->second;
            add(now[place], cell.counts);
        }
        for (const auto &[place, counts] : condensed(now, since)) {
            Counts &highest = present[place];
            std::ranges::transform(highest, counts, highest.begin(), std::ranges::max);
        }
        store(database, byProject, stored, present);
        std::map<std::pair<std::string, std::string>, UsageCell> sums;
        for (const auto &[place, counts] : present) {
            UsageCell &sum = sums[{place.project, place.model}];
            sum.project = place.project;
            sum.model = place.model;
            sum.add(counts);
        }
        std::vector<UsageCell> list;
        for (auto &[names, sum] : sums)
            list.push_back(std::move(sum));
        return list;
    });
}

std::string UsageCounters::key() {
    return attempt([](SQLite::Database &database) {
        SQLite::Statement insert(database, "INSERT OR IGNORE INTO key VALUES(1, ?)");
        const std::string bytes = randomBytes();
        StatementUse(insert, std::string_view(bytes)).run();
        SQLite::Statement find(database, "SELECT bytes FROM key WHERE id = 1");
        StatementUse use(find);
        use.next();
        return std::string(use.bytes(0));
    });
}

} // namespace burnwick
