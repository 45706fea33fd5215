#include "Fuzz.h"
#include "ImageFuzz.h"

/// TIFF images.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = asBytes(data, size);
    // Other formats have fuzzers of their own.
    if (bytes.startsWith("II") || bytes.startsWith("MM"))
        readAsImage(bytes);
    return 0;
}
