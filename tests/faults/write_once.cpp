// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

/// write_once KIND FILE [short]: changes one of the user's files as the program does. Returns 0 when the new
/// contents are in place, otherwise 3. With "short" no call writes more than a few bytes. A call of getppid()
/// before and after marks the calls in between for strace.

#include "platform/linux/defaults/JsonUserDefaults.h"
#include "platform/linux/login/AutostartLoginItem.h"
#include "platform/linux/secrets/LinuxSecretStore.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

bool shortWrites = false;

bool changeSettings(const fs::path &file) {
    static bool failed = false;
    burnwick::JsonUserDefaults settings(QString::fromStdString(file));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &) {
        failed |= std::strcmp(context.category, "burnwick.defaults") == 0;
    });
    settings.set(QStringLiteral("refreshRate"), qint64(60));
    return !failed;
}

bool replaceLogin(const fs::path &file) {
    burnwick::LinuxSecretStore store([&file] { return std::vector{file.parent_path()}; });
    bool inPlace = false;
    store.replace(burnwick::claudeCodeService, {"a login that needs several short writes", file},
                  [&inPlace](bool replaced) { inPlace = replaced; });
    return inPlace;
}

bool registerLoginItem(const fs::path &file) {
    burnwick::AutostartLoginItem item(file.parent_path(), QStringLiteral("/bin/true"));
    return !item.registerItem();
}

} // namespace

/// Replaces the C library's function in all libraries.
extern "C" ssize_t write(int fd, const void *bytes, size_t count) {
    constexpr size_t few = 7;
    return ::syscall(SYS_write, fd, bytes, shortWrites ? std::min(few, count) : count);
}

int main(int argc, char **argv) {
    const std::map<std::string, std::function<bool(const fs::path &)>> kinds{
        {"settings", changeSettings},
        {"credentials", replaceLogin},
        {"autostart", registerLoginItem},
    };
    const auto kind = argc >= 3 ? kinds.find(argv[1]) : kinds.end();
    if (kind == kinds.end())
        return 2;
    shortWrites = argc > 3;
    ::getppid();
    const bool inPlace = kind->second(argv[2]);
    ::getppid();
    return inPlace ? 0 : 3;
}
