#include "linux/qt/JsonObjectFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qt {

namespace {

constexpr qint64 LARGEST_FILE = 16LL * 1024 * 1024;
constexpr int MOST_DAMAGED_FILES = 1000;
constexpr mode_t ONLY_FOR_THE_USER = 0700;

/// A rename lasts only once the folder has reached the disk. Some file systems refuse this; the
/// file itself is safe either way.
void flushFolder(const QString& folder)
{
    const int descriptor =
        open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor != -1) {
        fsync(descriptor);
        close(descriptor);
    }
}

/// The whole file, or why it cannot be had.
QByteArray readBytes(const QString& path, QString& reason)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > LARGEST_FILE) { // a pipe would be waited for
        reason = "it is not a plain file of a few bytes";
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return {};
    }
    return file.readAll();
}

bool makePrivateFolders(const QString& folder)
{
    if (QFileInfo(folder).isDir()) {
        return true;
    }
    const QString parent = QFileInfo(folder).path();
    return parent != folder && makePrivateFolders(parent) &&
           mkdir(QFile::encodeName(folder).constData(), ONLY_FOR_THE_USER) == 0;
}

} // namespace

JsonObjectFile::JsonObjectFile(QString path, platform::Log& log) : path(std::move(path)), log(&log)
{
}

JsonObjectFile::Content JsonObjectFile::read()
{
    if (!QFileInfo::exists(path)) {
        return {State::Absent, {}};
    }
    QString reason;
    const QByteArray bytes = readBytes(path, reason);
    if (reason.isEmpty()) {
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
        if (document.isObject()) {
            return {State::Loaded, document.object()};
        }
        reason = document.isNull() ? error.errorString() : "it does not hold an object";
    }
    return {moveAside(reason) ? State::Absent : State::Blocked, {}};
}

bool JsonObjectFile::moveAside(const QString& reason)
{
    for (int number = 1; number <= MOST_DAMAGED_FILES; ++number) {
        const QString kept = path + ".damaged-" + QString::number(number);
        if (QFileInfo::exists(kept)) {
            continue;
        }
        if (QFile::rename(path, kept)) {
            report(path + " cannot be read (" + reason + "); kept as " + kept);
            return true;
        }
        break;
    }
    report(path + " cannot be read (" + reason + ") and cannot be moved; nothing is saved");
    return false;
}

bool JsonObjectFile::write(const QJsonObject& object)
{
    if (!makeFolder()) {
        return false;
    }
    if (!replaceFile(QJsonDocument(object).toJson())) {
        return false;
    }
    flushFolder(QFileInfo(path).path());
    lastReport.clear();
    return true;
}

bool JsonObjectFile::makeFolder()
{
    const QString folder = QFileInfo(path).path();
    if (!makePrivateFolders(folder)) {
        return fail("the folder cannot be made");
    }
    chmod(QFile::encodeName(folder).constData(), ONLY_FOR_THE_USER);
    return true;
}

bool JsonObjectFile::replaceFile(const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return fail(file.errorString());
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    // a write that is left to `commit` is not checked by it
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    return (written && file.commit()) || fail(file.errorString());
}

bool JsonObjectFile::fail(const QString& what)
{
    report(path + " cannot be written: " + what);
    return false;
}

void JsonObjectFile::report(const QString& message)
{
    if (message != lastReport) {
        lastReport = message;
        log->diagnostic(message.toStdString());
    }
}

} // namespace qt
