#include "services/Promocoes.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace mesa {

bool Promocoes::EmDia(const std::string &motor, const std::string &historia)
{
    static std::mutex trava;
    static std::map<std::string, unsigned long> vistas;
    const unsigned long qual = std::stoul(historia, nullptr, 16);
    const std::lock_guard guarda(trava);
    unsigned long &vista = vistas[motor];
    vista = std::max(vista, qual);
    return qual == vista;
}

std::string Promocoes::DepoisDoPrimeiro(const std::string &lista)
{
    const std::size_t virgula = lista.find(',');
    return virgula == std::string::npos ? lista : lista.substr(virgula + 1) + "," + lista.substr(0, virgula);
}

} // namespace mesa
