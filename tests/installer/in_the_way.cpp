// What an installer has to wait for, until the standard input ends: the file named, open as a
// viewer has it, which others may read and no more; or the turn of another installer.
//   in_the_way file PATH | in_the_way turn NAME

#include <cstdio>
#include <string_view>

#include <windows.h>

int wmain(int count, wchar_t** arguments)
{
    if (count != 3)
        return 2;
    const HANDLE held = std::wstring_view(arguments[1]) == L"turn"
                            ? CreateMutexW(nullptr, TRUE, arguments[2])
                            : CreateFileW(arguments[2], GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, 0, nullptr);
    if (held == nullptr || held == INVALID_HANDLE_VALUE)
        return 1;
    std::puts("held");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
