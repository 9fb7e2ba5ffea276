#include "linux/qt/JsonObjectFile.h"

#include "linux/files/AtomicFile.h"
#include "linux/files/PrivateFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <span>
#include <string>
#include <utility>

#include <sys/stat.h>

namespace qt {

namespace {

constexpr qint64 LARGEST_FILE = 16LL * 1024 * 1024;
constexpr int MOST_DAMAGED_FILES = 1000;
constexpr mode_t FOLDER_FOR_THE_USER = 0700;
constexpr mode_t FILE_FOR_THE_USER = 0600;

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
    if (!makeFolder() || !replaceFile(QJsonDocument(object).toJson())) {
        return false;
    }
    lastReport.clear();
    return true;
}

bool JsonObjectFile::makeFolder()
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    if (!files::makePrivateFolders(folder.toStdString())) {
        return fail("the folder cannot be made");
    }
    chmod(folder.constData(), FOLDER_FOR_THE_USER);
    return true;
}

bool JsonObjectFile::replaceFile(const QByteArray& bytes)
{
    const std::string name = QFile::encodeName(path).toStdString();
    return files::replaceFile(name, std::as_bytes(std::span(bytes)), FILE_FOR_THE_USER) ||
           fail(qt_error_string());
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
