#include "Fuzz.h"
#include "ImageFuzz.h"

/// Images of text, and what is no image at all.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = asBytes(data, size);
    if (!bytes.startsWith("II") && !bytes.startsWith("MM") && !bytes.startsWith("IM"))
        readAsImage(bytes);
    return 0;
}
