// Included before anything else where the test framework is: its own class for one thread to wait for another needs
// std::mutex, which this flavour of the compiler does not have. GTEST_HAS_NOTIFICATION_ says that this one is there.
#pragma once

namespace testing::internal {

class Notification {
  public:
    Notification();
    Notification(const Notification &) = delete;
    Notification &operator=(const Notification &) = delete;
    ~Notification();

    void Notify();
    void WaitForNotification();

  private:
    void *m_Evento;
};

} // namespace testing::internal
