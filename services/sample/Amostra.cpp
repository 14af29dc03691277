#include "services/sample/Amostra.h"

#include "host/Conversoes.h"
#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/Indicador.h"
#include "host/LimiteDifED.h"
#include "host/Texto.h"
#include "services/LogradouroED.h"
#include "services/TabelaDeDados.h"
#include "services/sample/CertificadoPDF.h"

#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace mesa {

namespace {

constexpr std::int32_t PortoAlegre = 4314902;
constexpr int EquipamentosPorCliente = 48;
constexpr const char *Administradora = "marta";

struct ClienteDaAmostra {
    ClienteCadastrado Cadastro;
    std::string Usuario; // who registers its equipment
    std::vector<std::int32_t> Municipios;
    std::string Sigla;
    std::int32_t PrimeiroCep = 0; // of the postal codes invented for its municipalities
};

const std::vector<ClienteDaAmostra> &ClientesDaAmostra()
{
    static const std::vector<ClienteDaAmostra> clientes = {
        {{1, "Autoridade Estadual de Trânsito", {"Fiscalização", "Engenharia", "Metrologia"}, "RS"},
         "ana",
         {PortoAlegre, 4305108, 4314407, 4316907, 4318705},
         "AE",
         90000000},
        {{2, "Autoridade Municipal de Trânsito", {"Operações", "Eletrônica"}, "SP"},
         "elisa",
         {3509502, 3552205, 3548500},
         "AM",
         13000000},
        {{3, "Autoridade das Estradas de Rodagem", {"Rodovias Norte", "Rodovias Sul"}, "MG"},
         "gilda",
         {3170206, 3136702, 3143302, 3146107, 3121605},
         "AR",
         38000000},
    };
    return clientes;
}

struct ModeloDaAmostra {
    const char *Tipo;
    std::uint8_t Medidor;
    const char *Modelo;
    const char *Via;
};

constexpr ModeloDaAmostra Modelos[] = {
    {"C", 1, "Caetano CT-200", "U"},      {"L", 1, "Lombada Eletrônica LE-50", "U"},
    {"P", 1, "Pardal P-700", "R"},        {"R", 2, "Radar Fotográfico RF-3", "R"},
    {"M", 2, "Pardal Móvel PM-10", "I"},  {"F", 1, "Agente Eletrônico AE-1", "U"},
    {"V", 3, "Estacionamento VR-2", "U"}, {"A", 2, "Operado por Agente OA-4", ""},
    {"E", 3, "Etilômetro ET-500", ""},    {"U", 3, "Luxímetro LX-9", ""},
};

// Repeatable choices: the same on every machine.
class Sorteio {
  public:
    explicit Sorteio(std::uint32_t semente) : m_Gerador(semente) {}
    int Ate(int n) { return static_cast<int>(m_Gerador() % static_cast<std::uint32_t>(n)); }

  private:
    std::mt19937 m_Gerador;
};

Ref<Registro> Pede(SessaoServico &sessao, const std::string &operacao, const Ref<Registro> &pedido,
                   const std::string &classeRN = "EquiptoRN")
{
    Ref<Objeto> enviado = pedido;
    Valor retorno;
    std::string recusa;
    if (!sessao.Executa(classeRN, operacao, enviado, retorno, recusa)) {
        throw Falha(NumeroFalha::ErroInterno, "Amostra", "A amostra não pôde ser criada: " + recusa);
    }
    return retorno.EhObjeto() ? retorno.Como<Registro>() : Ref<Registro>();
}

template <class ED> void Acrescenta(Campo<ListaDe<ED>> &lista, const Ref<ED> &item)
{
    if (lista.Valor().Nada()) {
        lista = Novo<Colecao<Ref<ED>>>();
    }
    lista.Valor()->Add(item);
}

bool TemLayout(const std::string &tipo)
{
    return std::string("CLPRMFV").find(tipo) != std::string::npos;
}
bool TemVelocidade(const std::string &tipo)
{
    return std::string("CLPRA").find(tipo) != std::string::npos;
}
bool TemSensores(const std::string &tipo)
{
    return std::string("CLPRF").find(tipo) != std::string::npos;
}
bool TemAfericao(const std::string &tipo)
{
    return tipo != "V";
}
bool PodeDeclaracao(const std::string &tipo)
{
    return std::string("PCLM").find(tipo) != std::string::npos;
}

class Preenchimento {
  public:
    Preenchimento(const Ref<SessaoServico> &sessao, const ClienteDaAmostra &cliente, Data hoje, std::uint32_t semente)
        : m_Sessao(sessao),
          m_Cliente(cliente),
          m_Hoje(hoje),
          m_Sorteio(semente)
    {
    }

