#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <stdexcept>

// This program is linked with the component's own support for variables of which each thread has its own.

namespace nativo {

namespace {

thread_local int g_Inicial = 7;
thread_local std::array<char, 3> g_Zeros;
thread_local int g_MaisTarde = 11;
struct alignas(64) Alinhada {
    int Valor = 3;
};
thread_local Alinhada g_Alinhada;

DWORD WINAPI Comeca(void *corpo)
{
    return static_cast<DWORD>((*static_cast<int (**)()>(corpo))());
}

// What the body answered in a thread of its own.
int EmOutroFio(int (*corpo)())
{
    const HANDLE fio = CreateThread(nullptr, 0, Comeca, static_cast<void *>(&corpo), 0, nullptr);
    WaitForSingleObject(fio, INFINITE);
    DWORD resposta = 0;
    GetExitCodeThread(fio, &resposta);
    CloseHandle(fio);
    return static_cast<int>(resposta);
}

} // namespace

TEST(VariaveisPorFio, read_FirstTimeInEachThread_HasItsInitialValue)
{
    g_Inicial = 8;
    g_Zeros[1] = 'x';
    EXPECT_EQ(EmOutroFio([] { return g_Inicial * 10 + g_Zeros[0] + g_Zeros[1] + g_Zeros[2]; }), 70);
    EXPECT_EQ(g_Inicial, 8);
    EXPECT_EQ(g_Zeros[1], 'x');
}

TEST(VariaveisPorFio, write_InAnotherThread_StaysThere)
{
    g_Inicial = 8;
    EXPECT_EQ(EmOutroFio([] {
                  g_Inicial += 100;
                  return g_Inicial;
              }),
              107);
    EXPECT_EQ(g_Inicial, 8);
}

TEST(VariaveisPorFio, read_VariableUsedLaterThanOthers_EarlierOnesKeepTheirPlace)
{
    int *const antes = &g_Inicial;
    EXPECT_EQ(g_MaisTarde, 11);
    EXPECT_EQ(&g_Inicial, antes);
}

TEST(VariaveisPorFio, read_AlignedVariable_IsAligned)
{
    EXPECT_EQ(g_Alinhada.Valor, 3);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&g_Alinhada) % 64, 0U);
    EXPECT_EQ(EmOutroFio([] { return static_cast<int>(reinterpret_cast<std::uintptr_t>(&g_Alinhada) % 64); }), 0);
}

TEST(VariaveisPorFio, read_AfterASystemCallThatFailed_ItsErrorStays)
{
    EXPECT_EQ(EmOutroFio([] {
                  SetLastError(1234);
                  g_Inicial = 1;
                  return static_cast<int>(GetLastError());
              }),
              1234);
}

TEST(VariaveisPorFio, throw_InAnotherThread_IsCaughtThere)
{
    EXPECT_EQ(EmOutroFio([] {
                  try {
                      throw std::runtime_error("two");
                  } catch (const std::runtime_error &) {
                      return std::uncaught_exceptions() + 2;
                  }
              }),
              2);
}

} // namespace nativo
