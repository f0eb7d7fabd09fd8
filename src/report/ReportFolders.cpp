// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/ReportFolders.h"

#include "forms/TerminalText.h"
#include "prefs/Settings.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

#include <pwd.h>
#include <unistd.h>

namespace burnwick {

namespace {

void complainAbout(const std::vector<ClaudeFolder> &folders) {
    for (const ClaudeFolder &folder : folders) {
        const std::error_code error = folderError(folder.logs);
        if (error && (folder.isChosen || error != std::errc::no_such_file_or_directory))
            complain(printableText(folder.logs.string() + ": " + folderErrorText(error)));
    }
}

} // namespace

void complain(std::string_view reason) {
    std::cerr << "burnwick-report: " << reason << '\n';
}

std::filesystem::path homeDirectory() {
    if (const char *home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    const passwd *account = ::getpwuid(::getuid());
    return account != nullptr ? account->pw_dir : "/";
}

std::vector<ClaudeFolder> userFolders(const UserDefaults &defaults) {
    std::vector<std::string> chosen;
    for (const QString &folder : load(defaults, settings::logFolders))
        chosen.push_back(folder.toStdString());
    return claudeFolders(homeDirectory(), chosen);
}

std::vector<std::filesystem::path> foldersToRead(const ReportOptions &options, const UserDefaults &defaults) {
    std::vector<ClaudeFolder> folders;
    for (const std::filesystem::path &folder : options.logs)
        folders.push_back({{}, folder, true});
    if (options.logs.empty())
        folders = userFolders(defaults);
    complainAbout(folders);
    if (!options.logs.empty() &&
        std::ranges::all_of(options.logs, [](const auto &folder) { return bool(folderError(folder)); }))
        throw std::runtime_error("no logs can be read");
    return logFoldersOf(folders);
}

} // namespace burnwick
