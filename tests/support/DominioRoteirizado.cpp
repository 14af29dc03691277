#include "tests/support/DominioRoteirizado.h"

#include "controls/PreparaDetalhes.h"
#include "host/Conversoes.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

class Orgao : public IOrgao {
  public:
    Orgao(RefRegistro registro, std::int32_t codCliente) : m_Registro(std::move(registro)), m_CodCliente(codCliente) {}
    std::string_view NomeTipo() const override { return "Orgao"; }
    std::int32_t CodCliente() override { return m_Registro->Le("Orgao.CodCliente").Resultado(m_CodCliente); }

  private:
    RefRegistro m_Registro;
    std::int32_t m_CodCliente;
};

class CredencialRoteirizada : public ICredencial {
  public:
    CredencialRoteirizada(RefRegistro registro, std::int32_t credencial, std::int32_t codMunic)
        : m_Registro(std::move(registro)),
          m_Credencial(credencial),
          m_CodMunic(codMunic)
    {
    }
    std::string_view NomeTipo() const override { return "Credencial"; }
    std::int32_t Credencial() override { return m_Registro->Le("Credencial.Credencial").Resultado(m_Credencial); }
    std::int32_t CodMunic() override { return m_Registro->Le("Credencial.CodMunic").Resultado(m_CodMunic); }

  private:
    RefRegistro m_Registro;
    std::int32_t m_Credencial;
    std::int32_t m_CodMunic;
};

void EscolhePrimeiro(const Ref<IztCombo> &combo)
{
    if (combo->NroItens() > 0) {
        combo->DefineIndiceAtual(0);
    }
}

} // namespace

void MensagemRoteirizada::DefineTitulo(const std::string &valor)
{
    m_Registro->Escreve("goMensagem.Titulo", valor);
    m_Titulo = valor;
}

std::string MensagemRoteirizada::FormataData(std::int32_t numero, std::int16_t reservado)
{
    const auto linha = m_Registro->Chama("goMensagem.FormataData", numero, reservado);
    std::string texto;
    if (numero != 0) {
        texto = Format(DataDe(numero % 100, numero / 100 % 100, numero / 10000), "dd/mm/yyyy");
    }
    return linha.Resultado(texto);
}

std::string MensagemRoteirizada::FormataHora(std::int32_t numero, std::int16_t reservado)
{
    return m_Registro->Chama("goMensagem.FormataHora", numero, reservado)
        .Resultado(Format(static_cast<double>(numero), "00:00:00"));
}

void MensagemRoteirizada::ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle)
{
    m_Registro->Chama("goMensagem.ExibeMensagem", texto, controle);
    m_Dominio->Avisos.push_back({texto, controle ? TextoLog(controle) : "", m_Titulo});
    if (controle) {
        IgnoraErro([&] { controle->SetFocus(); });
    }
}

void MensagemRoteirizada::PreparaDetalhes(const Ref<IForm> &form)
{
    m_Registro->Chama("goMensagem.PreparaDetalhes", form);
    ::PreparaDetalhes(form);
}

void MensagemRoteirizada::ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                                    const std::string &fonte, const std::string &titulo)
{
    m_Registro->Chama("goMensagem.ExibeErro", contexto, numero, descricao, fonte, titulo);
    m_Dominio->Erros.push_back({contexto, numero, descricao, fonte, titulo});
}

Bytes MensagemRoteirizada::TextoParaBytes(const std::string &texto)
{
    m_Registro->ChamaTexto("goMensagem.TextoParaBytes", std::to_string(texto.size()) + " bytes");
    const auto octeto = [&](std::size_t onde) {
        return onde < texto.size() ? static_cast<std::uint8_t>(texto[onde]) : std::uint8_t{0};
    };
    const auto continua = [&](std::size_t onde) { return (octeto(onde) & 0xC0) == 0x80; };
    Bytes bytes;
    for (std::size_t onde = 0; onde < texto.size(); ++onde) {
        const std::uint8_t inicial = octeto(onde);
        if (inicial < 0xC2 || !continua(onde + 1)) {
            bytes.push_back(inicial);
            continue;
        }
        bytes.push_back(inicial <= 0xC3 ? static_cast<std::uint8_t>((inicial << 6) | (octeto(onde + 1) & 0x3F))
                                        : std::uint8_t{'?'});
        while (continua(onde + 1)) {
            ++onde;
        }
    }
    return bytes;
}

void DadosVorRoteirizado::Inicializa(const Ref<IObjInterface> &objInterface)
{
    m_Registro->Chama("goDadosVor.Inicializa", objInterface);
}

