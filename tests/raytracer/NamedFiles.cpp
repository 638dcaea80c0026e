// Loaded before the C library, this makes every file system one that has no files without a name, as some are.

#include <cerrno>
#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>

extern "C" int open(char const* path, int flags, ...)
{
    if ((flags & O_TMPFILE) == O_TMPFILE)
    {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    auto const next = reinterpret_cast<int (*)(char const*, int, ...)>(dlsym(RTLD_NEXT, "open"));
    return next(path, flags, mode);
}

extern "C" int open64(char const* path, int flags, ...) __attribute__((alias("open")));
