// Calls a target with every file of the folder named, as the test suite does with all that ever
// broke one.

#include "Target.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

QByteArray bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(file), {}});
}

} // namespace

int main(int argc, char** argv)
{
    require(argc == 2);
    startQt(argc, argv);
    tryBytes({});
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        static_cast<void>(std::fprintf(stderr, "%s\n", entry.path().c_str()));
        tryBytes(bytesOf(entry.path()));
        ++count;
    }
    require(count > 0);
    return 0;
}
