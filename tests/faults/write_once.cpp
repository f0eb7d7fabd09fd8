// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

/// write_once KIND FILE [short]: changes one of the user's files as the program does. Returns 0 when the new
/// contents are in place, otherwise 3. With "short" no call writes more than a few bytes. A call of getppid()
/// before and after marks the calls in between for strace.

#include "platform/linux/login/AutostartLoginItem.h"
#include "platform/linux/secrets/LinuxSecretStore.h"
#include "prefs/UserDefaults.h"
#include "quota/KeychainManager.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using burnwick::StoredSecret;

bool shortWrites = false;
bool complained = false;

/// The program's store, which also records whether the last replacement succeeded.
class WatchedStore final : public burnwick::SecretStore {
public:
    explicit WatchedStore(const fs::path &home)
        : m_store(home) {}

    void read(const std::string &service,
              std::function<void(std::optional<StoredSecret> secret)> answer) override {
        m_store.read(service, std::move(answer));
    }
    void replace(const std::string &service, const StoredSecret &secret,
                 std::function<void(bool replaced)> answer) override {
        m_store.replace(service, secret, [this, answer = std::move(answer)](bool replaced) {
            m_replaced = replaced;
            answer(replaced);
        });
    }
    [[nodiscard]] bool hasReplaced() const { return m_replaced; }

private:
    burnwick::LinuxSecretStore m_store;
    bool m_replaced = false;
};

bool changeSettings(const fs::path &file) {
    burnwick::UserDefaults settings(QString::fromStdString(file));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &) {
        complained |= std::strcmp(context.category, "burnwick.defaults") == 0;
    });
    settings.set(QStringLiteral("refreshRate"), qint64(60));
    return !complained;
}

bool renewTokens(const fs::path &file) {
    WatchedStore store(file.parent_path().parent_path());
    burnwick::KeychainManager keychain(store);
    static_cast<void>(keychain.updateCredentials("r", {"new-access", "new-refresh", burnwick::Instant()}));
    return store.hasReplaced();
}

bool registerLoginItem(const fs::path &file) {
    burnwick::AutostartLoginItem item(file.parent_path(), QStringLiteral("/bin/true"));
    return !item.registerItem();
}

} // namespace

/// Replaces the C library's function, also for the libraries.
extern "C" ssize_t write(int fd, const void *bytes, size_t count) {
    constexpr size_t few = 7;
    return ::syscall(SYS_write, fd, bytes, shortWrites ? std::min(few, count) : count);
}

int main(int argc, char **argv) {
    const std::map<std::string, std::function<bool(const fs::path &)>> kinds{
        {"settings", changeSettings},
        {"credentials", renewTokens},
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
