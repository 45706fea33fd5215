#include "common/Memory.h"

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int keptBytes = 256 << 20;
constexpr int growthBytes = 16 << 20;
/// Blocks above this are mapped one by one, in whole pages, and go back when freed: pictures and
/// fields of large maps, for which the last page is little against the rest.
constexpr int mappedBytes = 1 << 20;

} // namespace

void keepFreedMemory()
{
    mallopt(M_TRIM_THRESHOLD, keptBytes);
    mallopt(M_TOP_PAD, growthBytes);
    mallopt(M_MMAP_THRESHOLD, mappedBytes);
}

qint64 machineMemory()
{
    return qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
}
