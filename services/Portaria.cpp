#include "services/Portaria.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/ErroSql.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/Recusa.h"
#include "services/RegrasDeCadastro.h"
#include "services/RegrasDeSenha.h"
#include "services/Resumo.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>
#include <vector>

namespace mesa {

namespace {

// Why a password is written again that nobody has changed; the history says so, and is asked for it.
const std::string MesmaSenhaDenovo = "a mesma senha, guardada de modo mais caro de adivinhar";

// As the history tells a password too.
std::string ProvaDe(const std::string &senha)
{
    return Resumo(QByteArray::fromStdString(senha));
}

std::string FraseDaEspera(std::int32_t espera)
{
    return "Foram muitas tentativas com senha incorreta. Aguarde " + CStr(espera) +
           (espera == 1 ? " segundo" : " segundos") + " e tente de novo.";
}

Historico::Mudanca DaSessao(std::int32_t numero, const std::string &acao, const std::string &motivo = {})
{
    return {"SESSAO", numero, 0, "SESSAO", numero, acao, motivo};
}

QJsonObject Onde(const std::string &estacao)
{
    return {{"Estacao", Q(estacao)}};
}

std::string EstacaoValida(const std::string &estacao)
{
    const QString texto = Q(estacao);
    const bool serve = Esquema::Acha("ESTACAO")->Acha("Estacao")->Recusa(texto).empty() &&
                       std::ranges::all_of(texto, [](QChar letra) { return letra.isPrint(); });
    return serve ? estacao : "";
}

} // namespace

Portaria::Portaria(std::shared_ptr<Banco> banco, CustoDaSenha custo, std::shared_ptr<TentativasEmMemoria> emMemoria)
    : m_Banco(std::move(banco)),
      m_Custo(custo),
      m_EmMemoria(std::move(emMemoria))
{
}

std::optional<Portaria::Entrada> Portaria::Entra(const std::string &usuario, const Segredo &senha,
                                                 const std::string &estacao, const Relogio &agora, std::string &recusa,
                                                 std::int32_t &espera)
{
    recusa.clear();
    espera = 0;
    if (Trim(usuario).empty() || senha.Vazio()) {
        recusa = "Informe o usuário e a senha.";
        return std::nullopt;
    }
    const Tentativa tentativa{RegrasDeCadastro::ChaveDoUsuario(usuario),
                              senha,
                              EstacaoValida(estacao),
                              agora,
                              "senha incorreta",
                              "Usuário ou senha incorretos."};
    const Achado achado = m_Banco->Le([&] { return Acha("u.Chave = ?", Q(tentativa.Chave)); });
    Entrada entrada;
    entrada.Estacao = tentativa.Estacao;
    const auto entra = [&](const Achado &quem, bool estacaoConhecida, const Instante &quando) {
        entrada.Quem = quem.Quem;
        entrada.Prova = ProvaDe(quem.Senha);
        entrada.Versao = quem.Versao;
        if (!m_Banco->SomenteLeitura().empty()) {
            return;
        }
        entrada.AvisoDeRelogio = AvisoDeRelogio(quando);
        const std::int32_t numero = quem.Quem.Numero;
        Historico(*m_Banco).RegistraFato(quando, numero, DaSessao(numero, "entra"), Onde(tentativa.Estacao));
        if (!estacaoConhecida && !tentativa.Estacao.empty()) {
            ConheceEstacao(quem.Quem, tentativa.Estacao, quando);
        }
        if (Senhas::Envelheceu(quem.Senha, m_Custo)) {
            const std::string denovo = Senhas::Embaralha(senha, m_Custo);
            GravaSenha(quem, {{"Senha", Q(denovo)}}, quando, MesmaSenhaDenovo);
            entrada.Prova = ProvaDe(denovo);
            ++entrada.Versao;
        }
    };
    if (!Tenta(tentativa, achado, entra, recusa, espera)) {
        return std::nullopt;
    }
    return entrada;
}

bool Portaria::MesmaSenha(const Achado &achado, const std::string &prova)
{
    std::string procurada = ProvaDe(achado.Senha);
    if (procurada == prova) {
        return true;
    }
    Consulta mudancas(*m_Banco,
                      "SELECT Antes, Motivo FROM HISTORICO WHERE Entidade = 'USUARIO' AND NroEntidade = ? "
                      "ORDER BY Nro DESC",
                      {achado.Quem.Numero});
    while (mudancas.Proxima()) {
        const QJsonObject antes = QJsonDocument::fromJson(QByteArray::fromStdString(mudancas.Texto(0))).object();
        const std::string anterior = S(antes.value("Senha").toString());
        if (anterior != procurada && mudancas.Texto(1) != MesmaSenhaDenovo) {
            return false;
        }
        procurada = anterior;
        if (procurada == prova) {
            return true;
        }
    }
    return false;
}

Portaria::Achado Portaria::AchaEntrado(const Entrada &quem)
{
    Achado achado = Acha("u.Numero = ?", quem.Quem.Numero);
    if (!achado.Ativo) {
        throw RecusaDeEntrada("O usuário " + quem.Quem.Usuario +
                              " foi desativado depois da entrada. Procure quem administra os usuários.");
    }
    if (!MesmaSenha(achado, quem.Prova)) {
        throw RecusaDeEntrada("A sua senha foi trocada depois da entrada. Entre de novo.");
    }
    // Asked only of a user who was changed since.
    if (achado.Versao != quem.Versao &&
        Consulta(*m_Banco,
                 "SELECT 1 FROM HISTORICO WHERE Entidade = 'USUARIO' AND NroEntidade = ? AND Versao > ? AND "
                 "Acao = 'desativa'",
                 {quem.Quem.Numero, qlonglong(quem.Versao)})
            .Proxima()) {
        throw RecusaDeEntrada("O usuário " + quem.Quem.Usuario +
                              " foi desativado e reativado depois da entrada. Entre de novo.");
    }
    return achado;
}

void Portaria::ExigeEntrada(const Entrada &quem)
{
    const Achado agora = AchaEntrado(quem);
    if (agora.TrocaSenha) {
        throw Recusa(quem.Quem.Nome + " precisa trocar a senha antes de fazer qualquer outra coisa.");
    }
    if (agora.Quem.CodCliente != quem.Quem.CodCliente || agora.Quem.Setor != quem.Quem.Setor ||
        agora.Quem.CodMunic != quem.Quem.CodMunic) {
        throw Recusa("O cliente, o setor ou o município de " + quem.Quem.Nome +
                     " mudou depois da entrada. Saia e entre de novo.");
    }
}

bool Portaria::TrocaSenha(Entrada &quem, const Segredo &atual, const Segredo &nova, const Relogio &agora,
                          const Repeticao *repeticao, std::optional<std::string> &repetida, std::string &recusa)
try {
    recusa.clear();
    const auto jaFeita = [&](const Instante &quando) {
        repetida = repeticao != nullptr ? repeticao->DeAntes(quando) : std::nullopt;
        return repetida.has_value();
    };
    // Whoever asks again has signed in with the password of before, or with the one that the act then set.
    const auto repete = [&] {
        const Achado achado = m_Banco->Le([&] { return Acha("u.Numero = ?", quem.Quem.Numero); });
        if (achado.Ativo && Senhas::Confere(achado.Senha, nova, m_Custo)) {
            quem.Prova = ProvaDe(achado.Senha);
        }
        m_Banco->Le([&] { ConfereEntrada(quem); });
        return true;
    };
    if (repeticao != nullptr && m_Banco->Escreve([&] { return jaFeita(agora()); })) {
        return repete();
    }
    const Achado achado = m_Banco->Le([&] { return AchaEntrado(quem); });
    RegrasDeSenha::Confere(nova, achado.Quem.Usuario, achado.Quem.Nome);
    if (nova.Composto() == atual.Composto()) {
        throw Recusa("A senha nova precisa ser diferente da atual.");
    }
    const Tentativa tentativa{
        RegrasDeCadastro::ChaveDoUsuario(achado.Quem.Usuario), atual,  quem.Estacao, agora, "senha atual incorreta",
        "A senha atual não confere. Nada foi trocado.",        jaFeita};
    std::int32_t espera = 0;
    std::string prova;
    const bool feita = Tenta(
        tentativa, achado,
        [&](const Achado &eu, bool, const Instante &quando) {
            const std::string embaralhada = Senhas::Embaralha(nova, m_Custo);
            GravaSenha(eu, {{"Senha", Q(embaralhada)}, {"TrocaSenha", Indicador::Nao}}, quando, {});
            if (repeticao != nullptr) {
                repeticao->Guarda(quando);
            }
            prova = ProvaDe(embaralhada);
        },
        recusa, espera);
    if (feita && repetida) {
        return repete();
    }
    if (feita) {
        quem.Prova = prova;
    }
    return feita;
} catch (const RecusaDeEntrada &) {
    throw;
} catch (const Recusa &motivo) {
    recusa = motivo.what();
    return false;
}

Portaria::Achado Portaria::Acha(const QString &onde, const QVariant &valor)
{
    Consulta linha(*m_Banco,
                   "SELECT u.Numero, u.Usuario, u.Nome, u.CodCliente, c.Nome, u.Setor, u.CodMunic, u.Senha, u.Ativo, "
                   "u.Versao, u.TrocaSenha FROM USUARIO u JOIN CLIENTE c ON c.CodCliente = u.CodCliente WHERE " +
                       onde,
                   {valor});
    Achado achado;
    if (linha.Proxima()) {
        achado.Quem.Numero = static_cast<std::int32_t>(linha.Inteiro(0));
        achado.Quem.Usuario = linha.Texto(1);
        achado.Quem.Nome = linha.Texto(2);
        achado.Quem.CodCliente = static_cast<std::int32_t>(linha.Inteiro(3));
        achado.Quem.Cliente = linha.Texto(4);
        achado.Quem.Setor = linha.Texto(5);
        achado.Quem.CodMunic = static_cast<std::int32_t>(linha.Inteiro(6));
        achado.Senha = linha.Texto(7);
        achado.Ativo = linha.Inteiro(8) == Indicador::Sim;
        achado.Versao = linha.Inteiro(9);
        achado.TrocaSenha = linha.Inteiro(10) == Indicador::Sim;
    }
    return achado;
}

bool Portaria::Tenta(const Tentativa &tentativa, const Achado &achado,
                     const std::function<void(const Achado &, bool, const Instante &)> &entra, std::string &recusa,
                     std::int32_t &espera)
{
    espera = Conta(tentativa, achado);
    if (espera > 0) {
        recusa = FraseDaEspera(espera);
        return false;
    }
    const bool noRegistro = ContaNoRegistro(achado);
    const bool certa = Senhas::Confere(achado.Ativo ? achado.Senha : "", tentativa.Senha, m_Custo);
    const auto termina = [&] {
        const Instante agora = tentativa.Agora();
        TentativasDoUsuario contadas(*m_Banco, achado.Quem.Numero, tentativa.Estacao);
        // Whoever was deactivated or got another password meanwhile does not come in.
        const Achado quem = Acha("u.Numero = ?", achado.Quem.Numero);
        const bool jaFeita = tentativa.JaFeita && tentativa.JaFeita(agora);
        if (jaFeita || (certa && quem.Ativo && quem.Senha == achado.Senha)) {
            if (noRegistro) {
                contadas.Grava({});
            } else {
                m_EmMemoria->De(tentativa.Chave, [](Tentativas &emMemoria) { emMemoria = {}; });
            }
            if (!jaFeita) {
                entra(quem, contadas.EstacaoConhecida(), agora);
            }
            return true;
        }
        RegistraRecusa(tentativa, achado, agora,
                       achado.Quem.Numero == 0 ? "usuário inexistente"
                       : !achado.Ativo         ? "usuário desativado"
                                               : tentativa.MotivoDaRecusa);
        espera = (noRegistro ? contadas.Le() : m_EmMemoria->De(tentativa.Chave, [](const Tentativas &emMemoria) {
                     return emMemoria;
                 })).Espera();
        return false;
    };
    const bool feita = m_Banco->SomenteLeitura().empty() ? m_Banco->Escreve(termina) : m_Banco->Le(termina);
    if (!feita) {
        recusa = tentativa.Recusa;
    }
    return feita;
}

bool Portaria::ContaNoRegistro(const Achado &achado) const
{
    return achado.Quem.Numero != 0 && m_Banco->SomenteLeitura().empty();
}

std::int32_t Portaria::Conta(const Tentativa &tentativa, const Achado &achado)
{
    const std::string espera = "durante a espera";
    if (!ContaNoRegistro(achado)) {
        const Instante agora = tentativa.Agora();
        const std::int32_t falta = m_EmMemoria->De(tentativa.Chave, [&](Tentativas &contadas) {
            contadas.Acerta(agora);
            const std::int32_t ainda = contadas.Falta(agora);
            if (ainda == 0) {
                contadas.Conta(agora);
            }
            return ainda;
        });
        if (falta > 0 && m_Banco->SomenteLeitura().empty()) {
            m_Banco->Escreve([&] { RegistraRecusa(tentativa, achado, tentativa.Agora(), espera); });
        }
        return falta;
    }
    std::string qual;
    Tentativas antes;
    Tentativas contadas;
    try {
        const std::int32_t falta = m_Banco->Escreve([&] {
            const Instante agora = tentativa.Agora();
            TentativasDoUsuario doUsuario(*m_Banco, achado.Quem.Numero, tentativa.Estacao);
            const Tentativas gravadas = doUsuario.Le();
            qual = doUsuario.Qual();
            contadas = m_EmMemoria->SemNaoOlhada(qual, gravadas);
            contadas.Acerta(agora);
            antes = contadas;
            const std::int32_t ainda = contadas.Falta(agora);
            if (ainda > 0) {
                RegistraRecusa(tentativa, achado, agora, espera);
            } else {
                contadas.Conta(agora);
            }
            if (contadas != gravadas) {
                doUsuario.Grava(contadas);
            }
            return ainda;
        });
        m_EmMemoria->Olhada(qual);
        return falta;
    } catch (const ErroSql &erro) {
        if (erro.Motivo == MotivoSql::Incerto) { // the count may stand there, and the password is not looked at
            m_EmMemoria->NaoOlhada(qual, antes, contadas);
        }
        throw;
    }
}

void Portaria::RegistraRecusa(const Tentativa &tentativa, const Achado &achado, const Instante &agora,
                              const std::string &motivo)
{
    if (!m_Banco->SomenteLeitura().empty()) {
        return;
    }
    Historico(*m_Banco).RegistraFato(agora, 0, DaSessao(achado.Quem.Numero, "recusa", motivo), Onde(tentativa.Estacao));
}

void Portaria::ConheceEstacao(const Operador &quem, const std::string &estacao, const Instante &agora)
{
    const std::int64_t nova =
        m_Banco->Insere("ESTACAO", {{"Numero", quem.Numero}, {"Estacao", Q(estacao)}}).NumeroNovo();
    Historico(*m_Banco).Registra(agora, quem.Numero, {"ESTACAO", nova, 1, "ESTACAO", nova, "inclui"});
}

void Portaria::GravaSenha(const Achado &achado, Celulas celulas, const Instante &agora, const std::string &motivo)
{
    const std::int32_t numero = achado.Quem.Numero;
    celulas.push_back({"Versao", qlonglong(achado.Versao + 1)});
    m_Banco->Atualiza("USUARIO", celulas, {"Numero", numero});
    Historico(*m_Banco).Registra(agora, numero,
                                 {"USUARIO", numero, achado.Versao + 1, "USUARIO", numero, "altera", motivo});
}

std::string Portaria::AvisoDeRelogio(const Instante &agora)
{
    const Historico::Cabeca fim = Historico(*m_Banco).Fim();
    std::int64_t ultimo = fim.ComFuso ? fim.Quando : 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> voltas; // entry, and the moment behind which the clock was
    {
        Consulta linhas(*m_Banco, "SELECT Nro, Depois FROM HISTORICO WHERE Entidade = 'RELOGIO' AND NroEntidade = 0 "
                                  "ORDER BY Nro DESC");
        while (linhas.Proxima()) {
            const QJsonObject dados = QJsonDocument::fromJson(QByteArray::fromStdString(linhas.Texto(1))).object();
            voltas.emplace_back(linhas.Inteiro(0), dados.value("Ultimo").toInteger());
        }
    }
    // What a refused sign-in has noted since somebody came in, or a save of somebody who was at work, nobody has read.
    for (const auto &[entrada, momento] : voltas) {
        if (Consulta(*m_Banco, "SELECT 1 FROM HISTORICO WHERE Nro > ? AND Entidade = 'SESSAO' AND Acao = 'entra'",
                     {qlonglong(entrada)})
                .Proxima()) {
            break;
        }
        ultimo = std::max(ultimo, momento);
    }
    const std::int64_t utc = agora.Utc();
    if (utc >= ultimo) {
        return "";
    }
    const auto aqui = [&](std::int64_t momento) { return TextoDoMomento(MaisMinutos(momento, agora.Fuso)); };
    return std::string("O relógio ") + (m_DeServidor ? "do servidor" : "desta estação") + " marca " + aqui(utc) +
           ", mas o registro já tem anotações de " + aqui(ultimo) +
           (m_DeServidor ? ". Avise quem administra o servidor, que confira a data e a hora dele"
                         : ". Confira a data e a hora da estação") +
           ": o que for gravado até lá fica no histórico com a hora errada, e a diferença ficou anotada nele.";
}

} // namespace mesa