    void Equipamento(int numero)
    {
        const ModeloDaAmostra &modelo = Modelos[static_cast<std::size_t>(numero) % std::size(Modelos)];
        const std::string tipo = modelo.Tipo;
        auto novo = Novo<EquiptoED>();
        novo->ClienteInc = m_Cliente.Cadastro.Nome;
        novo->SetorInc =
            m_Cliente.Cadastro.Setores[static_cast<std::size_t>(numero) % m_Cliente.Cadastro.Setores.size()];
        novo->Codigo = m_Cliente.Sigla + tipo + Format(CDbl(100 + numero), "000");
        novo->SubCodigo = numero % 3 == 0 ? "SUB" + CStr(numero) : std::string();
        novo->CodMunic = m_Cliente.Municipios[static_cast<std::size_t>(numero) % m_Cliente.Municipios.size()];
        const ListaDe<LogradouroED> &ruas = Ruas(novo->CodMunic);
        const LogradouroED &rua = *ruas->Item(1 + m_Sorteio.Ate(ruas->Count()));
        novo->Descricao = Left(std::string(modelo.Modelo) + " - " + rua.NomeLograd.Valor(), 50);
        novo->TipoAgente = modelo.Medidor;
        novo->TipoEquip = tipo;
        novo->TipoVia = modelo.Via;
        novo->Modelo = Left(modelo.Modelo, 30);
        novo->ArquivoLayout = TemLayout(tipo) ? "PADRAO" : "";
        novo->Ativo = std::uint8_t{1};
        novo->VelocPermitida = static_cast<std::int16_t>(TemVelocidade(tipo) ? 40 + 10 * m_Sorteio.Ate(7) : 0);
        novo->TemImagemEntrelacada = std::uint8_t{2};
        novo->TemPerfilMag = std::uint8_t{2};
        novo->TemLimiteDif = std::uint8_t{2};
        const std::int32_t nroIntEquip = ComoTipo<EquiptoED>(Pede(*m_Sessao, "inclui", novo))->NroIntEquip;
        const Ref<EquiptoED> completo = Completa(nroIntEquip, tipo, numero, ruas);
        if (numero % 16 == 15) {
            Pede(*m_Sessao, "desativa", completo);
        }
    }

  private:
    const ListaDe<LogradouroED> &Ruas(std::int32_t codMunic)
    {
        auto &ruas = m_Ruas[codMunic];
        if (ruas.Nada()) {
            auto pedido = Novo<ListaLogradourosED>();
            pedido->CodMunic = codMunic;
            pedido->Procurado = "a";
            pedido->Ativo = Indicador::Sim;
            pedido->Maximo = 40;
            ruas = ComoTipo<ListaLogradourosED>(Pede(*m_Sessao, "listaLogradouros", pedido, "AdministracaoRN"))
                       ->Logradouros;
        }
        return ruas;
    }

