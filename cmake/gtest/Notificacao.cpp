#include "cmake/gtest/Notificacao.h"

#include <windows.h>

namespace testing::internal {

Notification::Notification() : m_Evento(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

Notification::~Notification()
{
    CloseHandle(m_Evento);
}

void Notification::Notify()
{
    SetEvent(m_Evento);
}

void Notification::WaitForNotification()
{
    WaitForSingleObject(m_Evento, INFINITE);
}

} // namespace testing::internal