void DadosVorRoteirizado::Finaliza()
{
    m_Registro->Chama("goDadosVor.Finaliza");
}

Ref<IOrgao> DadosVorRoteirizado::ObtemOrgao()
{
    m_Registro->Chama("goDadosVor.ObtemOrgao");
    return m_Registro->Vigia(Ref<IOrgao>(Novo<Orgao>(m_Registro, m_Dominio->CodCliente)));
}

void DadosVorRoteirizado::PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t reservado1,
                                            std::int32_t reservado2)
{
    m_Registro->Chama("goDadosVor.PreencheRejeicoes", combo, reservado1, reservado2);
    combo->Limpa();
    for (const auto &[texto, numero] : m_Dominio->Rejeicoes) {
        combo->AdicionaItem(texto + "|" + std::to_string(numero));
    }
}

std::string DadosVorRoteirizado::DirLayouts()
{
    return m_Registro->Chama("goDadosVor.DirLayouts").Resultado(m_Dominio->DirLayouts);
}

void DadosVorRoteirizado::PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos,
                                             bool escolhePrimeiro)
{
    m_Registro->Chama("goDadosVor.PreencheTipoAgente", combo, trabFoto, comTodos, escolhePrimeiro);
    combo->Limpa();
    if (comTodos) {
        combo->AdicionaItem("Todos|0");
    }
    for (const auto &tipo : m_Dominio->TiposMedidor) {
        if (tipo.TrabFoto == trabFoto) {
            combo->AdicionaItem(tipo.Texto + "|" + std::to_string(tipo.Codigo));
        }
    }
    if (escolhePrimeiro) {
        EscolhePrimeiro(combo);
    }
}

void DadosVorRoteirizado::PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto,
                                            bool comTodos, bool escolhePrimeiro)
{
    m_Registro->Chama("goDadosVor.PreencheTipoEquip", combo, tipoAgente, trabFoto, comTodos, escolhePrimeiro);
    combo->Limpa();
    if (comTodos) {
        combo->AdicionaItem("Todos|T");
    }
    std::set<std::string> postos;
    for (const auto &tipo : m_Dominio->TiposEquipamento) {
        if (tipo.TrabFoto == trabFoto && (tipoAgente == 0 || tipo.TipoMedidor == tipoAgente) &&
            postos.insert(tipo.Codigo).second) {
            combo->AdicionaItem(tipo.Texto + "|" + tipo.Codigo);
        }
    }
    if (escolhePrimeiro) {
        EscolhePrimeiro(combo);
    }
}

bool DadosVorRoteirizado::EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t reservado)
{
    const auto linha = m_Registro->Chama("goDadosVor.EnviaDocumento", caminho, nroDocumento, reservado);
    const ArquivosEmMemoria &arquivos = m_Plataforma.Alvo()->Arquivos;
    const bool sucesso = m_Dominio->AceitaEnvio && arquivos.Existe(caminho);
    if (sucesso) {
        nroDocumento = ++m_Dominio->UltimoDocumento;
        m_Dominio->Documentos[nroDocumento] = arquivos.Conteudo(caminho);
        linha.Acrescenta(" -> documento " + CStr(nroDocumento));
    }
    return linha.Resultado(sucesso);
}

bool DadosVorRoteirizado::RecebeDocumento(double nroDocumento, Bytes &bytes, bool reservado)
{
    const auto linha = m_Registro->Chama("goDadosVor.RecebeDocumento", nroDocumento, reservado);
    const auto documento = m_Dominio->Documentos.find(nroDocumento);
    const bool sucesso = m_Dominio->AceitaRecebimento && documento != m_Dominio->Documentos.end();
    if (sucesso) {
        bytes = documento->second;
    }
    return linha.Resultado(sucesso);
}

std::string DiretoriosRoteirizados::ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio)
{
    return m_Registro->Chama("goDiretorios.ObtemDiretorio", codigo, subdiretorio).Resultado(m_Dominio->DirTemporarios);
}

void ObjGlobalVorRoteirizado::InicializaSessao(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA,
                                               const Ref<IoAppEXE> &oAppEXE, const Ref<Objeto> &reservado)
{
    m_Registro->Chama("ObjGlobalVor.InicializaSessao", objMTM, objSCA, oAppEXE, reservado);
}

Ref<ICredencial> ObjGlobalVorRoteirizado::ObtemCredencial()
{
    m_Registro->Chama("ObjGlobalVor.ObtemCredencial");
    return m_Registro->Vigia(
        Ref<ICredencial>(Novo<CredencialRoteirizada>(m_Registro, m_Dominio->Credencial, m_Dominio->CodMunic)));
}
