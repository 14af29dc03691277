// The end of a test program under the compatibility layer.
#pragma once

#include <windows.h>

#include <cstdio>

// Ends the process at once with what its tests came to. A process that goes through its whole end has the layer take
// the libraries down, and the layer was seen to wait there without end, when every test had passed.
[[noreturn]] inline void TerminaCom(int resultado)
{
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(resultado));
    for (;;) {
        Sleep(INFINITE);
    }
}
