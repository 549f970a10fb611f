// How long a library takes to load, against another one, by turns:
//   qel_bench_load LIBRARY FLOOR BAR
#include "bench/Turns.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

int main(int nArgs, char** ppszArgs)
{
    if (nArgs != 4) return 2;
    const auto load = [](const char* pszPath) {
        HMODULE hModule = nullptr;
        const double fTime = TimeOf([&] { hModule = ::LoadLibraryA(pszPath); });
        if (!hModule) {
            std::printf("%s cannot be loaded\n", pszPath);
            std::exit(2);
        }
        ::FreeLibrary(hModule);
        return fTime;
    };
    constexpr int TURNS = 101;
    CTable table;
    table.Bar("load the library / an empty one with its imports (us)",
              Compare(
                  TURNS, [&] { return load(ppszArgs[1]); }, [&] { return load(ppszArgs[2]); }),
              1000, std::strtod(ppszArgs[3], nullptr));
    return table.Missed();
}
