// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/files/WholeFile.h"

#include <QtCore/QRandomGenerator>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// An open file, closed with the object.
class Descriptor {
public:
    explicit Descriptor(int fd) noexcept
        : m_fd(fd) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return m_fd >= 0; }
    [[nodiscard]] int get() const noexcept { return m_fd; }
    /// Returns false also when the file system reports a full disk only now.
    bool close() noexcept {
        const int fd = std::exchange(m_fd, -1);
        return fd < 0 || ::close(fd) == 0;
    }

private:
    int m_fd;
};

std::error_code lastError() {
    return {errno, std::generic_category()};
}

bool writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::string temporaryName(const std::string &name) {
    const std::uint64_t number = QRandomGenerator::system()->generate64();
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return "." + name + "." + digits.data();
}

bool isTemporaryNameFor(std::string_view file, std::string_view name) {
    const std::string prefix = "." + std::string(file) + ".";
    return name.size() == prefix.size() + 16 && name.starts_with(prefix) &&
           name.find_first_not_of("0123456789abcdef", prefix.size()) == std::string_view::npos;
}

/// Copies the access list from the old file to the new one, or removes the new one's. With a list, the mode's
/// group bits are the most that the list grants, and the group itself may have less.
bool copyAccessList(int old, int fd) {
    constexpr const char *name = "system.posix_acl_access";
    const auto isAbsent = [] { return errno == ENODATA || errno == EOPNOTSUPP; };
    const ssize_t size = ::fgetxattr(old, name, nullptr, 0);
    if (size < 0) // the new file may have inherited a list from the folder
        return isAbsent() && (::fremovexattr(fd, name) == 0 || isAbsent());
    std::string list(static_cast<std::size_t>(size), '\0');
    return ::fgetxattr(old, name, list.data(), list.size()) == size &&
           ::fsetxattr(fd, name, list.data(), list.size(), 0) == 0;
}

/// Copies owner, group, access list and mode; false when it cannot copy the owner or the list.
bool copyAccess(int old, int fd) {
    struct stat was {};
    struct stat now {};
    if (::fstat(old, &was) != 0 || ::fstat(fd, &now) != 0)
        return false;
    mode_t mode = was.st_mode & 07777U;
    if (now.st_uid != was.st_uid && ::fchown(fd, was.st_uid, static_cast<gid_t>(-1)) != 0)
        return false;
    if (now.st_gid != was.st_gid && ::fchown(fd, static_cast<uid_t>(-1), was.st_gid) != 0)
        mode &= S_IRWXU;
    else if (!copyAccessList(old, fd))
        return false;
    return ::fchmod(fd, mode) == 0;
}

/// Leaves the error in errno. `mode` is that of the new file until it has the access of the old one, if any.
bool writeBeside(int directory, const std::string &temporary, mode_t mode, const Descriptor &old,
                 std::string_view contents) {
    Descriptor file(
        ::openat(directory, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    return file.isOpen() && writeAll(file.get(), contents) &&
           (!old.isOpen() || copyAccess(old.get(), file.get())) && ::fsync(file.get()) == 0 && file.close();
}

enum class Missing { isAnError, isCreated };

std::error_code write(const std::filesystem::path &file, std::string_view contents, Missing missing) {
    std::error_code error;
    const auto target = missing == Missing::isCreated ? std::filesystem::weakly_canonical(file, error)
                                                      : std::filesystem::canonical(file, error);
    if (error)
        return error;
    // All that follows is relative to the directory, which may be moved meanwhile.
    const Descriptor directory(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isOpen())
        return lastError();
    const std::string name = target.filename();
    const Descriptor old(
        ::openat(directory.get(), name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW | O_CLOEXEC));
    mode_t mode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
    if (old.isOpen()) {
        struct stat status {};
        if (::fstat(old.get(), &status) != 0)
            return lastError();
        if (!S_ISREG(status.st_mode))
            return std::make_error_code(std::errc::invalid_argument);
        mode = status.st_mode & (S_IRUSR | S_IWUSR); // private before copyAccess()
    } else if (missing == Missing::isAnError || errno != ENOENT) {
        return lastError();
    }

    const std::string temporary = temporaryName(name);
    if (!writeBeside(directory.get(), temporary, mode, old, contents) ||
        ::renameat(directory.get(), temporary.c_str(), directory.get(), name.c_str()) != 0) {
        error = lastError();
        if (error != std::errc::file_exists)
            ::unlinkat(directory.get(), temporary.c_str(), 0);
        return error;
    }
    // Without this call a power failure may restore the old contents. An error is ignored, because the new
    // ones have the name already.
    static_cast<void>(::fsync(directory.get()));
    return {};
}

} // namespace

std::optional<std::string> readWholeFile(const std::filesystem::path &file, std::size_t limit) {
    const Descriptor open(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!open.isOpen() || ::fstat(open.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    // One byte more shows that the limit is exceeded. Not the size in `status`: the file may be growing.
    std::string bytes(limit + 1, '\0');
    std::size_t length = 0;
    while (length <= limit) {
        const ssize_t count = ::read(open.get(), bytes.data() + length, bytes.size() - length);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return std::nullopt;
        if (count > 0)
            length += static_cast<std::size_t>(count);
    }
    if (length > limit)
        return std::nullopt;
    bytes.resize(length);
    bytes.shrink_to_fit();
    return bytes;
}

std::error_code replaceWholeFile(const std::filesystem::path &file, std::string_view contents) {
    return write(file, contents, Missing::isAnError);
}

std::error_code writeWholeFile(const std::filesystem::path &file, std::string_view contents) {
    return write(file, contents, Missing::isCreated);
}

void removeAbandonedFiles(const std::filesystem::path &file) {
    constexpr std::time_t underWayFor = 60; // seconds
    std::error_code error;
    // The file itself may be missing by now.
    const auto target = std::filesystem::weakly_canonical(file, error);
    if (error)
        return;
    const std::string name = target.filename();
    for (std::filesystem::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat status {};
        if (isTemporaryNameFor(name, entry->path().filename().native()) &&
            ::lstat(entry->path().c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            status.st_uid == ::geteuid() && std::time(nullptr) - status.st_mtime > underWayFor)
            static_cast<void>(::unlink(entry->path().c_str()));
    }
}

} // namespace burnwick
