#include "tests/windows/travessia/MembrosDoHost.h"

#include "host/IServicos.h"
#include "windows/automation/Embrulho.h"

namespace nativo {
namespace {

// A control or none; one that is left out is none.
void ExibeMensagem(IMensagem &mensagem, Chamada &chamada)
{
    const auto controle = chamada.Le<std::optional<Ref<IFocavel>>>(1);
    mensagem.ExibeMensagem(chamada.Le<std::string>(0), controle.value_or(nullptr));
}

void OfereceDadosVor()
{
    OfereceMembros<IDadosVor>([](Membros<IDadosVor> &m) {
        m.Metodo("Inicializa", &IDadosVor::Inicializa, {"ObjInterface"});
        m.Metodo("Finaliza", &IDadosVor::Finaliza);
        m.Metodo("ObtemOrgao", &IDadosVor::ObtemOrgao);
        m.Metodo("PreencheRejeicoes", &IDadosVor::PreencheRejeicoes, {"cbo", "lReservado1", "lReservado2"});
        m.Leitura("DirLayouts", &IDadosVor::DirLayouts);
        m.Metodo("PreencheTipoAgente", &IDadosVor::PreencheTipoAgente,
                 {"cbo", "bTrabFoto", "bComTodos", "bEscolhePrimeiro"});
        m.Metodo("PreencheTipoEquip", &IDadosVor::PreencheTipoEquip,
                 {"cbo", "iTipoAgente", "bTrabFoto", "bComTodos", "bEscolhePrimeiro"});
        m.Metodo("EnviaDocumento", &IDadosVor::EnviaDocumento, {"sCaminho", "dNroDocumento", "lReservado"});
        m.Metodo("RecebeDocumento", &IDadosVor::RecebeDocumento, {"dNroDocumento", "aBytes", "bReservado"});
    });
    OfereceMembros<IOrgao>([](Membros<IOrgao> &m) { m.Leitura("CodCliente", &IOrgao::CodCliente); });
}

} // namespace

void OfereceServicos()
{
    OfereceMembros<IMensagem>([](Membros<IMensagem> &m) {
        m.Escrita("Titulo", &IMensagem::DefineTitulo);
        m.Metodo("FormataData", &IMensagem::FormataData, {"lNumero", "iReservado"});
        m.Metodo("FormataHora", &IMensagem::FormataHora, {"lNumero", "iReservado"});
        m.Metodo("ExibeMensagem", 1, {"sTexto", "ctl"}, ExibeMensagem);
        m.Metodo("PreparaDetalhes", &IMensagem::PreparaDetalhes, {"frm"});
        m.Metodo("ExibeErro", &IMensagem::ExibeErro, {"sContexto", "lNumero", "sDescricao", "sFonte", "sTitulo"});
        m.Metodo("TextoParaBytes", &IMensagem::TextoParaBytes, {"sTexto"});
    });
    OfereceDadosVor();
    OfereceMembros<IDiretorios>([](Membros<IDiretorios> &m) {
        m.Metodo("ObtemDiretorio", &IDiretorios::ObtemDiretorio, {"iCodigo", "sSubdiretorio"});
    });
    OfereceMembros<IObjGlobalVor>([](Membros<IObjGlobalVor> &m) {
        m.Metodo("InicializaSessao", &IObjGlobalVor::InicializaSessao, {"objMTM", "objSCA", "oAppEXE", "oReservado"});
        m.Metodo("ObtemCredencial", &IObjGlobalVor::ObtemCredencial);
    });
    OfereceMembros<IDocumentoPDF>([](Membros<IDocumentoPDF> &m) {
        m.Escrita("ArquivoPDF", &IDocumentoPDF::DefineArquivoPDF);
        m.Metodo("Mostra", &IDocumentoPDF::Mostra, {"bModal"});
    });
}

} // namespace nativo
