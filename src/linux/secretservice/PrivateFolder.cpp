#include "linux/secretservice/PrivateFolder.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/descriptors/FileDescriptor.h"
#include "linux/files/AtomicFile.h"
#include "linux/files/PrivateFolders.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace secretservice {

namespace fs = std::filesystem;

namespace {

constexpr mode_t FOLDER_MODE = 0700;
constexpr mode_t FILE_MODE = 0600;
constexpr mode_t OTHERS = 0077;
/// Far more than any file of ours; a larger one is not ours.
constexpr std::size_t LARGEST_FILE = std::size_t{1} << 20U;

std::string failed(const char* what)
{
    return std::string("cannot ") + what + ": " + descriptors::errorText();
}

/// Of a write that was done, or that left its reason in errno.
Failure resultOf(bool done)
{
    return done ? Failure() : Failure(failed("be written"));
}

bool isPlainFile(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

bool readAll(int file, SecretBytes& bytes)
{
    SecretBytes buffer(std::size_t{4096});
    while (bytes.size() <= LARGEST_FILE) {
        const ssize_t count = ::read(file, buffer.data(), buffer.size());
        if (count == 0) {
            return true;
        }
        if (count > 0) {
            bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + count);
        } else if (errno != EINTR) {
            return false;
        }
    }
    errno = EFBIG;
    return false;
}

} // namespace

PrivateFolder::PrivateFolder(fs::path folder) : folder(std::move(folder)) {}

PrivateFolder::Content PrivateFolder::read(const std::string& name) const
{
    Content content;
    // Without blocking: a pipe in place of the file must not hold anything up.
    const descriptors::FileDescriptor file(
        open((folder / name).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK)
    );
    if (file.isOpen() && !isPlainFile(file.get())) {
        content.reason = "cannot be read: it is no plain file";
        return content;
    }
    if (!file.isOpen() && errno == ENOENT) {
        content.state = Content::State::Missing;
    } else if (file.isOpen() && readAll(file.get(), content.bytes)) {
        content.state = Content::State::Read;
    } else {
        content.reason = failed("be read");
    }
    return content;
}

std::optional<std::vector<std::string>> PrivateFolder::names() const
{
    std::error_code error;
    std::vector<std::string> found;
    fs::directory_iterator at(folder, error);
    if (error == std::errc::no_such_file_or_directory) {
        return found;
    }
    while (!error && at != fs::directory_iterator()) {
        found.push_back(at->path().filename().string());
        at.increment(error);
    }
    return error ? std::nullopt : std::optional(std::move(found));
}

Failure PrivateFolder::make()
{
    struct stat status = {};
    if (!files::makePrivateFolders(folder)) {
        return errno == EEXIST ? "cannot be made: something else is there" : failed("be made");
    }
    if (stat(folder.c_str(), &status) != 0) {
        return failed("be made");
    }
    if (status.st_uid != geteuid()) {
        return "belongs to another user";
    }
    if ((status.st_mode & OTHERS) != 0 && chmod(folder.c_str(), FOLDER_MODE) != 0) {
        return failed("be closed to others");
    }
    return std::nullopt;
}

Failure PrivateFolder::replace(const std::string& name, std::span<const std::uint8_t> bytes)
{
    if (Failure failure = make()) {
        return failure;
    }
    return resultOf(files::replaceFile((folder / name).string(), std::as_bytes(bytes), FILE_MODE));
}

Failure PrivateFolder::create(const std::string& name, std::span<const std::uint8_t> bytes)
{
    if (Failure failure = make()) {
        return failure;
    }
    const std::string path = (folder / name).string();
    const std::string draft = files::draftOf(path);
    if (!files::writeNew(draft, std::as_bytes(bytes), FILE_MODE)) {
        return failed("be written");
    }
    const int status = link(draft.c_str(), path.c_str());
    const Failure failure = resultOf(status == 0 || errno == EEXIST);
    unlink(draft.c_str());
    return failure.has_value() ? failure : synchronize();
}

Failure PrivateFolder::remove(const std::string& name)
{
    if (unlink((folder / name).c_str()) != 0) {
        return errno == ENOENT ? Failure() : Failure(failed("be written"));
    }
    return synchronize();
}

Failure PrivateFolder::setAside(const std::string& name)
{
    const std::string path = (folder / name).string();
    std::string beside = path + ".damaged";
    for (int number = 2; link(path.c_str(), beside.c_str()) != 0; ++number) {
        if (errno != EEXIST) {
            return failed("keep a damaged file beside");
        }
        beside = path + "." + std::to_string(number) + ".damaged";
    }
    return remove(name);
}

Failure PrivateFolder::synchronize()
{
    return resultOf(files::flushFolder(folder.string()));
}

} // namespace secretservice
