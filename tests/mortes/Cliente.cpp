#include "tests/mortes/Cliente.h"

#include "host/Falha.h"
#include "services/Resumo.h"
#include "tests/services/RegistroDeTeste.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

using namespace mesa;

namespace mortes {

namespace {

using Relogio = std::chrono::steady_clock;

// Between two tries of who does not give up.
constexpr std::chrono::milliseconds Folego{50};
constexpr std::size_t MaiorDocumentoDaqui = 24000;

double Exigida(SessaoServico &sessao, const std::string &metodo, const Ref<EquiptoED> &equipto, std::string &recusa,
               Ref<EquiptoED> &resposta)
{
    Ref<Objeto> pedido = equipto;
    Valor retorno;
    if (!sessao.Executa("EquiptoRN", metodo, pedido, retorno, recusa)) {
        return 0;
    }
    resposta = metodo == "inclui" ? retorno.Como<EquiptoED>() : equipto;
    return resposta->NroIntEquip.Valor();
}

} // namespace

Cliente::Cliente(Quem quem, std::function<Ref<Servicos>()> conecta)
    : m_Quem(std::move(quem)),
      m_Conecta(std::move(conecta))
{
}

Cliente::~Cliente()
{
    Para(std::chrono::milliseconds(0));
}

void Cliente::Comeca()
{
    m_Parar = false;
    m_Ate = Relogio::time_point::max();
    m_Fio = std::thread([this] { Trabalha(); });
}

void Cliente::Para(std::chrono::milliseconds prazo)
{
    if (!m_Fio.joinable()) {
        return;
    }
    {
        const std::lock_guard tranca(m_Tranca);
        m_Parar = true;
        m_Ate = Relogio::now() + prazo;
    }
    m_Avisa.notify_all();
    m_Fio.join();
}

std::string Cliente::UltimaFrase() const
{
    const std::lock_guard tranca(m_Tranca);
    return m_Frase;
}

bool Cliente::Chega() const
{
    const std::lock_guard tranca(m_Tranca);
    return m_Parar;
}

void Cliente::Anota(const std::string &frase)
{
    ++m_Falhas;
    const std::lock_guard tranca(m_Tranca);
    m_Frase = frase;
}

bool Cliente::Grava(Gravacao::Ato ato, const std::string &marca, const Tarefa &tarefa, const std::string &soma)
{
    const auto inicio = Relogio::now();
    m_Diario.emplace_back();
    m_Diario.back().Oque = ato;
    m_Diario.back().Marca = marca;
    m_Diario.back().Sha256 = soma;
    for (;;) {
        Gravacao &gravacao = m_Diario.back();
        bool pedida = false;
        try {
            if (m_Servicos.Nada()) {
                m_Servicos = m_Conecta();
            }
            if (m_Sessao.Nada()) {
                std::string recusa;
                std::int32_t espera = 0;
                m_Sessao =
                    m_Servicos->Entra(m_Quem.Usuario, "senha de " + m_Quem.Usuario, "estação de teste", recusa, espera);
                if (m_Sessao.Nada()) {
                    throw std::runtime_error("sign-in: " + recusa);
                }
            }
            pedida = true;
            std::string recusa;
            const bool feita = tarefa(*m_Sessao, gravacao.Numero, recusa);
            gravacao.Levou = Relogio::now() - inicio;
            if (feita) {
                gravacao.Como = Gravacao::Desfecho::Respondida;
                ++m_Respondidas;
                return true;
            }
            gravacao.Como = Gravacao::Desfecho::Recusada;
            gravacao.Frase = recusa;
            return false;
        } catch (const Falha &falha) {
            // Somebody whose session ended signs in again, and asks for the same.
            if (falha.Numero == NumeroFalha::PermissaoNegada) {
                m_Sessao = nullptr;
            }
            gravacao.Frase = falha.what();
        } catch (const std::exception &erro) {
            gravacao.Frase = erro.what();
        }
        Anota(m_Diario.back().Frase);
        if (pedida && m_Quem.Desiste) {
            return false;
        }
        std::unique_lock tranca(m_Tranca);
        m_Avisa.wait_for(tranca, Folego, [this] { return m_Parar; });
        if (Relogio::now() > m_Ate) {
            return false;
        }
    }
}

void Cliente::Trabalha()
{
    while (!Chega()) {
        std::array<char, 16> texto{};
        std::snprintf(texto.data(), texto.size(), "%03d%05d", m_Quem.Numero, ++m_Marcas);
        const std::string marca = texto.data();

        const Bytes pdf = Pdf("documento " + marca, static_cast<std::size_t>(m_Marcas) * 7919 % MaiorDocumentoDaqui);
        const std::string soma =
            Resumo(QByteArray(reinterpret_cast<const char *>(pdf.data()), static_cast<qsizetype>(pdf.size())));
        double documento = 0;
        if (!Grava(
                Gravacao::Ato::Documento, marca,
                [&](SessaoServico &sessao, double &numero, std::string &recusa) {
                    const bool feito = sessao.GuardaDocumento(pdf, numero, recusa);
                    documento = numero;
                    return feito;
                },
                soma)) {
            continue;
        }

        const auto afericao = [&](int qual, Data de, Data ate) {
            return AfericaoDe(Conteudo::Afericao(qual, marca), de, ate, documento);
        };
        Ref<EquiptoED> incluido;
        const Tarefa inclui = [&](SessaoServico &sessao, double &numero, std::string &recusa) {
            auto novo = Com(EquipamentoDe(Conteudo::Codigo(marca)), &EquiptoED::Descricao, Conteudo::Incluido(marca));
            Poe(novo, Poe(SensorDe(1), afericao(0, DataDe(1, 1, 2026), DataDe(1, 6, 2026))));
            Poe(novo, Poe(SensorDe(2), afericao(1, DataDe(1, 1, 2026), DataDe(1, 6, 2026))));
            numero = Exigida(sessao, "inclui", novo, recusa, incluido);
            return numero != 0;
        };
        if (Chega() || !Grava(Gravacao::Ato::Inclui, marca, inclui)) {
            continue;
        }

        const Tarefa altera = [&](SessaoServico &sessao, double &numero, std::string &recusa) {
            auto mudado = Com(SoNumero(incluido->NroIntEquip), &EquiptoED::Descricao, Conteudo::Alterado(marca));
            mudado->VersaoLida = incluido->VersaoLida;
            const std::int32_t sensor = incluido->Sensores.Valor()->Item(1)->NroIntSensor;
            Poe(mudado, Poe(SoSensor(sensor), afericao(2, DataDe(2, 6, 2026), DataDe(1, 12, 2026))));
            Ref<EquiptoED> resposta;
            numero = Exigida(sessao, "altera", mudado, recusa, resposta);
            return numero != 0;
        };
        if (!Chega()) {
            Grava(Gravacao::Ato::Altera, marca, altera);
        }
    }
}

} // namespace mortes
