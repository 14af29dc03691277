#include "desk/host/Autuacao.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "shell/ModGeral.h"

namespace mesa {

namespace {

constexpr std::int16_t TipoConsultaVigente = 1;

// Takes the file of the certificate away when the viewer did not open, which otherwise does it when it is done.
class CertificadoTemporario {
  public:
    explicit CertificadoTemporario(Ref<CVorEquip> consulta) : m_Consulta(std::move(consulta))
    {
        m_Consulta->LimpaArqTemp(); // a file that is there already would keep what it has behind the new one
    }
    CertificadoTemporario(const CertificadoTemporario &) = delete;
    CertificadoTemporario &operator=(const CertificadoTemporario &) = delete;
    ~CertificadoTemporario()
    {
        if (!Mostrado) {
            IgnoraErro([&] { m_Consulta->LimpaArqTemp(); });
        }
    }

    bool Mostrado = false;

  private:
    Ref<CVorEquip> m_Consulta;
};

} // namespace

void Autuacao::MudaPergunta()
{
    m_Consulta = nullptr;
    m_Frase.clear();
    m_Respostas.assign(NroRespostas, "");
    m_NroAfericao.clear();
}

void Autuacao::Seleciona(const PerguntaDaAutuacao &pergunta)
{
    Pergunta(pergunta, &CVorEquip::SelecionaEquipamento, "Equipamento selecionado.",
             "Nenhum equipamento foi selecionado.");
}

void Autuacao::Busca(const PerguntaDaAutuacao &pergunta)
{
    Pergunta(pergunta, &CVorEquip::BuscaEquipamento, "Equipamento encontrado.", "Equipamento não encontrado.");
}

void Autuacao::Pergunta(const PerguntaDaAutuacao &pergunta, Procura procura, const char *achou, const char *naoAchou)
{
    MudaPergunta();
    const Ref<CVorEquip> consulta = m_CriaConsulta();
    if (!(*consulta.*procura)(pergunta.Codigo, pergunta.Tipo, pergunta.DataDaInfracao)) {
        m_Frase = naoAchou;
        return;
    }
    const Data verificacao = consulta->DtVerifInmetro();
    const std::string numero =
        NroDaAfericaoDe(*consulta, pergunta.DataDaInfracao.Vazia() ? verificacao : pergunta.DataDaInfracao);
    m_Consulta = consulta;
    m_Frase = achou;
    m_Respostas = {CStr(consulta->NroIntEquip()),
                   consulta->Modelo(),
                   consulta->Codigo(),
                   CStr(consulta->VelocPerm()),
                   consulta->NroInmetro(),
                   consulta->MarcaInmetro(),
                   verificacao.Vazia() ? "" : Format(verificacao, "dd/mm/yyyy")};
    m_NroAfericao = numero;
}

// The answer does not tell it: the registry is asked for the calibration in force once more. Somebody else may have
// changed it meanwhile, and then it is not the one of the answer.
std::string Autuacao::NroDaAfericaoDe(const CVorEquip &consulta, Data dia)
{
    if (consulta.DtVerifInmetro().Vazia()) {
        return "";
    }
    const Ref<AfericaoED> vigente = gFunConsultaAfericaoVigente(consulta.NroIntEquip(), dia, TipoConsultaVigente);
    const bool aMesma = vigente && vigente->Numero.Valor() == consulta.NroInmetro() &&
                        vigente->Marca.Valor() == consulta.MarcaInmetro() &&
                        vigente->DataVerificacao.Valor() == consulta.DtVerifInmetro();
    return aMesma ? CStr(vigente->NroIntAfericao.Valor()) : "";
}

void Autuacao::Imprime()
{
    if (!m_Consulta) {
        m_Frase = "Antes, busque ou selecione o equipamento.";
        return;
    }
    if (m_NroAfericao.empty()) {
        m_Frase = m_Consulta->DtVerifInmetro().Vazia() ? "Não há aferição na resposta: pergunte com a data da infração."
                                                       : "Informe o número da aferição.";
        return;
    }
    CertificadoTemporario temporario(m_Consulta);
    m_Frase = "O certificado não foi aberto.";
    temporario.Mostrado =
        m_Consulta->ImpCertificadoAfericaoEquipto(CLng(m_NroAfericao), m_Consulta->Codigo(), "Consulta para autuação");
    if (temporario.Mostrado) {
        m_Frase = "Certificado aberto.";
    }
}

std::optional<PedidoDeDossie> Autuacao::Dossie(const PerguntaDaAutuacao &pergunta)
{
    if (!m_Consulta && Trim(pergunta.Codigo).empty()) {
        m_Frase = "Antes, informe o código do equipamento, ou selecione-o.";
        return std::nullopt;
    }
    if (pergunta.DataDaInfracao.Vazia()) {
        m_Frase = "Para o dossiê, pergunte com a data da infração.";
        return std::nullopt;
    }
    if (!m_Consulta) {
        return PedidoDeDossie{0, Trim(pergunta.Codigo), pergunta.DataDaInfracao};
    }
    return PedidoDeDossie{m_Consulta->NroIntEquip(), m_Consulta->Codigo(), pergunta.DataDaInfracao};
}

} // namespace mesa
