#include "tests/windows/travessia/MembrosDoHost.h"

#include "host/ISessao.h"
#include "windows/automation/Colecoes.h"
#include "windows/automation/Embrulho.h"

namespace nativo {
namespace {

// What a host keeps without anybody calling it.
template <class C> void OfereceSemMembros()
{
    OfereceMembros<C>([](Membros<C> &) {});
}

void OfereceBanco()
{
    OfereceMembros<IMDB>([](Membros<IMDB> &m) {
        m.Leitura("Name", &IMDB::Name);
        m.Metodo("OpenRecordset", &IMDB::OpenRecordset, {"sSQL", "iTipo", "vOpcoes", "vTrava"}, 2);
    });
    OfereceMembros<ICursor>([](Membros<ICursor> &m) {
        m.Leitura("EOF", &ICursor::EOF_);
        m.Leitura("RecordCount", &ICursor::RecordCount);
        m.Metodo("Fields", &ICursor::Fields, {"sNome"});
        m.Metodo("MoveNext", &ICursor::MoveNext);
        m.Metodo("Close", &ICursor::Close);
    });
    OfereceMembros<IFields>([](Membros<IFields> &m) {
        m.Leitura("Value", &IFields::Value);
        m.Padrao("Value");
    });
}

void OfereceTransacoes()
{
    OfereceMembros<ITransacao>([](Membros<ITransacao> &m) {
        m.Propriedade("sWindow", &ITransacao::sWindow, &ITransacao::DefinesWindow);
        m.Propriedade("sTransacao", &ITransacao::sTransacao, &ITransacao::DefinesTransacao);
        m.Propriedade("sSistema", &ITransacao::sSistema, &ITransacao::DefinesSistema);
        m.Propriedade("sJob", &ITransacao::sJob, &ITransacao::DefinesJob);
        m.Propriedade("sPrograma", &ITransacao::sPrograma, &ITransacao::DefinesPrograma);
        m.Propriedade("bGCI", &ITransacao::bGCI, &ITransacao::DefinebGCI);
        m.Propriedade("SisJava", &ITransacao::SisJava, &ITransacao::DefineSisJava);
        m.Propriedade("Cin", &ITransacao::Cin, &ITransacao::DefineCin);
        m.Propriedade("Cout", &ITransacao::Cout, &ITransacao::DefineCout);
    });
}

} // namespace

void OfereceSessao()
{
    OfereceMembros<IobjMTM>([](Membros<IobjMTM> &m) {
        m.Metodo("CreateQMR", &IobjMTM::CreateQMR);
        m.Leitura("ClienteLogado", &IobjMTM::ClienteLogado);
        m.Leitura("SetorLogado", &IobjMTM::SetorLogado);
        m.Metodo("ObtemGateway", &IobjMTM::ObtemGateway);
        m.Leitura("CWebComm", &IobjMTM::CWebComm);
        m.Metodo("EnviaTransacao1", &IobjMTM::EnviaTransacao1, {"oTrans", "b1"});
        m.Metodo("EnviaTransacao2", &IobjMTM::EnviaTransacao2, {"oTrans", "b1"});
        m.Metodo("EnviaTransacaoH90", &IobjMTM::EnviaTransacaoH90, {"oTrans", "b1", "b3"});
        m.Metodo("EnviaRajada1", &IobjMTM::EnviaRajada1, {"oTrans", "b1"});
        m.Metodo("EnviaRajada2", &IobjMTM::EnviaRajada2, {"oTrans", "aDados"});
        m.Metodo("EnviaRajadaH90", &IobjMTM::EnviaRajadaH90, {"oTrans", "aDados", "b2"});
    });
    OfereceMembros<IobjSCA>([](Membros<IobjSCA> &m) {
        m.Leitura("Logado", &IobjSCA::Logado);
        m.Metodo("PossuiPerm2", &IobjSCA::PossuiPerm2, {"sSistema", "sObjeto", "sAcao"});
    });
    OfereceMembros<IQMR>([](Membros<IQMR> &m) {
        m.Metodo("CreateNewTrataBD", &IQMR::CreateNewTrataBD);
        m.Leitura("Sessao", &IQMR::Sessao);
    });
    OfereceMembros<ITrataBD>([](Membros<ITrataBD> &m) {
        m.Leitura("pQMR", &ITrataBD::pQMR);
        m.Metodo("AbreZTBanco", &ITrataBD::AbreZTBanco, {"iBanco"});
        m.Metodo("CreateCFisJur", &ITrataBD::CreateCFisJur);
        m.Metodo("CreateCEndereco", &ITrataBD::CreateCEndereco);
        m.Metodo("CreateCVeiGen", &ITrataBD::CreateCVeiGen);
        m.Metodo("InicializaInfoSistema", &ITrataBD::InicializaInfoSistema, {"sSistema", "iVersao"});
        m.Metodo("TabelaAlterada", &ITrataBD::TabelaAlterada, {"sTabela", "bAlterada", "bReservado", "v1", "v2"}, 2);
    });
    OfereceSemMembros<ICFisJur>();
    OfereceSemMembros<ICEndereco>();
    OfereceSemMembros<ICVeiGen>();
    OfereceMembros<IWebComm>([](Membros<IWebComm> &m) {
        m.Metodo("CriaObjetoSoap", &IWebComm::CriaObjetoSoap, {"sServico", "sComponente"});
    });
    OfereceMembros<IObjetoSoap>([](Membros<IObjetoSoap> &m) {
        m.Metodo("Metodo", &IObjetoSoap::Metodo, {"oContexto", "sMetodo", "sSistema"});
        m.Leitura("Resultado", &IObjetoSoap::Resultado);
    });
    OfereceMembros<ICredencial>([](Membros<ICredencial> &m) {
        m.Leitura("Credencial", &ICredencial::Credencial);
        m.Leitura("CodMunic", &ICredencial::CodMunic);
    });
    OfereceBanco();
    OfereceTransacoes();
}

} // namespace nativo
