#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "backend/platform/file_system.h"
#include "backend/platform/private_file.h"

namespace vexa {

void makePrivate(const std::string& path) {
    const std::string name = toNativePath(path);
    struct stat present {};
    if (stat(name.c_str(), &present) == 0 && !S_ISREG(present.st_mode)) return;
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
    if (file < 0) return;
    // A file of somebody else who lets us write keeps his rights.
    [[maybe_unused]] const int narrowed = fchmod(file, S_IRUSR | S_IWUSR);
    close(file);
}

}  // namespace vexa
