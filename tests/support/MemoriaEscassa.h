#pragma once

#include <cstdint>

// Blocks of operator new that are held now.
std::int64_t BlocosOcupados() noexcept;

// While it lives, the n-th request for memory from its start on is refused with std::bad_alloc, and only that one.
class MemoriaEscassa {
  public:
    explicit MemoriaEscassa(std::int64_t n) noexcept;
    ~MemoriaEscassa();
    MemoriaEscassa(const MemoriaEscassa &) = delete;
    MemoriaEscassa &operator=(const MemoriaEscassa &) = delete;

    bool Recusou() const noexcept;
};
