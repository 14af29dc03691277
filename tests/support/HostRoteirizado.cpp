#include "tests/support/HostRoteirizado.h"

#include "controls/CommonDialog.h"
#include "controls/PreparaDetalhes.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztEndereco.h"

#include <algorithm>

HostRoteirizado::HostRoteirizado()
    : Tela(m_Registro->Vigia(Novo<PlataformaRoteirizada>(m_Registro), 1)),
      MDB(m_Registro->Vigia(Novo<BancoLocal>(m_Registro), 1)),
      objMTM(m_Registro->Vigia(Novo<SessaoRoteirizada>(m_Registro, Servicos, Ref<IMDB>(MDB.Propria())), 1)),
      objSCA(m_Registro->Vigia(Novo<AcessoRoteirizado>(m_Registro), 1)),
      oAppEXE(m_Registro->Vigia(Novo<AppEXERoteirizado>(m_Registro), 1)),
      FormMDI(m_Registro->Vigia(Novo<FormMDIRoteirizado>(m_Registro), 1)),
      cGlobal(m_Registro->Vigia(Novo<GlobalRoteirizado>(m_Registro), 1)),
      ObjInterface(m_Registro->Vigia(Novo<InterfaceRoteirizada>(m_Registro, Tela, objMTM.Propria()), 1)),
      ActBar(m_Registro->Vigia(Novo<ActBarRoteirizada>(m_Registro), 1)),
      Relatorios(m_Registro->Vigia(Novo<RelatoriosRoteirizados>(m_Registro), 1)),
      Ajuda(m_Registro->Vigia(Novo<AjudaRoteirizada>(m_Registro), 1))
{
    m_Registro->Vigia(m_Fabrica, 1);
    m_CriouControle =
        m_Fabrica->CriouControle().liga([this](const Ref<IControle> &controle) { AoCriarControle(controle); });
    Tela->Arquivos.CriaDiretorio(Dominio->DirLayouts);
    Tela->Arquivos.CriaDiretorio(Dominio->DirTemporarios);
}

std::vector<std::string> HostRoteirizado::Registro()
{
    m_ErrosVistos = Dominio->Erros.size();
    return m_Registro->Linhas();
}

std::vector<std::string> HostRoteirizado::RegistroDe(const std::vector<std::string> &prefixos)
{
    std::vector<std::string> linhas;
    for (const std::string &linha : m_Registro->Linhas()) {
        if (std::any_of(prefixos.begin(), prefixos.end(),
                        [&](const std::string &prefixo) { return linha.starts_with(prefixo); })) {
            linhas.push_back(linha);
        }
    }
    return linhas;
}

void HostRoteirizado::LimpaRegistro()
{
    m_Registro->Limpa();
}

std::int32_t HostRoteirizado::Conta(const std::string &prefixo)
{
    return static_cast<std::int32_t>(RegistroDe({prefixo}).size());
}

void HostRoteirizado::Servico(const std::string &classe, const std::string &metodo, ServicosRemotos::Operacao operacao)
{
    Servicos->Define(classe, metodo, std::move(operacao));
}

void HostRoteirizado::RecusaOperacao(const std::string &metodo, const std::string &mensagem)
{
    Servicos->Recusa(metodo, mensagem);
}

void HostRoteirizado::FalhaNaChamada(std::int32_t n, std::int32_t numero, const std::string &descricao)
{
    m_Registro->FalhaNaChamada(n, numero, descricao);
}

void HostRoteirizado::RecusaNaExecucao(std::int32_t n, const std::string &mensagem)
{
    Servicos->RecusaNaExecucao(n, mensagem);
}

void HostRoteirizado::FalhaNoPasso(std::int32_t n, std::int32_t numero, const std::string &descricao)
{
    m_Registro->FalhaNoPasso(n, numero, descricao);
}

void HostRoteirizado::FalhaEm(const std::string &nome, std::int32_t n, std::int32_t numero,
                              const std::string &descricao)
{
    m_Registro->FalhaEm(nome, n, numero, descricao);
}

const std::vector<DominioRoteirizado::CaixaErro> &HostRoteirizado::Erros()
{
    m_ErrosVistos = Dominio->Erros.size();
    return Dominio->Erros;
}

std::vector<std::string> HostRoteirizado::ErrosNovos()
{
    std::vector<std::string> textos;
    for (; m_ErrosVistos < Dominio->Erros.size(); ++m_ErrosVistos) {
        const auto &caixa = Dominio->Erros[m_ErrosVistos];
        textos.push_back(caixa.Contexto + ": " + std::to_string(caixa.Numero) + " (" + caixa.Fonte + ")");
    }
    return textos;
}

std::vector<std::string> HostRoteirizado::AvisosNovos()
{
    std::vector<std::string> textos;
    for (; m_AvisosVistos < Dominio->Avisos.size(); ++m_AvisosVistos) {
        textos.push_back(Dominio->Avisos[m_AvisosVistos].Texto);
    }
    return textos;
}

std::vector<std::string> HostRoteirizado::VerificaFim()
{
    if (m_PerdoaSobras) {
        Tela->EsqueceRoteiros();
    } else {
        ConfereSobras();
    }
    for (const std::string &tipo : m_Registro->Vivos()) {
        m_Registro->Problema("Objeto que não foi liberado: " + tipo);
    }
    return m_Registro->Problemas();
}