    Ref<EquiptoED> Completa(std::int32_t nroIntEquip, const std::string &tipo, int numero,
                            const ListaDe<LogradouroED> &ruas)
    {
        auto pergunta = Novo<EquiptoED>();
        pergunta->NroIntEquip = nroIntEquip;
        const auto lido = ComoTipo<EquiptoED>(Pede(*m_Sessao, "consulta", pergunta));
        const bool comLimites = TemVelocidade(tipo) && numero % 2 == 0;
        auto alterado = ComoTipo<EquiptoED>(lido->Copia());
        alterado->TemLimiteDif = static_cast<std::uint8_t>(comLimites ? 1 : 2);
        alterado->TemPerfilMag = static_cast<std::uint8_t>(tipo == "C" ? 1 : 2);
        if (comLimites && numero % 4 == 0) {
            alterado->NroIntRejLimDif = 10;
        }
        if (tipo == "F" || tipo == "V") {
            alterado->txtObsNotif = "Infração registrada por sistema automático não metrológico.";
        }
        alterado->Sensores = Novo<Colecao<Ref<SensorED>>>();
        const int sensores = TemSensores(tipo) ? 3 + m_Sorteio.Ate(2) : 1;
        for (int sensor = 1; TemAfericao(tipo) && sensor <= sensores; ++sensor) {
            alterado->Sensores.Valor()->Add(NovoSensor(*alterado, sensor, ruas));
        }
        Pede(*m_Sessao, "altera", alterado);
        if (comLimites) {
            Limites(nroIntEquip, *alterado);
        }
        if (tipo == "F") {
            Horarios(nroIntEquip);
        }
        return alterado;
    }

    Ref<SensorED> NovoSensor(const EquiptoED &equipto, int numero, const ListaDe<LogradouroED> &ruas)
    {
        auto sensor = Novo<SensorED>();
        sensor->NroSensor = static_cast<std::int16_t>(numero);
        sensor->Ativo = std::uint8_t{1};
        if (TemSensores(equipto.TipoEquip)) {
            const LogradouroED &rua = *ruas->Item(1 + m_Sorteio.Ate(ruas->Count()));
            const std::int32_t casa = 100 + m_Sorteio.Ate(2900);
            const std::string endereco = rua.NomeLograd.Valor() + ", " + CStr(casa) +
                                         (rua.Bairro.Valor().empty() ? "" : " - " + rua.Bairro.Valor());
            sensor->CodLograd = rua.CodLograd;
            sensor->EndCep = CLng(rua.Cep.Valor());
            sensor->EndNro = casa;
            sensor->EndCompl = "";
            sensor->EndDescr = endereco;
            sensor->LocalInfr = Left(endereco, 80);
        } else {
            sensor->LocalInfr = "";
        }
        const int afericoes = 2 + m_Sorteio.Ate(3);
        // Backwards from the period that should hold today: some run out soon, some have run out, some leave a gap.
        const int situacao = m_Sorteio.Ate(10);
        int vence = situacao < 6   ? 60 + m_Sorteio.Ate(280)
                    : situacao < 8 ? 1 + m_Sorteio.Ate(29)
                                   : -(5 + m_Sorteio.Ate(200));
        std::vector<Ref<AfericaoED>> periodos;
        for (int periodo = 0; periodo < afericoes; ++periodo) {
            const int verifica = vence - 364;
            periodos.push_back(NovaAfericao(equipto, numero, verifica, vence));
            vence = verifica - 1 - (m_Sorteio.Ate(5) == 0 ? 20 + m_Sorteio.Ate(30) : 0);
        }
        for (auto afericao = periodos.rbegin(); afericao != periodos.rend(); ++afericao) {
            Acrescenta(sensor->Afericoes, *afericao);
        }
        return sensor;
    }

