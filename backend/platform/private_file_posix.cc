#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "backend/platform/file_system.h"
#include "backend/platform/private_file.h"

namespace vexa {

bool makePrivate(const std::string& path) {
    const std::string name = toNativePath(path);
    struct stat present {};
    if (stat(name.c_str(), &present) == 0 && !S_ISREG(present.st_mode)) return false;
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
    if (file < 0) return false;
    // A file of somebody else who lets us write keeps his rights; who may do what with a file is his to say
    // even where he lets nobody read it now.
    const bool isOurs = fstat(file, &present) == 0 && present.st_uid == geteuid();
    const bool isPrivate = isOurs && fchmod(file, S_IRUSR | S_IWUSR) == 0;
    close(file);
    return isPrivate;
}

}  // namespace vexa
