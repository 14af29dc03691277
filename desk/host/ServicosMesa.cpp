#include "desk/host/ServicosMesa.h"

#include "controls/PreparaDetalhes.h"
#include "desk/host/Caminhos.h"
#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Indicador.h"
#include "services/ConteudoPdf.h"
#include "services/Disco.h"
#include "services/LayoutED.h"
#include "services/Referencias.h"
#include "shell/ModGeral.h"

#include <QByteArray>

#include <fstream>
#include <iterator>
#include <vector>

namespace mesa {

namespace {

constexpr std::int16_t MedidorTodos = 0;
constexpr std::int16_t UltimoMedidor = 3;
constexpr std::size_t PedacoDoDocumento = 262144;
constexpr std::size_t MaiorLeitura = MaiorDocumento + 1; // so that the services see the excess

bool Oferece(const TipoOferecido &tipo, std::int16_t medidor, bool trabFoto)
{
    return tipo.TrabFoto == trabFoto && (medidor == MedidorTodos || tipo.Em(medidor));
}

std::string DoisDigitos(std::int32_t numero)
{
    return Format(CDbl(numero), "00");
}

class OrgaoMesa : public IOrgao {
  public:
    explicit OrgaoMesa(std::int32_t codCliente) : m_CodCliente(codCliente) {}
    std::string_view NomeTipo() const override { return "Orgao"; }
    std::int32_t CodCliente() override { return m_CodCliente; }

  private:
    std::int32_t m_CodCliente;
};

class CredencialMesa : public ICredencial {
  public:
    explicit CredencialMesa(const Operador &operador) : m_Numero(operador.Numero), m_CodMunic(operador.CodMunic) {}
    std::string_view NomeTipo() const override { return "Credencial"; }
    std::int32_t Credencial() override { return m_Numero; }
    std::int32_t CodMunic() override { return m_CodMunic; }

  private:
    std::int32_t m_Numero;
    std::int32_t m_CodMunic;
};

} // namespace

std::string MensagemMesa::FormataData(std::int32_t numero, std::int16_t)
{
    if (numero == 0) {
        return "";
    }
    return DoisDigitos(numero % 100) + "/" + DoisDigitos(numero / 100 % 100) + "/" +
           Format(CDbl(numero / 10000), "0000");
}

std::string MensagemMesa::FormataHora(std::int32_t numero, std::int16_t)
{
    return DoisDigitos(numero / 10000) + ":" + DoisDigitos(numero / 100 % 100) + ":" + DoisDigitos(numero % 100);
}

void MensagemMesa::ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle)
{
    if (!controle) {
        m_Janelas->Informa(texto, m_Titulo); // what was done or found: nobody has to mend anything
        return;
    }
    m_Janelas->Avisa(texto, m_Titulo);
    IgnoraErro([&] { controle->SetFocus(); });
}

void MensagemMesa::PreparaDetalhes(const Ref<IForm> &form)
{
    ::PreparaDetalhes(form);
}

void MensagemMesa::ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                             const std::string &fonte, const std::string &titulo)
{
    m_Janelas->MostraErro(contexto, numero, descricao, fonte, titulo);
}

Bytes MensagemMesa::TextoParaBytes(const std::string &texto)
{
    const auto lido =
        QByteArray::fromBase64Encoding(QByteArray::fromStdString(texto), QByteArray::AbortOnBase64DecodingErrors);
    if (!lido) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    return Bytes((*lido).begin(), (*lido).end());
}

DadosVorMesa::DadosVorMesa(std::function<Ref<SessaoServico>()> sessao,
                           std::function<void(const std::string &)> mostraRecusa, std::filesystem::path layouts,
                           Ref<NomesDeDocumentos> nomes, FazComAndamento acompanha)
    : m_Sessao(std::move(sessao)),
      m_MostraRecusa(std::move(mostraRecusa)),
      m_Layouts(std::move(layouts)),
      m_Nomes(std::move(nomes)),
      m_Acompanha(std::move(acompanha))
{
}

void DadosVorMesa::Inicializa(const Ref<IObjInterface> &) {} // everything it needs came at creation

void DadosVorMesa::Finaliza() {}

Ref<IOrgao> DadosVorMesa::ObtemOrgao()
{
    return Novo<OrgaoMesa>(m_Sessao()->Operador().CodCliente);
}

void DadosVorMesa::PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t, std::int32_t)
{
    combo->Limpa();
    for (const Rejeicao &rejeicao : Referencias::Tabelas().Rejeicoes()) {
        combo->AdicionaItem(rejeicao.Nome + "|" + CStr(rejeicao.Numero));
    }
}

std::vector<std::string> DadosVorMesa::ArquivosDeLayout(SessaoServico &sessao)
{
    auto pedido = Novo<ListaLayoutsED>();
    pedido->Oferecidos = Indicador::Sim;
    Ref<Objeto> enviado = pedido;
    Valor retorno;
    std::string recusa;
    std::vector<std::string> nomes;
    if (!sessao.Executa("AdministracaoRN", "listaLayouts", enviado, retorno, recusa)) {
        throw Falha(NumeroFalha::PermissaoNegada, "DadosVor", recusa);
    }
    const ListaDe<LayoutED> layouts = retorno.Como<ListaLayoutsED>()->Layouts;
    for (std::int32_t posicao = 1; !layouts.Nada() && posicao <= layouts->Count(); ++posicao) {
        nomes.push_back(layouts->Item(posicao)->NomeLayout.Valor() + ".LAY");
    }
    return nomes;
}

