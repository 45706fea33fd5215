#include "Fuzz.h"
#include "ImageFuzz.h"

/// "IM" images.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = asBytes(data, size);
    if (bytes.startsWith("IM"))
        readAsImage(bytes);
    return 0;
}
