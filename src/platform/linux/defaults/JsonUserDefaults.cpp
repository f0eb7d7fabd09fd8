// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/defaults/JsonUserDefaults.h"

#include "platform/Platform.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QSaveFile>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>
#include <variant>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(defaultsLog, "burnwick.defaults")

constexpr QFile::Permissions readableByOwner = QFile::ReadOwner | QFile::WriteOwner;

/// Bytes. Settings need much less; a larger file is not a settings file.
constexpr qint64 largestFile = qint64{1} << 20U;

enum class FileState { readable, corrupt, unreadable };

struct FileContents {
    FileState state = FileState::readable;
    QJsonObject values; ///< empty unless readable
    QString problem;    ///< the reason when not readable
};

/// Returns the target of a chain of links, which may be missing. Replacing a link would detach its target.
QString followLinks(QString path) {
    constexpr int longestChain = 40; // as in the kernel; opening a longer one or a loop fails
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
    // Opening a pipe would block until it has a writer.
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

/// An advisory lock on the file's folder; the kernel releases it at the end of the process. Gives up after
/// half a second. Locks the folder because each write replaces the file, and a lock file would remain.
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

/// Returns an empty text on success, otherwise the reason why the file kept its old contents.
QString writeFile(const QString &path, const QJsonObject &values) {
    if (!makePrivateDirectory(QFileInfo(path).absolutePath()))
        return QStringLiteral("its folder cannot be created");
    const QByteArray text = QJsonDocument(values).toJson();
    QSaveFile file(path);
    // QSaveFile alone would commit a truncated file: it ignores a full disk in its last flush and its sync.
    const bool written = file.open(QIODevice::WriteOnly) && file.setPermissions(readableByOwner) &&
                         file.write(text) == text.size() && file.flush() && fsync(file.handle()) == 0 &&
                         file.commit();
    return written ? QString() : file.errorString();
}

template <typename Stored>
QJsonValue jsonOf(const Stored &stored) {
    return stored;
}
QJsonValue jsonOf(const QStringList &stored) {
    return QJsonArray::fromStringList(stored);
}

} // namespace

JsonUserDefaults::JsonUserDefaults(QString path, Access access)
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

std::optional<UserDefaults::Value> JsonUserDefaults::value(const QString &key) const {
    const QJsonValue value = m_values.value(key);
    if (value.isBool())
        return value.toBool();
    if (value.isString())
        return value.toString();
    if (value.isArray()) {
        const QJsonArray array = value.toArray();
        const bool areTexts =
            std::ranges::all_of(array, [](const QJsonValue &item) { return item.isString(); });
        return areTexts ? std::optional<Value>(value.toVariant().toStringList()) : std::nullopt;
    }
    if (!value.isDouble())
        return std::nullopt;
    // Only an integer ignores both defaults.
    if (value.toInteger(0) == value.toInteger(1))
        return value.toInteger();
    return value.toDouble();
}

void JsonUserDefaults::setValue(const QString &key, const Value &value) {
    const QJsonValue json = std::visit([](const auto &stored) { return jsonOf(stored); }, value);
    m_unsaved.insert(key, json);
    m_values.insert(key, json);
    save();
}

void JsonUserDefaults::save() {
    if (m_access == Access::readOnly)
        return;
    const QString file = followLinks(m_path);
    // For the lock of the first write. writeFile() reports a failure.
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

/// Returns false when the file cannot be renamed and so must not be overwritten.
bool JsonUserDefaults::setAside(const QString &file, const QString &problem) {
    const QString name = file + QStringLiteral(".corrupt-") +
                         QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    QString free = name;
    for (int i = 2; QFileInfo::exists(free); ++i)
        free = name + u'-' + QString::number(i);
    // Never overwrites: renaming to an existing name fails.
    if (!QFile::rename(file, free)) {
        report(problem + QStringLiteral("; it cannot be set aside either"));
        return false;
    }
    qCWarning(defaultsLog).noquote() << file << "is damaged and was set aside as" << free + u':' << problem;
    return true;
}

/// Logs a problem once, because every write encounters it again.
void JsonUserDefaults::report(const QString &problem) {
    if (problem == m_reported)
        return;
    m_reported = problem;
    qCWarning(defaultsLog).noquote() << "Settings are kept in memory only:" << m_path + u':' << problem;
}

/// $XDG_CONFIG_HOME/burnwick/burnwick.json
std::unique_ptr<UserDefaults> platform::makeUserDefaults(UserDefaults::Access access) {
    return std::make_unique<JsonUserDefaults>(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/burnwick/burnwick.json"),
        access);
}

} // namespace burnwick
