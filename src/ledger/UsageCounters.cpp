// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/UsageCounters.h"

#include "ledger/LedgerFolder.h"
#include "ledger/TableRow.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QRandomGenerator>

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
constexpr std::size_t keyBytes = 32;

constexpr const char *schema = R"(
    CREATE TABLE IF NOT EXISTS cell(
        byProject INTEGER NOT NULL, day INTEGER NOT NULL, project BLOB NOT NULL, model BLOB NOT NULL,
        input INTEGER NOT NULL, output INTEGER NOT NULL, cacheWrite5m INTEGER NOT NULL,
        cacheWrite1h INTEGER NOT NULL, cacheRead INTEGER NOT NULL, messages INTEGER NOT NULL,
        unpriced INTEGER NOT NULL, picodollars INTEGER NOT NULL,
        PRIMARY KEY(byProject, day, project, model)) WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS key(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL);
)";

constexpr const char *raiseCell = R"(
    INSERT INTO cell VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)
    ON CONFLICT DO UPDATE SET
        input = max(input, excluded.input), output = max(output, excluded.output),
        cacheWrite5m = max(cacheWrite5m, excluded.cacheWrite5m),
        cacheWrite1h = max(cacheWrite1h, excluded.cacheWrite1h),
        cacheRead = max(cacheRead, excluded.cacheRead), messages = max(messages, excluded.messages),
        unpriced = max(unpriced, excluded.unpriced), picodollars = max(picodollars, excluded.picodollars)
    WHERE excluded.input > input OR excluded.output > output OR excluded.cacheWrite5m > cacheWrite5m OR
        excluded.cacheWrite1h > cacheWrite1h OR excluded.cacheRead > cacheRead OR
        excluded.messages > messages OR excluded.unpriced > unpriced OR excluded.picodollars > picodollars
)";

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
        database.exec(schema);
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

std::vector<UsageCell> UsageCounters::raise(const std::vector<UsageCell> &cells, bool byProject) {
    return attempt([&](SQLite::Database &database) {
        SQLite::Statement raise(database, raiseCell);
        for (const UsageCell &cell : cells) {
            const std::int64_t day = cell.day ? cell.day->time_since_epoch().count() : noDay;
            StatementUse use(raise, std::int64_t{byProject}, day, std::string_view(cell.project),
                             std::string_view(cell.model));
            int index = 4;
            for (const std::int64_t count : cell.counts)
                use.bind(++index, count);
            use.run();
        }
        SQLite::Statement stored(database, "SELECT * FROM cell WHERE byProject = ?");
        std::map<std::pair<std::string, std::string>, UsageCell> sums;
        for (StatementUse use(stored, std::int64_t{byProject}); use.next();) {
            std::string project(use.bytes(2));
            std::string model(use.bytes(3));
            std::array<std::int64_t, UsageCell::picodollars + 1> counts{};
            for (std::size_t i = 0; i < counts.size(); ++i)
                counts[i] = use.integer(static_cast<int>(i) + 4);
            UsageCell &sum = sums[{project, model}];
            sum.project = std::move(project);
            sum.model = std::move(model);
            sum.add(counts);
        }
        std::vector<UsageCell> list;
        for (auto &[place, sum] : sums)
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
