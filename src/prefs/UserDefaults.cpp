// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/UserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(defaultsLog, "burnwick.defaults")

constexpr QFile::Permissions readableByOwner = QFile::ReadOwner | QFile::WriteOwner;

/// Far beyond what all settings need; a larger file is none of ours.
constexpr qint64 largestFile = qint64{1} << 20U;

enum class FileState { readable, corrupt, unreadable };

struct FileContents {
    FileState state = FileState::readable;
    QJsonObject values; ///< none unless readable
    QString problem;    ///< why it is not
};

/// The file that a chain of links leads to, whether or not it exists: replacing a link would cut off its
/// target.
QString followLinks(QString path) {
    constexpr int longestChain = 40; // as in the kernel; a longer one or a loop fails when it is opened
    for (int i = 0; i < longestChain && QFileInfo(path).isSymLink(); ++i)
        path = QFileInfo(path).symLinkTarget();
    return path;
}

FileContents parseFile(const QByteArray &text) {
    if (text.isEmpty())
        return {};
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return {FileState::corrupt, {}, error.errorString()};
    if (!document.isObject())
        return {FileState::corrupt, {}, QStringLiteral("no object at its root")};
    return {FileState::readable, document.object(), {}};
}

FileContents readFile(const QString &path) {
    std::error_code error;
    const auto status = std::filesystem::status(path.toStdU16String(), error);
    if (status.type() == std::filesystem::file_type::not_found)
        return {};
    if (status.type() == std::filesystem::file_type::none)
        return {FileState::unreadable, {}, QString::fromStdString(error.message())};
    // Opening a pipe would wait for its writer.
    if (status.type() != std::filesystem::file_type::regular)
        return {FileState::unreadable, {}, QStringLiteral("not a regular file")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {FileState::unreadable, {}, file.errorString()};
    const QByteArray text = file.read(largestFile + 1);
    if (file.error() != QFileDevice::NoError)
        return {FileState::unreadable, {}, file.errorString()};
    if (text.size() > largestFile)
        return {FileState::unreadable, {}, QStringLiteral("it is larger than a megabyte")};
    return parseFile(text);
}

/// Keeps other writers of the folder's files out for as long as it lives, unless they hold it for too long or
/// the folder cannot be locked. The lock is advisory and ends with its process. Locking the folder leaves no
/// file behind; the settings file itself is another one after each write.
class FolderLock {
public:
    explicit FolderLock(const QString &file)
        : m_folder(open(QFile::encodeName(QFileInfo(file).absolutePath()).constData(),
                        O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        using namespace std::chrono;
        const auto deadline = steady_clock::now() + milliseconds(500);
        while (m_folder != -1 && flock(m_folder, LOCK_EX | LOCK_NB) == -1 && errno == EWOULDBLOCK &&
               steady_clock::now() < deadline)
            std::this_thread::sleep_for(milliseconds(5));
    }
    ~FolderLock() {
        if (m_folder != -1)
            close(m_folder);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    int m_folder;
};

bool makePrivateDirectory(const QString &path) {
    const QFileInfo directory(path);
    if (directory.isDir())
        return true;
    return directory.absolutePath() != path && makePrivateDirectory(directory.absolutePath()) &&
           QDir().mkdir(path, readableByOwner | QFile::ExeOwner);
}

/// Empty on success, otherwise why the file kept its old contents.
QString writeFile(const QString &path, const QJsonObject &values) {
    if (!makePrivateDirectory(QFileInfo(path).absolutePath()))
        return QStringLiteral("its folder cannot be created");
    const QByteArray text = QJsonDocument(values).toJson();
    QSaveFile file(path);
    // QSaveFile would commit a file that was cut short: it overlooks a full disk in its last flush and in its
    // sync.
    const bool written = file.open(QIODevice::WriteOnly) && file.setPermissions(readableByOwner) &&
                         file.write(text) == text.size() && file.flush() && fsync(file.handle()) == 0 &&
                         file.commit();
    return written ? QString() : file.errorString();
}

} // namespace

UserDefaults::UserDefaults(QString path, Access access)
    : m_path(std::move(path))
    , m_access(access) {
    const QString file = followLinks(m_path);
    std::optional<FolderLock> lock;
    if (m_access == Access::readWrite)
        lock.emplace(file);
    const FileContents contents = readFile(file);
    m_values = contents.values;
    if (contents.state != FileState::readable && m_access == Access::readOnly)
        qCWarning(defaultsLog).noquote() << "The settings are not read:" << m_path + u':' << contents.problem;
    else if (contents.state == FileState::corrupt)
        static_cast<void>(setAside(file, contents.problem));
    else if (contents.state == FileState::unreadable)
        report(contents.problem);
}

QString UserDefaults::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/burnwick/burnwick.json");
}

template <>
std::optional<bool> UserDefaults::get<bool>(const QString &key) const {
    const QJsonValue value = m_values.value(key);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

template <>
std::optional<qint64> UserDefaults::get<qint64>(const QString &key) const {
    const QJsonValue value = m_values.value(key);
    const qint64 integer = value.toInteger(0);
    // Two different defaults tell a zero from "no integer".
    return integer == value.toInteger(1) ? std::optional(integer) : std::nullopt;
}

template <>
std::optional<double> UserDefaults::get<double>(const QString &key) const {
    const QJsonValue value = m_values.value(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

template <>
std::optional<QString> UserDefaults::get<QString>(const QString &key) const {
    const QJsonValue value = m_values.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

void UserDefaults::remove(const QString &key) {
    change(key, QJsonValue(QJsonValue::Undefined));
}

void UserDefaults::change(const QString &key, const QJsonValue &valueOrUndefined) {
    m_unsaved.insert(key, valueOrUndefined);
    m_values.insert(key, valueOrUndefined); // an undefined value removes the key
    save();
}

void UserDefaults::save() {
    if (m_access == Access::readOnly)
        return;
    const QString file = followLinks(m_path);
    // Whoever writes first makes the folder, too; whether that worked is seen when it is written to.
    static_cast<void>(makePrivateDirectory(QFileInfo(file).absolutePath()));
    const FolderLock lock(file);
    const FileContents contents = readFile(file);
    if (contents.state == FileState::unreadable)
        return report(contents.problem);
    if (contents.state == FileState::corrupt) {
        if (!setAside(file, contents.problem))
            return;
    } else {
        m_values = contents.values;
        for (auto it = m_unsaved.cbegin(); it != m_unsaved.cend(); ++it)
            m_values.insert(it.key(), it.value());
    }
    if (m_values != contents.values) {
        if (const QString problem = writeFile(file, m_values); !problem.isEmpty())
            return report(problem);
    }
    m_unsaved.clear();
    m_reported.clear();
}

/// False when the file had to stay where it is and so must not be written.
bool UserDefaults::setAside(const QString &file, const QString &problem) {
    const QString name = file + QStringLiteral(".corrupt-") +
                         QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    QString free = name;
    for (int i = 2; QFileInfo::exists(free); ++i)
        free = name + u'-' + QString::number(i);
    // Never overwrites: a name taken meanwhile fails the renaming.
    if (!QFile::rename(file, free)) {
        report(problem + QStringLiteral("; it cannot be set aside either"));
        return false;
    }
    qCWarning(defaultsLog).noquote() << file << "is damaged and was set aside as" << free + u':' << problem;
    return true;
}

/// Each write meets the same trouble again, so that only news is logged.
void UserDefaults::report(const QString &problem) {
    if (problem == m_reported)
        return;
    m_reported = problem;
    qCWarning(defaultsLog).noquote() << "Settings are kept in memory only:" << m_path + u':' << problem;
}

} // namespace burnwick