    Ref<AfericaoED> NovaAfericao(const EquiptoED &equipto, int sensor, int verifica, int vence)
    {
        const bool declaracao = PodeDeclaracao(equipto.TipoEquip) && m_Sorteio.Ate(4) == 0;
        auto afericao = Novo<AfericaoED>();
        afericao->Numero = CStr(10000000 + m_Sorteio.Ate(89999999));
        afericao->Marca = CStr(2020000 + m_Sorteio.Ate(99999)) + CStr(1000 + m_Sorteio.Ate(8999));
        afericao->DataVerificacao = m_Hoje.MaisDias(verifica);
        afericao->DataVencimento = m_Hoje.MaisDias(vence);
        afericao->Ativo = std::uint8_t{1};
        afericao->TipoAfer = static_cast<std::uint8_t>(declaracao ? 2 : 1);
        afericao->PortDimel =
            declaracao ? CStr(100 + m_Sorteio.Ate(300)) + "/" + CStr(20 + m_Sorteio.Ate(6)) : std::string();
        const Bytes pdf = FazCertificadoPDF(
            declaracao ? "Declaração de Conformidade" : "Certificado de Verificação Metrológica",
            {"Equipamento: " + equipto.Codigo.Valor(), "Modelo: " + equipto.Modelo.Valor(), "Sensor: " + CStr(sensor),
             "Número: " + afericao->Numero.Valor(), "Certificado: " + afericao->Marca.Valor(),
             "Verificação: " + Format(afericao->DataVerificacao, "dd/mm/yyyy"),
             "Vencimento: " + Format(afericao->DataVencimento, "dd/mm/yyyy"), "",
             "Documento de exemplo, sem valor legal."});
        double nroDocumento = 0;
        std::string recusa;
        if (!m_Sessao->GuardaDocumento(pdf, nroDocumento, recusa)) {
            throw Falha(NumeroFalha::ErroInterno, "Amostra", "A amostra não pôde ser criada: " + recusa);
        }
        afericao->NroIntImgCertif = nroDocumento;
        return afericao;
    }

    void Limites(std::int32_t nroIntEquip, const EquiptoED &equipto)
    {
        auto lista = Novo<EquiptoED>();
        for (int dia = 2; dia <= 6; ++dia) {
            auto limite = Novo<LimiteDifED>();
            limite->NroIntEquip = nroIntEquip;
            limite->Dia = static_cast<std::uint8_t>(dia);
            limite->HoraInicio = 2200;
            limite->HoraFim = 2359;
            limite->VelocPerm = static_cast<std::int16_t>(equipto.VelocPermitida + 10);
            limite->VelocMin = std::int16_t{0};
            limite->Ativo = std::uint8_t{1};
            limite->TipoLimite = std::uint8_t{1};
            Acrescenta(lista->ListaLimiteDif, limite);
        }
        Pede(*m_Sessao, "alteraListaLimitesDif", lista);
        auto dia = Novo<DiaEspecificoED>();
        dia->NroIntEquip = nroIntEquip;
        dia->Data = m_Hoje.MaisDias(30 + m_Sorteio.Ate(60));
        dia->HoraInicio = 0;
        dia->HoraFim = 2359;
        dia->VelocPerm = std::int16_t{60};
        dia->VelocMin = std::int16_t{0};
        dia->Ativo = std::uint8_t{1};
        Pede(*m_Sessao, "adicionaDiaEspecifico", dia);
    }

    void Horarios(std::int32_t nroIntEquip)
    {
        auto lista = Novo<EquiptoED>();
        for (const int dia : {1, 7}) {
            auto horario = Novo<LimiteDifED>();
            horario->NroIntEquip = nroIntEquip;
            horario->Dia = static_cast<std::uint8_t>(dia);
            horario->HoraInicio = 0;
            horario->HoraFim = 600;
            horario->VelocPerm = std::int16_t{0};
            horario->VelocMin = std::int16_t{0};
            horario->Ativo = std::uint8_t{1};
            horario->TipoLimite = std::uint8_t{2};
            Acrescenta(lista->ListaLimiteDif, horario);
        }
        Pede(*m_Sessao, "alteraListaLimitesDif", lista);
    }

