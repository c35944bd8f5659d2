#include "Platform/DiskSync.h"

#include <cerrno>
#include <unistd.h>

namespace Platform {

bool syncFile(int file)
{
    int result = 0;
    do
        result = fsync(file);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

bool syncFolder(int folder)
{
    return syncFile(folder) || errno == EINVAL || errno == EOPNOTSUPP;
}

} // namespace Platform
