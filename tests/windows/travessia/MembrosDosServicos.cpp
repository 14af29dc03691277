#include "tests/windows/travessia/MembrosDoHost.h"

#include "host/IServicos.h"
#include "tests/windows/travessia/ControleDistante.h"
#include "windows/automation/Embrulho.h"

namespace nativo {
namespace {

// A control or none; one that is left out is none. The host gives it the focus by its name.
void ExibeMensagem(IMensagem &mensagem, Chamada &chamada)
{
    Ref<IFocavel> focavel = chamada.Le<std::optional<Ref<IFocavel>>>(1).value_or(nullptr);
    if (dynamic_cast<IControle *>(focavel.Ponteiro()) != nullptr) {
        focavel = Novo<ControleDistante<IControle>>(LeObjeto(chamada.Argumento(1)));
    }
    mensagem.ExibeMensagem(chamada.Le<std::string>(0), focavel);
}

// The combo that a service fills.
Ref<IztCombo> Combo(const Chamada &chamada)
{
    const Com<IDispatch> combo = LeObjeto(chamada.Argumento(0));
    return combo ? Ref<IztCombo>(Novo<ComboDistante>(combo)) : nullptr;
}

void OfereceDadosVor()
{
    OfereceMembros<IDadosVor>([](Membros<IDadosVor> &m) {
        m.Metodo("Inicializa", &IDadosVor::Inicializa, {"ObjInterface"});
        m.Metodo("Finaliza", &IDadosVor::Finaliza);
        m.Metodo("ObtemOrgao", &IDadosVor::ObtemOrgao);
        m.Metodo("PreencheRejeicoes", 3, {"cbo", "lReservado1", "lReservado2"}, [](IDadosVor &d, Chamada &chamada) {
            d.PreencheRejeicoes(Combo(chamada), chamada.Le<std::int32_t>(1), chamada.Le<std::int32_t>(2));
        });
        m.Leitura("DirLayouts", &IDadosVor::DirLayouts);
        m.Metodo("PreencheTipoAgente", 4, {"cbo", "bTrabFoto", "bComTodos", "bEscolhePrimeiro"},
                 [](IDadosVor &d, Chamada &chamada) {
                     d.PreencheTipoAgente(Combo(chamada), chamada.Le<bool>(1), chamada.Le<bool>(2),
                                          chamada.Le<bool>(3));
                 });
        m.Metodo("PreencheTipoEquip", 5, {"cbo", "iTipoAgente", "bTrabFoto", "bComTodos", "bEscolhePrimeiro"},
                 [](IDadosVor &d, Chamada &chamada) {
                     d.PreencheTipoEquip(Combo(chamada), chamada.Le<std::int16_t>(1), chamada.Le<bool>(2),
                                         chamada.Le<bool>(3), chamada.Le<bool>(4));
                 });
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
