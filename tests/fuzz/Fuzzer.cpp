// What libFuzzer calls.

#include "Target.h"

// The names are libFuzzer's.
// NOLINTBEGIN(readability-identifier-naming,readability-non-const-parameter)

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    startQt(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uchar* bytes, size_t size)
{
    // Not a copy: that would hide a read of one byte too many.
    tryBytes(QByteArray::fromRawData(
        reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}

// NOLINTEND(readability-identifier-naming,readability-non-const-parameter)
