// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/login/AutostartLoginItem.h"

#include "platform/Platform.h"
#include "platform/linux/files/WholeFile.h"
#include "platform/linux/login/AutostartEntry.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestEntry = 65'536;

constexpr const char *unreadable = "not a file that can be read";

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

LoginItemState AutostartLoginItem::state() const {
    return startsAtLogin(entry().value_or("")) ? LoginItemState::on : LoginItemState::off;
}

std::optional<LoginItemFailure> AutostartLoginItem::registerItem() {
    const auto existing = entry();
    if (!existing)
        return failure(unreadable);
    std::string wanted = switchedEntry(*existing, true);
    if (existing->empty() || isUnchangedEntry(wanted))
        wanted = autostartEntry(m_program.toStdString());
    if (wanted == *existing)
        return startsAtLogin(wanted) ? std::nullopt : std::optional(failure("an entry that starts nothing"));
    if (QStandardPaths::findExecutable(m_program).isEmpty())
        return failure("the program is not at " + m_program.toStdString() + " any more");
    return write(wanted);
}

std::optional<LoginItemFailure> AutostartLoginItem::unregisterItem() {
    const auto existing = entry();
    if (!existing)
        return failure(unreadable);
    if (!startsAtLogin(*existing))
        return std::nullopt;
    std::error_code error;
    if (fs::is_symlink(m_file, error) || !isUnchangedEntry(*existing))
        return write(switchedEntry(*existing, false));
    if (::unlink(m_file.c_str()) != 0 && errno != ENOENT)
        return failure(std::generic_category().message(errno));
    return std::nullopt;
}

std::optional<LoginItemFailure> AutostartLoginItem::restoreChoice(bool on) {
    const std::string existing = entry().value_or("");
    if (isUnchangedEntry(existing))
        return on ? registerItem() : unregisterItem();
    return on && existing.empty() ? registerItem() : std::nullopt;
}

std::optional<std::string> AutostartLoginItem::entry() const {
    std::error_code error;
    const bool isMissing = fs::symlink_status(m_file, error).type() == fs::file_type::not_found;
    return isMissing ? std::string() : readWholeFile(m_file, largestEntry);
}

LoginItemFailure AutostartLoginItem::failure(const std::string &reason) const {
    return {m_file.string() + ": " + reason};
}

std::optional<LoginItemFailure> AutostartLoginItem::write(const std::string &entry) const {
    std::error_code error;
    if (fs::is_symlink(m_file, error))
        return failure("a link, which is left alone");
    error.clear();
    fs::create_directories(m_file.parent_path(), error);
    if (!error)
        error = writeWholeFile(m_file, entry);
    return error ? std::optional(failure(error.message())) : std::nullopt;
}

namespace {

/// The XDG Base Directory Specification ignores a relative path in the variable, Qt does not.
QString configFolder() {
    const QString chosen = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(chosen) ? chosen : QDir::homePath() + QStringLiteral("/.config");
}

} // namespace

std::unique_ptr<LoginItem> platform::makeLoginItem() {
    // Not this process's PATH: the desktop's session may have only a part of it.
    const QStringList everySessionsPath{QStringLiteral("/usr/local/bin"), QStringLiteral("/usr/bin"),
                                        QStringLiteral("/bin")};
    return std::make_unique<AutostartLoginItem>(
        (configFolder() + QStringLiteral("/autostart")).toStdString(),
        programNameForEntry(QCoreApplication::applicationFilePath(), everySessionsPath));
}

} // namespace burnwick
