// Has the file named open until its standard input ends, as a viewer does: others may read it and
// no more.
#include <cstdio>

#include <windows.h>

int wmain(int count, wchar_t** arguments)
{
    if (count != 2)
        return 2;
    const HANDLE file = CreateFileW(arguments[1], GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    std::puts("open");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    CloseHandle(file);
    return 0;
}
