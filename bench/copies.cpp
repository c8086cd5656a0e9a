// The least that a process has to do to make a calendar from an .xls: read the template and write
// its bytes twelve times, replacing the output as the program does, with the same flush to disk.
#include "util/file_replace.h"

#include <cstdio>
#include <exception>
#include <fstream>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: copies TEMPLATE OUTPUT\n", stderr);
        return 2;
    }
    try {
        const auto bytes = orrery::util::ReadFile(argv[1]);
        if (!bytes)
            return 1;
        orrery::util::FileReplacement output(argv[2]);
        std::ofstream file(output.TemporaryPath(), std::ios::binary);
        for (int month = 0; month < 12; ++month)
            file.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
        file.close();
        output.Commit();
        return file ? 0 : 1;
    }
    catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
