// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/AutostartLoginItem.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/WholeFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QStandardPaths>

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

/// Far more than an entry with all its translations takes.
constexpr std::size_t largestEntry = 65'536;

LoginItemFailure failure(const fs::path &file, const std::string &reason) {
    return {file.string() + ": " + reason};
}

std::optional<LoginItemFailure> createEntry(const fs::path &file, const std::string &entry) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error)
        return failure(file.parent_path(), error.message());
    const auto size = static_cast<qint64>(entry.size());
    QSaveFile saved(QString::fromStdString(file.string()));
    // QSaveFile would commit a file that was cut short: it overlooks a full disk in its last flush and in its
    // sync.
    const bool written = saved.open(QIODevice::WriteOnly) && saved.write(entry.data(), size) == size &&
                         saved.flush() && ::fsync(saved.handle()) == 0 && saved.commit();
    return written ? std::nullopt : std::optional(failure(file, saved.errorString().toStdString()));
}

std::optional<LoginItemFailure> replaceEntry(const fs::path &file, const std::string &entry) {
    const std::error_code error = replaceWholeFile(file, entry);
    return error ? std::optional(failure(file, error.message())) : std::nullopt;
}

} // namespace

QString programNameForEntry(const QString &path, const QStringList &searchedFolders) {
    const QFileInfo program(path);
    const QString found = QStandardPaths::findExecutable(program.fileName(), searchedFolders);
    const bool same = !found.isEmpty() && QFileInfo(found).canonicalFilePath() == program.canonicalFilePath();
    return same ? program.fileName() : path;
}

AutostartLoginItem::AutostartLoginItem(const fs::path &folder, QString program)
    : m_file(folder / "burnwick.desktop")
    , m_program(std::move(program)) {}

bool AutostartLoginItem::isRegistered() const {
    const auto entry = readWholeFile(m_file, largestEntry);
    return entry && startsAtLogin(*entry);
}

std::optional<LoginItemFailure> AutostartLoginItem::registerItem() {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(m_file, error).type();
    std::string existing;
    if (type != fs::file_type::not_found) {
        const auto bytes = readWholeFile(m_file, largestEntry);
        if (!bytes)
            return failure(m_file, error ? error.message() : "not a file that can be read");
        existing = *bytes;
    }
    const std::string entry = autostartEntry(existing, m_program.toStdString());
    if (entry == existing)
        return std::nullopt;
    if (type == fs::file_type::symlink)
        return failure(m_file, "a link, which is left alone");
    if (QStandardPaths::findExecutable(m_program).isEmpty())
        return failure(m_file, "the program is not at " + m_program.toStdString() + " any more");
    const bool exists = type != fs::file_type::not_found;
    return exists ? replaceEntry(m_file, entry) : createEntry(m_file, entry);
}

std::optional<LoginItemFailure> AutostartLoginItem::unregisterItem() {
    if (!isRegistered())
        return std::nullopt;
    std::error_code error;
    if (fs::is_symlink(m_file, error))
        return failure(m_file, "a link, which is left alone");
    if (::unlink(m_file.c_str()) != 0 && errno != ENOENT)
        return failure(m_file, std::generic_category().message(errno));
    return std::nullopt;
}

} // namespace burnwick
