#pragma once

namespace nativo {

// A flag that is on while this lives.
class Enquanto {
  public:
    explicit Enquanto(bool &marca) : m_Marca(marca) { m_Marca = true; }
    Enquanto(const Enquanto &) = delete;
    Enquanto &operator=(const Enquanto &) = delete;
    ~Enquanto() { m_Marca = false; }

  private:
    bool &m_Marca;
};

} // namespace nativo
