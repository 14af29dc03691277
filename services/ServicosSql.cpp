#include "services/ServicosSql.h"

#include "host/Conversoes.h"
#include "services/ErroSql.h"
#include "services/Permissoes.h"
#include "services/Recusa.h"
#include "services/RegrasDeCadastro.h"
#include "services/RegrasDeSenha.h"
#include "services/ServicoClientes.h"
#include "services/Usuarios.h"

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

Falha JaExiste(const std::string &descricao)
{
    return Falha(NumeroFalha::ChaveJaExiste, "Servicos", descricao);
}

} // namespace

ServicosSql::ServicosSql(std::shared_ptr<Banco> banco, Relogio agora, const CustoDaSenha &custo)
    : m_Banco(std::move(banco)),
      m_Portaria(std::make_shared<Portaria>(m_Banco, custo)),
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

Ref<SessaoServico> ServicosSql::Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                                      std::string &recusa, std::int32_t &espera)
{
    const auto entrada = Autentica(usuario, senha, estacao, recusa, espera);
    if (!entrada) {
        return nullptr;
    }
    return Novo<SessaoSql>(m_Banco, m_Agora, m_Portaria, *entrada, m_ExigeMotivo, SessaoSql::SemEntrada::Responde);
}

std::optional<Portaria::Entrada> ServicosSql::Autentica(const std::string &usuario, const Segredo &senha,
                                                        const std::string &estacao, std::string &recusa,
                                                        std::int32_t &espera)
try {
    return m_Portaria->Entra(usuario, senha, estacao, m_Agora, recusa, espera);
} catch (...) {
    PassaErro(" < Servicos.Entra");
}

Ref<SessaoSql> ServicosSql::Retoma(const Portaria::Entrada &entrada)
{
    return Novo<SessaoSql>(m_Banco, m_Agora, m_Portaria, entrada, m_ExigeMotivo, SessaoSql::SemEntrada::Lanca);
}

bool ServicosSql::PrimeiroAdministrador(const ClienteCadastrado &cliente, const Operador &quem, const Segredo &senha,
                                        std::string &recusa)
try {
    recusa.clear();
    m_Banco->Escreve([&] {
        if (Usuarios::HaUsuarios(*m_Banco)) {
            throw Recusa("O registro já tem usuários: quem os administra inclui os outros.");
        }
        Usuarios::Novo novo;
        novo.Quem = quem;
        novo.Quem.Numero = 0;
        novo.Quem.CodCliente = cliente.CodCliente;
        novo.Quem.Usuario = RegrasDeCadastro::Usuario(quem.Usuario);
        novo.Quem.Nome = RegrasDeCadastro::NomeDaPessoa(quem.Nome);
        RegrasDeCadastro::Municipio(quem.CodMunic);
        const ClienteCadastrado conferido = ServicoClientes::Conferido(*m_Banco, cliente);
        novo.Quem.Setor = quem.Setor.empty() ? "" : RegrasDeCadastro::NomeDoSetor(quem.Setor);
        if (!quem.Setor.empty() && std::ranges::find(conferido.Setores, novo.Quem.Setor) == conferido.Setores.end()) {
            throw Recusa("O cliente " + conferido.Nome + " não tem o setor ativo \"" + novo.Quem.Setor + "\".");
        }
        RegrasDeSenha::Confere(senha, novo.Quem.Usuario, novo.Quem.Nome);
        novo.Senha = Senhas::Embaralha(senha, m_Portaria->Custo());
        for (const Direito &direito : Permissoes::Direitos()) {
            novo.Direitos.emplace_back(direito.Objeto, direito.Acao);
        }
        Usuarios usuarios(*m_Banco, m_Agora(), 0);
        usuarios.IncluiCliente(conferido);
        usuarios.Inclui(novo);
    });
    return true;
} catch (const Recusa &motivo) {
    recusa = motivo.what();
    return false;
} catch (...) {
    PassaErro(" < Servicos.PrimeiroAdministrador");
}

void ServicosSql::CadastraUsuario(const Operador &operador, const Segredo &senha, const std::vector<std::string> &acoes,
                                  const std::vector<std::string> &administra)
try {
    Usuarios::Novo novo{operador, Senhas::Embaralha(senha, m_Portaria->Custo()), false, {}};
    for (const std::string &acao : acoes) {
        novo.Direitos.emplace_back(Permissoes::Objeto, acao);
    }
    for (const std::string &acao : administra) {
        novo.Direitos.emplace_back(Permissoes::ObjetoAdministracao, acao);
    }
    m_Banco->Escreve([&] {
        if (Consulta(*m_Banco, "SELECT 1 FROM USUARIO WHERE Chave = ? OR Numero = ?",
                     {Q(RegrasDeCadastro::ChaveDoUsuario(operador.Usuario)), operador.Numero})
                .Proxima()) {
            throw JaExiste("Já existe o usuário " + operador.Usuario + ", ou outro de número " + CStr(operador.Numero) +
                           ".");
        }
        Usuarios(*m_Banco, m_Agora(), 0).Inclui(novo);
    });
} catch (...) {
    PassaErro(" < Servicos.CadastraUsuario");
}

void ServicosSql::CadastraCliente(const ClienteCadastrado &cliente)
try {
    m_Banco->Escreve([&] {
        if (Consulta(*m_Banco, "SELECT 1 FROM CLIENTE WHERE CodCliente = ? OR Nome = ?",
                     {cliente.CodCliente, Q(cliente.Nome)})
                .Proxima()) {
            throw JaExiste("Já existe o cliente " + cliente.Nome + ", ou outro de código " + CStr(cliente.CodCliente) +
                           ".");
        }
        Usuarios(*m_Banco, m_Agora(), 0).IncluiCliente(cliente);
    });
} catch (...) {
    PassaErro(" < Servicos.CadastraCliente");
}

bool ServicosSql::Vazio()
try {
    return m_Banco->Le([&] { return !Usuarios::HaUsuarios(*m_Banco); });
} catch (...) {
    PassaErro(" < Servicos.Vazio");
}

} // namespace mesa
