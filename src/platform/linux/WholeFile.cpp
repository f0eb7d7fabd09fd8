// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/WholeFile.h"

#include <QtCore/QRandomGenerator>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
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
    /// Some file systems tell only now that the disk is full.
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

/// A name that nobody else takes for a temporary file of his own.
std::string temporaryName(const std::string &name) {
    const std::uint64_t number = QRandomGenerator::system()->generate64();
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return "." + name + "." + digits.data();
}

/// Gives the new file the old one's owner, group and mode; false when it cannot have the owner.
bool takeAfter(const struct stat &old, int fd) {
    struct stat now {};
    if (::fstat(fd, &now) != 0)
        return false;
    mode_t mode = old.st_mode & 07777U;
    if (now.st_uid != old.st_uid && ::fchown(fd, old.st_uid, static_cast<gid_t>(-1)) != 0)
        return false;
    if (now.st_gid != old.st_gid && ::fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0)
        mode &= S_IRWXU;
    return ::fchmod(fd, mode) == 0;
}

/// Leaves the error in errno.
bool writeBeside(int directory, const std::string &temporary, const struct stat &old,
                 std::string_view contents) {
    // Read-only where the old file is: the mode counts for those who open the file later.
    const mode_t mode = old.st_mode & (S_IRUSR | S_IWUSR);
    Descriptor file(
        ::openat(directory, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    return file.isOpen() && writeAll(file.get(), contents) && takeAfter(old, file.get()) &&
           ::fsync(file.get()) == 0 && file.close();
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
    std::error_code error;
    const auto target = std::filesystem::canonical(file, error);
    if (error)
        return error;
    // Everything below is done relative to the directory, which may be moved meanwhile.
    const Descriptor directory(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::string name = target.filename();
    struct stat old {};
    if (!directory.isOpen() || ::fstatat(directory.get(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0)
        return lastError();
    if (!S_ISREG(old.st_mode))
        return std::make_error_code(std::errc::invalid_argument);

    const std::string temporary = temporaryName(name);
    if (!writeBeside(directory.get(), temporary, old, contents) ||
        ::renameat(directory.get(), temporary.c_str(), directory.get(), name.c_str()) != 0) {
        error = lastError();
        if (error != std::errc::file_exists)
            ::unlinkat(directory.get(), temporary.c_str(), 0);
        return error;
    }
    // The new contents are in place, whatever comes of this: without it, a power failure may bring the old
    // ones back.
    static_cast<void>(::fsync(directory.get()));
    return {};
}

} // namespace burnwick
