#include "desk/services/Usuarios.h"

#include "desk/services/Historico.h"
#include "desk/services/Permissoes.h"
#include "desk/services/Resumo.h"
#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"

#include <QStringList>

#include <sodium.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace mesa {

namespace {

constexpr std::int64_t TentativasLivres = 2;
constexpr std::int32_t PrimeiraEspera = 5; // seconds
constexpr std::int32_t MaiorEspera = 300;
constexpr std::size_t MaiorUsuario = 60;

const std::string RecusaDaEntrada = "Usuário ou senha incorretos.";

std::string Embaralha(const std::string &senha)
{
    std::array<char, crypto_pwhash_STRBYTES> texto{};
    if (sodium_init() < 0 ||
        crypto_pwhash_str(texto.data(), senha.data(), senha.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
        throw Falha(NumeroFalha::SemMemoria, "Servicos", "Não há memória para conferir a senha.");
    }
    return texto.data();
}

bool Confere(const std::string &embaralhada, const std::string &senha)
{
    return sodium_init() >= 0 && crypto_pwhash_str_verify(embaralhada.c_str(), senha.data(), senha.size()) == 0;
}

// An unknown name costs as much as a wrong password.
void GastaOTempo(const std::string &senha)
{
    static const std::string qualquer = Embaralha("nenhuma");
    Confere(qualquer, senha);
}

std::int64_t Segundos(Data data)
{
    return std::llround(data.Valor * 86400);
}

std::int32_t EsperaDepoisDe(std::int64_t vezes)
{
    if (vezes <= TentativasLivres) {
        return 0;
    }
    const std::int64_t dobras = std::min<std::int64_t>(vezes - TentativasLivres - 1, 10);
    return std::min(PrimeiraEspera << dobras, MaiorEspera);
}

std::string FraseDaEspera(std::int32_t espera)
{
    return "Foram muitas tentativas com senha incorreta. Aguarde " + CStr(espera) +
           (espera == 1 ? " segundo" : " segundos") + " e tente de novo.";
}

Falha JaExiste(const std::string &descricao)
{
    return Falha(NumeroFalha::ChaveJaExiste, "Servicos", descricao);
}

} // namespace

std::optional<Operador> Usuarios::Entra(const std::string &usuario, const std::string &senha, Data agora,
                                        std::string &recusa, std::int32_t &espera)
{
    recusa.clear();
    espera = 0;
    if (Trim(usuario).empty() || senha.empty()) {
        recusa = "Informe o usuário e a senha.";
        return std::nullopt;
    }
    const std::string chave = ChaveSemCaixa(Trim(usuario));
    if (Len(chave) > MaiorUsuario) {
        recusa = RecusaDaEntrada;
        return std::nullopt;
    }
    const std::int64_t momento = Segundos(agora);
    Operador operador;
    std::string embaralhada;
    m_Banco.Le([&] {
        Consulta linha(m_Banco,
                       "SELECT u.Numero, u.Usuario, u.Nome, u.CodCliente, c.Nome, u.Setor, u.CodMunic, u.Senha "
                       "FROM USUARIO u JOIN CLIENTE c ON c.CodCliente = u.CodCliente WHERE u.Chave = ? AND u.Ativo = 1",
                       {Q(chave)});
        if (linha.Proxima()) {
            operador.Numero = static_cast<std::int32_t>(linha.Inteiro(0));
            operador.Usuario = linha.Texto(1);
            operador.Nome = linha.Texto(2);
            operador.CodCliente = static_cast<std::int32_t>(linha.Inteiro(3));
            operador.Cliente = linha.Texto(4);
            operador.Setor = linha.Texto(5);
            operador.CodMunic = static_cast<std::int32_t>(linha.Inteiro(6));
            embaralhada = linha.Texto(7);
        }
    });
    if (embaralhada.empty()) {
        GastaOTempo(senha);
        recusa = RecusaDaEntrada;
        return std::nullopt;
    }
    // Where nothing can be written, nothing is counted: who has the file there can try without this program.
    const bool conta = m_Banco.SomenteLeitura().empty();
    if (conta) {
        espera = m_Banco.Escreve([&] { return ContaTentativa(operador.Numero, momento); });
    }
    if (espera > 0) {
        recusa = FraseDaEspera(espera);
        return std::nullopt;
    }
    if (!Confere(embaralhada, senha)) {
        recusa = RecusaDaEntrada;
        espera = m_Banco.Le([&] {
            Consulta linha(m_Banco, "SELECT Vezes FROM ENTRADA_RECUSADA WHERE Numero = ?", {operador.Numero});
            return linha.Proxima() ? EsperaDepoisDe(linha.Inteiro(0)) : 0;
        });
        return std::nullopt;
    }
    if (conta) {
        m_Banco.Escreve([&] { GravaTentativas(operador.Numero, 0, 0); });
    }
    return operador;
}

std::int32_t Usuarios::ContaTentativa(std::int32_t numero, std::int64_t agora)
{
    std::int64_t vezes = 0;
    {
        Consulta linha(m_Banco, "SELECT Vezes, EsperaAte FROM ENTRADA_RECUSADA WHERE Numero = ?", {numero});
        if (linha.Proxima()) {
            vezes = linha.Inteiro(0);
            // A clock that was set back does not lengthen the wait.
            const std::int64_t falta = std::min<std::int64_t>(linha.Inteiro(1) - agora, EsperaDepoisDe(vezes));
            if (falta > 0) {
                return static_cast<std::int32_t>(falta);
            }
        }
    }
    ++vezes;
    GravaTentativas(numero, vezes, agora + EsperaDepoisDe(vezes));
    return 0;
}

void Usuarios::GravaTentativas(std::int32_t numero, std::int64_t vezes, std::int64_t esperaAte)
{
    bool conhecida = false;
    {
        conhecida = Consulta(m_Banco, "SELECT 1 FROM ENTRADA_RECUSADA WHERE Numero = ?", {numero}).Proxima();
    }
    Celulas contadas = {
        {"Vezes", qlonglong(vezes)},
        {"EsperaAte", qlonglong(esperaAte)},
        {"Soma", Q(Resumo(QStringList{CStr(numero).c_str(), "", CStr(vezes).c_str(), CStr(esperaAte).c_str()}
                              .join("\n")
                              .toUtf8()))}};
    if (conhecida) {
        m_Banco.Atualiza("ENTRADA_RECUSADA", contadas, {"Numero", numero});
    } else {
        contadas.push_back({"Numero", numero});
        contadas.push_back({"Estacao", ""});
        m_Banco.Insere("ENTRADA_RECUSADA", contadas);
    }
}

void Usuarios::CadastraUsuario(const Operador &operador, const std::string &senha,
                               const std::vector<std::string> &acoes, const Instante &agora)
{
    const std::string embaralhada = Embaralha(senha); // takes its time, outside the transaction
    m_Banco.Escreve([&] {
        const std::string chave = ChaveSemCaixa(operador.Usuario);
        if (Consulta(m_Banco, "SELECT 1 FROM USUARIO WHERE Chave = ? OR Numero = ?", {Q(chave), operador.Numero})
                .Proxima()) {
            throw JaExiste("Já existe o usuário " + operador.Usuario + ", ou outro de número " + CStr(operador.Numero) +
                           ".");
        }
        const qlonglong numero = operador.Numero == 0 ? ProximoNumero() : operador.Numero;
        m_Banco.Insere("USUARIO", {{"Numero", numero},
                                   {"Usuario", Q(operador.Usuario)},
                                   {"Chave", Q(chave)},
                                   {"Nome", Q(operador.Nome)},
                                   {"CodCliente", operador.CodCliente},
                                   {"Setor", Q(operador.Setor)},
                                   {"CodMunic", operador.CodMunic},
                                   {"Senha", Q(embaralhada)},
                                   {"Ativo", Indicador::Sim},
                                   {"TrocaSenha", Indicador::Nao},
                                   {"Versao", 1}});
        Historico historico(m_Banco);
        historico.Registra(agora, 0, {"USUARIO", numero, 1, "USUARIO", numero, "inclui"});
        for (const std::string &acao : acoes) {
            const std::int64_t permissao = m_Banco
                                               .Insere("PERMISSAO", {{"Numero", numero},
                                                                     {"Sistema", Q(Permissoes::Sistema)},
                                                                     {"Objeto", Q(Permissoes::Objeto)},
                                                                     {"Acao", Q(acao)},
                                                                     {"Ativo", Indicador::Sim}})
                                               .NumeroNovo();
            historico.Registra(agora, 0, {"USUARIO", numero, 1, "PERMISSAO", permissao, "inclui"});
        }
    });
}

// The database's own numbering would not count those that came with a number.
std::int64_t Usuarios::ProximoNumero()
{
    Consulta maior(m_Banco, "SELECT COALESCE(MAX(Numero), 0) FROM USUARIO");
    maior.Proxima();
    return maior.Inteiro(0) + 1;
}

void Usuarios::CadastraCliente(const ClienteCadastrado &cliente, const Instante &agora)
{
    m_Banco.Escreve([&] {
        if (Consulta(m_Banco, "SELECT 1 FROM CLIENTE WHERE CodCliente = ? OR Nome = ?",
                     {cliente.CodCliente, Q(cliente.Nome)})
                .Proxima()) {
            throw JaExiste("Já existe o cliente " + cliente.Nome + ", ou outro de código " + CStr(cliente.CodCliente) +
                           ".");
        }
        m_Banco.Insere("CLIENTE", {{"CodCliente", cliente.CodCliente},
                                   {"Nome", Q(cliente.Nome)},
                                   {"UF", Q(cliente.UF)},
                                   {"Ativo", Indicador::Sim},
                                   {"Versao", 1}});
        Historico historico(m_Banco);
        historico.Registra(agora, 0, {"CLIENTE", cliente.CodCliente, 1, "CLIENTE", cliente.CodCliente, "inclui"});
        for (const std::string &setor : cliente.Setores) {
            const std::int64_t numero =
                m_Banco
                    .Insere("SETOR",
                            {{"CodCliente", cliente.CodCliente}, {"Nome", Q(setor)}, {"Ativo", Indicador::Sim}})
                    .NumeroNovo();
            historico.Registra(agora, 0, {"CLIENTE", cliente.CodCliente, 1, "SETOR", numero, "inclui"});
        }
    });
}

bool Usuarios::Vazio()
{
    return m_Banco.Le([&] { return !Consulta(m_Banco, "SELECT 1 FROM USUARIO LIMIT 1").Proxima(); });
}

std::optional<ClienteCadastrado> Usuarios::Cliente(std::int32_t codCliente)
{
    std::optional<ClienteCadastrado> cliente;
    {
        Consulta linha(m_Banco, "SELECT Nome, UF FROM CLIENTE WHERE CodCliente = ?", {codCliente});
        if (linha.Proxima()) {
            cliente = ClienteCadastrado{codCliente, linha.Texto(0), {}, linha.Texto(1)};
        }
    }
    if (cliente) {
        Consulta setores(m_Banco, "SELECT Nome FROM SETOR WHERE CodCliente = ? AND Ativo = 1 ORDER BY Nome",
                         {codCliente});
        while (setores.Proxima()) {
            cliente->Setores.push_back(setores.Texto(0));
        }
    }
    return cliente;
}

} // namespace mesa