void HostRoteirizado::ConfereSobras()
{
    Tela->ConfereSobras();
    Tela->EsqueceRoteiros();
    for (const std::string &nome : m_Registro->FalhasPendentes()) {
        m_Registro->Problema("Falha programada que não foi disparada: " + nome);
    }
    for (const std::string &metodo : Servicos->RecusasPendentes()) {
        m_Registro->Problema("Recusa programada de uma operação que não foi chamada: " + metodo);
    }
    if (!m_Dialogos.empty()) {
        m_Registro->Problema("Diálogo de arquivo esperado que não foi mostrado");
    }
    for (std::size_t erro = m_ErrosVistos; erro < Dominio->Erros.size(); ++erro) {
        const auto &caixa = Dominio->Erros[erro];
        m_Registro->Problema("INESPERADA: caixa de erro " + std::to_string(caixa.Numero) + " " + caixa.Descricao +
                             " (" + caixa.Contexto + "; " + caixa.Fonte + ")");
    }
}

Ref<IFabricaControles> HostRoteirizado::Controles()
{
    m_Registro->Passa("Host.Controles");
    return m_Fabrica;
}

Ref<IAMRegistro> HostRoteirizado::CriaAMRegistro()
{
    return Cria<AMRegistroRoteirizado>("CriaAMRegistro");
}

Ref<IAMEditMenu> HostRoteirizado::CriaAMEditMenu()
{
    return Cria<AMEditMenuRoteirizado>("CriaAMEditMenu");
}

Ref<IRelatorios> HostRoteirizado::CriaRelatorios()
{
    return Cria<RelatoriosRoteirizados>("CriaRelatorios");
}

Ref<IAjuda> HostRoteirizado::CriaAjuda()
{
    return Cria<AjudaRoteirizada>("CriaAjuda");
}

Ref<ICFunGen> HostRoteirizado::CriaCFunGen()
{
    return Cria<CFunGenRoteirizado>("CriaCFunGen");
}

Ref<IMensagem> HostRoteirizado::CriaMensagem()
{
    return Cria<MensagemRoteirizada>("CriaMensagem", Dominio);
}

Ref<IDadosVor> HostRoteirizado::CriaDadosVor()
{
    return Cria<DadosVorRoteirizado>("CriaDadosVor", Dominio, Tela);
}

Ref<IDiretorios> HostRoteirizado::CriaDiretorios()
{
    return Cria<DiretoriosRoteirizados>("CriaDiretorios", Dominio);
}

Ref<IObjGlobalVor> HostRoteirizado::CriaObjGlobalVor()
{
    return Cria<ObjGlobalVorRoteirizado>("CriaObjGlobalVor", Dominio);
}

Ref<IDocumentoPDF> HostRoteirizado::CriaDocumentoPDF()
{
    return Cria<DocumentoPDFRoteirizado>("CriaDocumentoPDF", Visor, Tela);
}

void HostRoteirizado::AoCriarControle(const Ref<IControle> &controle)
{
    m_Registro->Passa("Controles.Cria");
    m_Registro->Vigia(controle);
    if (auto *dialogo = dynamic_cast<CommonDialog *>(controle.Ponteiro())) {
        RefFraca<CommonDialog> fraca = Eu(*dialogo);
        m_Controles.push_back(dialogo->AoMostrar().liga([this, fraca] { MostraDialogo(*fraca.Alvo()); }));
    }
    if (auto *seletor = dynamic_cast<ztClienteSetor *>(controle.Ponteiro())) {
        RefFraca<ztClienteSetor> fraca = Eu(*seletor);
        m_Controles.push_back(seletor->AoDefinirCodCliente().liga([this, fraca] { PresetaCliente(*fraca.Alvo()); }));
        m_Controles.push_back(
            seletor->AoAvisar().liga([this, fraca](const std::string &texto) { Avisa(*fraca.Alvo(), texto); }));
    }
    if (auto *campo = dynamic_cast<ztEndereco *>(controle.Ponteiro())) {
        RefFraca<Endereco> fraca = campo->EnderecoProprio();
        m_Controles.push_back(campo->EnderecoProprio()->AoSetar().liga([fraca] {
            fraca->DefineDescricao("Rua " + std::to_string(fraca->CodLogradouro()) + ", " +
                                   std::to_string(fraca->Numero()));
        }));
    }
}

void HostRoteirizado::MostraDialogo(CommonDialog &dialogo)
{
    const auto linha =
        m_Registro->Chama(dialogo.Nome() + ".ShowOpen", dialogo.Filter(), dialogo.DefaultExt(), dialogo.DialogTitle());
    std::optional<std::string> escolha = m_DialogoFixo;
    if (!m_Dialogos.empty()) {
        escolha = std::move(m_Dialogos.front());
        m_Dialogos.pop_front();
    } else if (!escolha) {
        m_Registro->Problema("INESPERADA: diálogo de arquivo " + TextoLog(dialogo.DialogTitle()));
        return;
    }
    if (escolha) {
        dialogo.Escolhe(*escolha);
    }
    linha.Acrescenta(escolha ? " -> " + TextoLog(*escolha) : " -> cancelado");
}

void HostRoteirizado::PresetaCliente(ztClienteSetor &seletor)
{
    m_Registro->Escreve(seletor.Nome() + ".CodCliente", seletor.CodCliente());
    const auto cliente = Clientes.find(seletor.CodCliente());
    if (cliente != Clientes.end()) {
        seletor.PresetaCliente(cliente->second, "");
    }
}

void HostRoteirizado::Avisa(const ztClienteSetor &seletor, const std::string &texto)
{
    m_Registro->Chama(seletor.Nome() + ".Avisa", texto);
    Dominio->Avisos.push_back({texto, seletor.Nome(), ""});
}
