#include "tests/windows/travessia/MembrosDoHost.h"

#include "tests/support/AplicacaoRoteirizada.h"
#include "windows/automation/Embrulho.h"

namespace nativo {
namespace {

using Operacao = bool (IRelatorios::*)(ParametrosRelatorio &);

// Eight values, of which all but the report itself go by reference.
void Imprime(IRelatorios &relatorios, Chamada &chamada, Operacao operacao)
{
    auto aParam = chamada.Le<std::vector<std::string>>(1);
    auto b1 = chamada.Le<bool>(2);
    auto n1 = chamada.Le<std::uint8_t>(3);
    auto b2 = chamada.Le<bool>(4);
    auto o1 = chamada.Le<Ref<Objeto>>(5);
    auto s1 = chamada.Le<std::string>(6);
    auto o2 = chamada.Le<Ref<Objeto>>(7);
    ParametrosRelatorio parametros{chamada.Le<Valor>(0), aParam, b1, n1, b2, o1, s1, o2};
    const auto devolve = [&] {
        chamada.Devolve(1, aParam);
        chamada.Devolve(2, b1);
        chamada.Devolve(3, n1);
        chamada.Devolve(4, b2);
        chamada.Devolve(5, o1);
        chamada.Devolve(6, s1);
        chamada.Devolve(7, o2);
    };
    try {
        const bool imprimiu = (relatorios.*operacao)(parametros);
        devolve();
        chamada.Responde(imprimiu);
    } catch (const Falha &) {
        devolve();
        throw;
    }
}

void OfereceRelatorios()
{
    OfereceMembros<IRelatorios>([](Membros<IRelatorios> &m) {
        const std::vector<std::string> argumentos{"vRelatorio", "aParam", "b1", "n1", "b2", "o1", "s1", "o2"};
        m.Escrita("PathRPT", &IRelatorios::DefinePathRPT);
        m.Escrita("PathMDB", &IRelatorios::DefinePathMDB);
        m.Escrita("CurrentRecordSet", &IRelatorios::DefineCurrentRecordSet);
        m.Metodo("Imprimir", 8, argumentos,
                 [](IRelatorios &r, Chamada &chamada) { Imprime(r, chamada, &IRelatorios::Imprimir); });
        m.Metodo("ImprimirDesigner", 8, argumentos,
                 [](IRelatorios &r, Chamada &chamada) { Imprime(r, chamada, &IRelatorios::ImprimirDesigner); });
    });
}

} // namespace

void OfereceAplicacao()
{
    OfereceMembros<ZTPRoteirizado>([](Membros<ZTPRoteirizado> &) {});
    OfereceMembros<IFormMDI>([](Membros<IFormMDI> &m) {
        m.Leitura("AutoShowChildren", &IFormMDI::AutoShowChildren);
        m.Leitura("objZTP", &IFormMDI::objZTP);
        m.Leitura("PossuiJanelaEnviaRecebe", &IFormMDI::PossuiJanelaEnviaRecebe);
        m.Leitura("ScaleWidth", &IFormMDI::ScaleWidth);
        m.Leitura("ScaleHeight", &IFormMDI::ScaleHeight);
        m.Leitura("Left", &IFormMDI::Left);
        m.Leitura("Top", &IFormMDI::Top);
        m.Leitura("Width", &IFormMDI::Width);
        m.Leitura("Height", &IFormMDI::Height);
        m.Metodo("MsgEnviaRecebe", &IFormMDI::MsgEnviaRecebe, {"sMensagem"});
        m.Metodo("AbrirEnviaRecebe", &IFormMDI::AbrirEnviaRecebe);
        m.Metodo("FecharEnviaRecebe", &IFormMDI::FecharEnviaRecebe, {"bFecha"});
    });
    OfereceMembros<IoAppEXE>([](Membros<IoAppEXE> &m) {
        m.Leitura("Title", &IoAppEXE::Title);
        m.Leitura("Path", &IoAppEXE::Path);
        m.Leitura("ProductName", &IoAppEXE::ProductName);
    });
    OfereceMembros<IcGlobal>([](Membros<IcGlobal> &m) {
        m.Metodo("MontaEstruturaMenus", &IcGlobal::MontaEstruturaMenus, {"sTool", "sComponente"});
        m.Metodo("gsubSetaAutoModuloAtivo", &IcGlobal::gsubSetaAutoModuloAtivo, {"sComponente"});
        m.Metodo("PegaAutoModulo", &IcGlobal::PegaAutoModulo, {"sNome"});
        m.Metodo("gfunRetornaAutoModulo", &IcGlobal::gfunRetornaAutoModulo, {"sNome"});
    });
    OfereceMembros<IObjInterface>([](Membros<IObjInterface> &m) {
        m.Metodo("MostraJanela", &IObjInterface::MostraJanela, {"frm", "iModal", "frmDono", "iDepurar", "frmClick"});
        m.Leitura("pTrataBD", &IObjInterface::pTrataBD);
    });
    OfereceMembros<ICFunGen>([](Membros<ICFunGen> &m) {
        m.Metodo("SetaTituloAvisos", &ICFunGen::SetaTituloAvisos, {"sTitulo"});
        m.Escrita("AppTitle", &ICFunGen::DefineAppTitle);
    });
    OfereceMembros<IAjuda>([](Membros<IAjuda> &m) {
        m.Metodo("TrataAjuda2", &IAjuda::TrataAjuda2, {"oApp", "sTopico"});
    });
    OfereceMembros<IAMRegistro>([](Membros<IAMRegistro> &m) {
        m.Metodo("RegistraAM", &IAMRegistro::RegistraAM, {"sComponente", "sClasse", "vNomeAPP"}, 1);
        m.Metodo("DesregistraAM", &IAMRegistro::DesregistraAM, {"sComponente", "vNomeAPP"}, 1);
    });
    OfereceRelatorios();
    OfereceMembros<HostServices>([](Membros<HostServices> &m) {
        m.Metodo("CriaAMRegistro", &HostServices::CriaAMRegistro);
        m.Metodo("CriaAMEditMenu", &HostServices::CriaAMEditMenu);
        m.Metodo("CriaRelatorios", &HostServices::CriaRelatorios);
        m.Metodo("CriaAjuda", &HostServices::CriaAjuda);
        m.Metodo("CriaCFunGen", &HostServices::CriaCFunGen);
        m.Metodo("CriaMensagem", &HostServices::CriaMensagem);
        m.Metodo("CriaDadosVor", &HostServices::CriaDadosVor);
        m.Metodo("CriaDiretorios", &HostServices::CriaDiretorios);
        m.Metodo("CriaObjGlobalVor", &HostServices::CriaObjGlobalVor);
        m.Metodo("CriaDocumentoPDF", &HostServices::CriaDocumentoPDF);
    });
}

} // namespace nativo
