// Keeps the compatibility layer's desktop for the tests: whatever shows the first window starts it, and it ends with
// the last one, which would make each test start it anew and wait for its end. Tells when it is there, and stays.

#include <windows.h>

#include <cstdio>

int main()
{
    GetDesktopWindow();
    std::puts("pronta");
    std::fflush(stdout);
    Sleep(INFINITE);
}