    Ref<SessaoServico> m_Sessao;
    std::map<std::int32_t, ListaDe<LogradouroED>> m_Ruas; // by municipality
    const ClienteDaAmostra &m_Cliente;
    Data m_Hoje;
    Sorteio m_Sorteio;
};

// The same streets in each municipality, with postal codes of its own.
std::string TabelaDeRuas()
{
    const std::vector<LinhaDeDados> vias = LeTabelaDeDados("vias.tsv");
    std::string tabela = "município\tnome\tbairro\tCEP\n";
    for (const ClienteDaAmostra &cliente : ClientesDaAmostra()) {
        std::int32_t cep = cliente.PrimeiroCep;
        for (const std::int32_t municipio : cliente.Municipios) {
            cep += 20000;
            for (std::size_t via = 0; via < vias.size(); ++via) {
                tabela += CStr(municipio) + "\t" + vias[via].at(0) + " " + vias[via].at(1) + "\t" + vias[via].at(2) +
                          "\t" + Format(CDbl(cep + 10 * static_cast<std::int32_t>(via)), "00000000") + "\n";
            }
        }
    }
    return tabela;
}

Ref<SessaoServico> Entra(Servicos &servicos, const std::string &usuario)
{
    std::string recusa;
    std::int32_t espera = 0;
    const Ref<SessaoServico> sessao = servicos.Entra(usuario, SenhaDaAmostra, "amostra", recusa, espera);
    if (sessao.Nada()) {
        throw Falha(NumeroFalha::ErroInterno, "Amostra", "A amostra não pôde ser criada: " + recusa);
    }
    return sessao;
}

} // namespace

void CadastraUsuariosDaAmostra(Servicos &servicos)
{
    for (const ClienteDaAmostra &cliente : ClientesDaAmostra()) {
        servicos.CadastraCliente(cliente.Cadastro);
    }
    const std::vector<std::string> todas = {"", "I", "A", "E"};
    const std::vector<std::string> consulta = {""};
    servicos.CadastraUsuario(
        {100, Administradora, "Marta Farias", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, SenhaDaAmostra,
        {}, {"U", "T", "C"});
    servicos.CadastraUsuario({101, "ana", "Ana Bittencourt", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
                             SenhaDaAmostra, todas);
    servicos.CadastraUsuario({102, "bruno", "Bruno Azevedo", 1, "Autoridade Estadual de Trânsito", "Engenharia", 0},
                             SenhaDaAmostra, consulta);
    servicos.CadastraUsuario({103, "carla", "Carla Nunes", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
                             SenhaDaAmostra, {});
    servicos.CadastraUsuario(
        {104, "davi", "Davi Conceição", 1, "Autoridade Estadual de Trânsito", "Fiscalização", PortoAlegre},
        SenhaDaAmostra, todas);
    servicos.CadastraUsuario({201, "elisa", "Elisa Möller", 2, "Autoridade Municipal de Trânsito", "Operações", 0},
                             SenhaDaAmostra, todas);
    servicos.CadastraUsuario({202, "fabio", "Fábio Peçanha", 2, "Autoridade Municipal de Trânsito", "Eletrônica", 0},
                             SenhaDaAmostra, consulta);
    servicos.CadastraUsuario(
        {301, "gilda", "Gilda Sant'Anna", 3, "Autoridade das Estradas de Rodagem", "Rodovias Norte", 0}, SenhaDaAmostra,
        todas);
}

void PreencheAmostra(Servicos &servicos, Data hoje, const std::function<void(double)> &progresso)
{
    const Data dia{std::floor(hoje.Valor)};
    auto ruas = Novo<ImportacaoED>();
    ruas->Conteudo = TabelaDeRuas();
    Pede(*Entra(servicos, Administradora), "importaLogradouros", ruas, "AdministracaoRN");
    int feitos = 0;
    for (const ClienteDaAmostra &cliente : ClientesDaAmostra()) {
        Preenchimento preenchimento(Entra(servicos, cliente.Usuario), cliente, dia,
                                    static_cast<std::uint32_t>(2026 + cliente.Cadastro.CodCliente));
        for (int numero = 0; numero < EquipamentosPorCliente; ++numero) {
            preenchimento.Equipamento(numero);
            progresso(static_cast<double>(++feitos) /
                      static_cast<double>(ClientesDaAmostra().size() * EquipamentosPorCliente));
        }
    }
}

} // namespace mesa
