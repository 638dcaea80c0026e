#include "OutputFile.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "Interrupts.h"
#include "UserError.h"

namespace raytracer
{

namespace
{

constexpr mode_t MODE = 0666; // less what the user masks out

/// The path behind all links, for a link stays a link.
std::filesystem::path Resolve(std::string const& path)
{
    if (!std::filesystem::path(path).has_filename())
        throw UserError(path + ": is not a file");
    std::error_code error;
    std::filesystem::path const real = std::filesystem::canonical(path, error);
    if (!error)
        return real;
    std::error_code ignored;
    if (std::filesystem::is_symlink(std::filesystem::symlink_status(path, ignored)))
        throw UserError(path + ": is a link that leads nowhere");
    if (error != std::errc::no_such_file_or_directory)
        throw UserError(path + ": cannot be written: " + error.message());
    return path;
}

bool WriteAll(int file, char const* bytes, ssize_t count)
{
    while (count > 0)
    {
        ssize_t const written = write(file, bytes, static_cast<std::size_t>(count));
        if (written < 0)
            return false;
        bytes += written;
        count -= written;
    }
    return true;
}

} // namespace

OutputFile::OutputFile(std::string const& path) : given_(path), path_(Resolve(path))
{
    std::error_code error;
    if (std::filesystem::exists(path_, error) && !std::filesystem::is_regular_file(path_, error))
        throw UserError(path + ": is not a file");

    std::filesystem::path const folder = path_.has_parent_path() ? path_.parent_path() : ".";
    int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, MODE);
    if (file < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL))
    {
        // Some file systems have no files without a name. This one loses its name at once, and cannot get another.
        std::filesystem::path const name = GetSideName();
        NoInterrupts const guard;
        file = open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, MODE);
        if (file >= 0)
            unlink(name.c_str());
    }
    if (file < 0)
        Refuse();
    stream_.reset(fdopen(file, "w+b"));
    if (!stream_)
    {
        close(file);
        Refuse();
    }
}

void OutputFile::Publish()
{
    if (std::fflush(stream_.get()) != 0)
        Refuse();
    NoInterrupts const guard;
    if (Link(path_))
        return;
    // Only a file with a name can take the place of another.
    std::filesystem::path const name = GetSideName();
    if ((Link(name) || Copy(name)) && std::rename(name.c_str(), path_.c_str()) == 0)
        return;
    int const failure = errno;
    unlink(name.c_str());
    errno = failure;
    Refuse();
}

void OutputFile::Refuse(std::string const& reason) const
{
    throw UserError(given_ + ": cannot be written: " + (errno != 0 ? std::generic_category().message(errno) : reason));
}

/// A name of its own beside the place, and short, as that may have as long a name as there can be.
std::filesystem::path OutputFile::GetSideName() const
{
    auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
    return path_.parent_path() / (".raytracer-" + std::to_string(getpid()) + "-" + std::to_string(now));
}

bool OutputFile::Link(std::filesystem::path const& name) const
{
    std::string const file = "/proc/self/fd/" + std::to_string(fileno(stream_.get()));
    return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool OutputFile::Copy(std::filesystem::path const& name) const
{
    int const target = open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, MODE);
    if (target < 0)
        return false;
    std::array<char, 65536> bytes{};
    off_t at = 0;
    ssize_t count = 0;
    bool isWhole = true;
    while (isWhole && (count = pread(fileno(stream_.get()), bytes.data(), bytes.size(), at)) > 0)
    {
        isWhole = WriteAll(target, bytes.data(), count);
        at += count;
    }
    int const failure = errno;
    bool const isClosed = close(target) == 0; // where some file systems tell that a disk is full
    if (!isWhole || count < 0)
        errno = failure;
    return isWhole && count == 0 && isClosed;
}

} // namespace raytracer