std::string DadosVorMesa::DirLayouts()
{
    return CaminhoDoModulo(m_Layouts) + "\\";
}

void DadosVorMesa::PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos, bool escolhePrimeiro)
{
    combo->Limpa();
    if (comTodos) {
        combo->AdicionaItem("Todos|0");
    }
    for (std::int16_t medidor = 1; medidor <= UltimoMedidor; ++medidor) {
        for (const TipoOferecido &tipo : Referencias::Tabelas().Tipos()) {
            if (Oferece(tipo, medidor, trabFoto)) {
                combo->AdicionaItem(gFunDescrTipoAgente(medidor) + "|" + CStr(medidor));
                break;
            }
        }
    }
    if (escolhePrimeiro && combo->NroItens() > 0) {
        combo->DefineIndiceAtual(0);
    }
}

void DadosVorMesa::PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto, bool comTodos,
                                     bool escolhePrimeiro)
{
    combo->Limpa();
    if (comTodos) {
        combo->AdicionaItem("Todos|T");
    }
    for (const TipoOferecido &tipo : Referencias::Tabelas().Tipos()) {
        if (Oferece(tipo, tipoAgente, trabFoto)) {
            combo->AdicionaItem(gFunDescrEquipto(tipo.Codigo) + "|" + tipo.Codigo);
        }
    }
    if (escolhePrimeiro && combo->NroItens() > 0) {
        combo->DefineIndiceAtual(0);
    }
}

// Piece by piece: the disk may be slow. Nothing with the reason in recusa.
std::optional<Bytes> DadosVorMesa::LeArquivo(const std::string &caminho, const Segue &segue, std::string &recusa)
{
    std::ifstream arquivo(CaminhoDoSistema(caminho), std::ios::binary);
    if (!arquivo) {
        recusa = "O arquivo '" + caminho + "' não pôde ser aberto.";
        return std::nullopt;
    }
    Bytes bytes;
    Bytes pedaco(PedacoDoDocumento);
    while (arquivo && bytes.size() < MaiorLeitura) {
        if (!segue(static_cast<double>(bytes.size()) / MaiorLeitura, "Lendo o arquivo")) {
            recusa = "O envio foi cancelado: nada foi gravado.";
            return std::nullopt;
        }
        arquivo.read(reinterpret_cast<char *>(pedaco.data()), static_cast<std::streamsize>(pedaco.size()));
        if (arquivo.bad()) {
            throw Falha(NumeroFalha::ErroDeAcesso);
        }
        bytes.insert(bytes.end(), pedaco.begin(), pedaco.begin() + arquivo.gcount());
    }
    return bytes;
}

bool DadosVorMesa::EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t)
{
    bool enviou = false;
    std::string recusa;
    m_Acompanha("O documento está sendo enviado.", /*cancelavel=*/true, [&](const Segue &segue) {
        if (const auto bytes = LeArquivo(caminho, segue, recusa)) {
            const Ref<SessaoServico> sessao = m_Sessao();
            const Acompanhamento acompanhamento(*sessao, segue);
            enviou = sessao->GuardaDocumento(*bytes, nroDocumento, recusa);
        }
    });
    if (!enviou) {
        m_MostraRecusa(recusa);
    }
    return enviou;
}

bool DadosVorMesa::RecebeDocumento(double nroDocumento, Bytes &bytes, bool)
{
    bool recebeu = false;
    std::string recusa;
    m_Acompanha("O documento está sendo lido.", /*cancelavel=*/true, [&](const Segue &segue) {
        const Ref<SessaoServico> sessao = m_Sessao();
        const Acompanhamento acompanhamento(*sessao, segue);
        recebeu = sessao->LeDocumento(nroDocumento, bytes, recusa);
    });
    if (!recebeu) {
        m_MostraRecusa(recusa);
        return false;
    }
    m_Nomes->Recebeu(nroDocumento);
    return true;
}

DiretoriosMesa::DiretoriosMesa(std::filesystem::path temporarios) : m_Temporarios(std::move(temporarios))
{
    FazPastaPrivada(m_Temporarios);
}

std::string DiretoriosMesa::ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio)
{
    if (codigo != CodigoTemporarios || !subdiretorio.empty()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return CaminhoDoModulo(m_Temporarios) + "\\";
}

void ObjGlobalVorMesa::InicializaSessao(const Ref<IobjMTM> &, const Ref<IobjSCA> &, const Ref<IoAppEXE> &,
                                        const Ref<Objeto> &)
{
}

Ref<ICredencial> ObjGlobalVorMesa::ObtemCredencial()
{
    return Novo<CredencialMesa>(m_Sessao()->Operador());
}

} // namespace mesa
