#include "backend/platform/system_reason.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <system_error>

#include "backend/text/system_text.h"

namespace vexa {

namespace {

struct KnownReason {
    int number = 0;
    SystemText text;
};

constexpr KnownReason kReasons[] = {
    {EPERM, "Operation not permitted"_text},
    {ENOENT, "No such file or directory"_text},
    {EIO, "Input/output error"_text},
    {ENXIO, "No such device or address"_text},
    {ENOEXEC, "Exec format error"_text},
    {EAGAIN, "Resource temporarily unavailable"_text},
    {ENOMEM, "Cannot allocate memory"_text},
    {EACCES, "Permission denied"_text},
    {EBUSY, "Device or resource busy"_text},
    {EEXIST, "File exists"_text},
    {EXDEV, "Invalid cross-device link"_text},
    {ENODEV, "No such device"_text},
    {ENOTDIR, "Not a directory"_text},
    {EISDIR, "Is a directory"_text},
    {EINVAL, "Invalid argument"_text},
    {ENFILE, "Too many open files in system"_text},
    {EMFILE, "Too many open files"_text},
    {ETXTBSY, "Text file busy"_text},
    {EFBIG, "File too large"_text},
    {ENOSPC, "No space left on device"_text},
    {EROFS, "Read-only file system"_text},
    {EPIPE, "Broken pipe"_text},
    {ENAMETOOLONG, "File name too long"_text},
    {ENOTEMPTY, "Directory not empty"_text},
    {ELOOP, "Too many levels of symbolic links"_text},
    {EILSEQ, "Invalid or incomplete multibyte or wide character"_text},
    {ETIMEDOUT, "Connection timed out"_text},
// Not every system has these.
#ifdef EDQUOT
    {EDQUOT, "Disk quota exceeded"_text},
#endif
#ifdef ESTALE
    {ESTALE, "Stale file handle"_text},
#endif
};

}  // namespace

std::string systemReason(int errnoValue) {
    const auto* const found =
        std::find_if(std::begin(kReasons), std::end(kReasons),
                     [errnoValue](const KnownReason& each) { return each.number == errnoValue; });
    return found == std::end(kReasons) ? std::generic_category().message(errnoValue)
                                       : std::string(found->text.key());
}

}  // namespace vexa
