// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/MetricsReport.h"

#include "forms/MetricsForm.h"
#include "ledger/UsageCounters.h"
#include "model/Version.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMessageAuthenticationCode>
#include <QtCore/QSaveFile>

#include <map>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// A name that nobody without the key can tell the path from. A plain hash of a path could be guessed.
std::string hashedName(const std::string &path, const QByteArray &key) {
    constexpr qsizetype digits = 16;
    return QMessageAuthenticationCode::hash(QByteArray::fromStdString(path), key, QCryptographicHash::Sha256)
        .toHex()
        .first(digits)
        .toStdString();
}

} // namespace

std::chrono::sys_days singlySince(Instant now) {
    return std::chrono::floor<std::chrono::days>(now) - std::chrono::days(1);
}

std::string metricsText(const ReportOptions &options, const Snapshot &snapshot, std::vector<UsageCell> cells,
                        bool areCounters, const std::filesystem::path &folder) {
    using Projects = ReportOptions::Projects;
    UsageCounters counters(folder);
    if (areCounters)
        cells = counters.raise(cells, options.metricsProjects != Projects::none,
                               singlySince(snapshot.usage.sessionReadAt.value()));
    if (options.metricsProjects == Projects::hashed) {
        const auto key = QByteArray::fromStdString(counters.key());
        std::map<std::string, std::string> names{{"", ""}};
        for (UsageCell &cell : cells) {
            std::string &name = names[cell.project];
            if (name.empty() && !cell.project.empty())
                name = hashedName(cell.project, key);
            cell.project = name;
        }
    }
    return metricsForm({std::move(cells), areCounters, snapshot.account.limits,
                        snapshot.usage.exactSession.burnRateTokensPerMin},
                       version());
}

MetricsFileTurn::MetricsFileTurn(const QString &file)
    : m_folder(::open(QFile::encodeName(QFileInfo(file).absolutePath()).constData(),
                      O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_folder >= 0)
        ::flock(m_folder, LOCK_EX);
}

MetricsFileTurn::~MetricsFileTurn() {
    if (m_folder >= 0)
        ::close(m_folder);
}

void writeMetricsFile(const QString &file, const std::string &text) {
    const QFileInfo present(file);
    if (present.exists() && !present.isFile())
        throw std::runtime_error("cannot write " + file.toStdString() + ": it is no regular file");
    QSaveFile target(file);
    const auto size = static_cast<qint64>(text.size());
    // QSaveFile alone would ignore a full disk in its last flush.
    const bool isWritten = target.open(QIODevice::WriteOnly) && target.write(text.data(), size) == size &&
                           target.flush() && target.commit();
    if (!isWritten)
        throw std::runtime_error("cannot write " + file.toStdString() + ": " +
                                 target.errorString().toStdString());
}

} // namespace burnwick
