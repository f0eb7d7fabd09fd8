// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include "platform/Platform.h"
#include "platform/Process.h"
#include "platform/macos/foundation/MainThreadCalls.h"
#include "platform/macos/foundation/Text.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace burnwick {

namespace {

NSDictionary *itemOf(const std::string &service) {
    return @{
        (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
        (__bridge id)kSecAttrService : toNSString(service),
    };
}

std::optional<StoredSecret> readItem(const std::string &service) {
    NSMutableDictionary *query = [itemOf(service) mutableCopy];
    query[(__bridge id)kSecReturnData] = @YES;
    query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;
    CFTypeRef found = nullptr;
    if (SecItemCopyMatching((__bridge CFDictionaryRef)query, &found) != errSecSuccess)
        return std::nullopt;
    id result = CFBridgingRelease(found);
    if (![result isKindOfClass:[NSData class]])
        return std::nullopt;
    NSData *data = result;
    return StoredSecret{std::string(static_cast<const char *>(data.bytes), data.length), {}};
}

bool updateItem(const std::string &service, const std::string &blob) {
    NSData *data = [NSData dataWithBytes:blob.data() length:blob.size()];
    NSDictionary *change = @{(__bridge id)kSecValueData : data};
    return SecItemUpdate((__bridge CFDictionaryRef)itemOf(service), (__bridge CFDictionaryRef)change) ==
           errSecSuccess;
}

/// Generic passwords of the login Keychain. A secret has no place besides its service.
///
/// The system's calls block while the system asks the user for access. Each runs on a detached thread, for
/// which the program does not wait at its end; one after the other. Readings that are requested while one
/// waits for the user share its answer: otherwise a refusal would be followed by further questions.
class KeychainSecretStore final : public SecretStore {
public:
    void read(const std::string &service,
              std::function<void(std::optional<StoredSecret> secret)> answer) override {
        auto &readers = m_readers[service];
        readers.push_back(m_calls.queued(std::move(answer)));
        if (readers.size() > 1)
            return;
        const auto deliver = m_calls.queued([this, service](const std::optional<StoredSecret> &secret) {
            for (const auto &reader : std::exchange(m_readers[service], {}))
                reader(secret);
        });
        runInTurn([deliver, service] { deliver(readItem(service)); });
    }

    void replace(const std::string &service, const StoredSecret &secret,
                 std::function<void(bool replaced)> answer) override {
        runInTurn([deliver = m_calls.queued(std::move(answer)), service, blob = secret.blob] {
            deliver(updateItem(service, blob));
        });
    }

private:
    void runInTurn(std::function<void()> work) {
        platform::runDetachedThread([turn = m_turn, work = std::move(work)] {
            const std::lock_guard lock(*turn);
            @autoreleasepool {
                work();
            }
        });
    }

    std::map<std::string, std::vector<std::function<void(std::optional<StoredSecret>)>>> m_readers;
    std::shared_ptr<std::mutex> m_turn = std::make_shared<std::mutex>();
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<SecretStore> platform::makeSecretStore(ConfigurationFolders) {
    return std::make_unique<KeychainSecretStore>();
}

} // namespace burnwick
