#include "desk/services/ServicosSql.h"

#include "desk/services/SessaoSql.h"
#include "desk/services/Usuarios.h"

#include <utility>

namespace mesa {

ServicosSql::ServicosSql(std::shared_ptr<Banco> banco, Relogio agora)
    : m_Banco(std::move(banco)),
      m_Agora(std::move(agora))
{
    m_Banco->Le([&] {
        Consulta registro(*m_Banco, "SELECT Tipo, Identificador FROM REGISTRO");
        registro.Proxima();
        m_Tipo = registro.Inteiro(0) == static_cast<int>(TipoDeRegistro::Amostra) ? TipoDeRegistro::Amostra
                                                                                  : TipoDeRegistro::Registro;
        m_Identificador = registro.Texto(1);
    });
}

Ref<SessaoServico> ServicosSql::Entra(const std::string &usuario, const std::string &senha, std::string &recusa,
                                      std::int32_t &espera)
try {
    const auto operador = Usuarios(*m_Banco).Entra(usuario, senha, m_Agora().Local, recusa, espera);
    if (!operador) {
        return nullptr;
    }
    return Novo<SessaoSql>(m_Banco, m_Agora, *operador);
} catch (...) {
    PassaFalha(" < Servicos.Entra");
}

void ServicosSql::CadastraUsuario(const Operador &operador, const std::string &senha,
                                  const std::vector<std::string> &acoes)
try {
    Usuarios(*m_Banco).CadastraUsuario(operador, senha, acoes, m_Agora());
} catch (...) {
    PassaFalha(" < Servicos.CadastraUsuario");
}

void ServicosSql::CadastraCliente(const ClienteCadastrado &cliente)
try {
    Usuarios(*m_Banco).CadastraCliente(cliente, m_Agora());
} catch (...) {
    PassaFalha(" < Servicos.CadastraCliente");
}

bool ServicosSql::Vazio()
try {
    return Usuarios(*m_Banco).Vazio();
} catch (...) {
    PassaFalha(" < Servicos.Vazio");
}

} // namespace mesa
