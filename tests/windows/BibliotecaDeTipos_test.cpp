#include "tests/windows/ComponenteDeTeste.h"
#include "windows/automation/Falhas.h"
#include "windows/automation/Texto16.h"

#include <oleauto.h>

#include <map>
#include <string>
#include <vector>

namespace nativo {
namespace {

std::string Texto(BSTR texto)
{
    std::string lido = texto == nullptr ? std::string() : ParaUtf8({texto, SysStringLen(texto)});
    SysFreeString(texto);
    return lido;
}

std::string NomeDe(ITypeInfo &tipo, MEMBERID membro = MEMBERID_NIL)
{
    BSTR nome = nullptr;
    Exige(tipo.GetDocumentation(membro, &nome, nullptr, nullptr, nullptr));
    return Texto(nome);
}

std::string Identificador(REFGUID guid)
{
    wchar_t texto[40];
    StringFromGUID2(guid, texto, 40);
    return ParaUtf8(texto);
}

// A type as a programmer writes it.
std::string Escrito(ITypeInfo &tipo, const TYPEDESC &descricao)
{
    switch (descricao.vt) {
    case VT_PTR:
        return Escrito(tipo, *descricao.lptdesc) + "*";
    case VT_SAFEARRAY:
        return "SAFEARRAY(" + Escrito(tipo, *descricao.lptdesc) + ")";
    case VT_USERDEFINED: {
        Com<ITypeInfo> referido;
        Exige(tipo.GetRefTypeInfo(descricao.hreftype, referido.Recebe()));
        return NomeDe(*referido.Ponteiro());
    }
    default: {
        static const std::map<VARTYPE, std::string> nomes{
            {VT_I2, "short"},          {VT_I4, "long"},         {VT_DATE, "DATE"},           {VT_BSTR, "BSTR"},
            {VT_BOOL, "VARIANT_BOOL"}, {VT_VARIANT, "VARIANT"}, {VT_DISPATCH, "IDispatch*"}, {VT_HRESULT, "HRESULT"}};
        const auto nome = nomes.find(descricao.vt);
        return nome == nomes.end() ? "?" + std::to_string(descricao.vt) : nome->second;
    }
    }
}

std::string Padrao(const PARAMDESCEX &padrao)
{
    const VARIANT &valor = padrao.varDefaultValue;
    switch (V_VT(&valor)) {
    case VT_BSTR:
        return "\"" + ParaUtf8({V_BSTR(&valor), SysStringLen(V_BSTR(&valor))}) + "\"";
    case VT_BOOL:
        return V_BOOL(&valor) == VARIANT_TRUE ? "True" : "?";
    case VT_DATE:
        return "date " + std::to_string(static_cast<int>(V_DATE(&valor)));
    default:
        return "?";
    }
}

// The members of an interface in the order of its table: place, number, kind, name, arguments, answer.
std::vector<std::string> Membros(ITypeLib &biblioteca, REFIID iid)
{
    Com<ITypeInfo> tipo;
    Com<ITypeInfo> tabela;
    HREFTYPE referencia = 0;
    Exige(biblioteca.GetTypeInfoOfGuid(iid, tipo.Recebe()));
    Exige(tipo->GetRefTypeOfImplType(static_cast<UINT>(-1), &referencia));
    Exige(tipo->GetRefTypeInfo(referencia, tabela.Recebe()));
    TYPEATTR *atributos = nullptr;
    Exige(tabela->GetTypeAttr(&atributos));
    const UINT quantos = atributos->cFuncs;
    EXPECT_NE(atributos->wTypeFlags & TYPEFLAG_FOLEAUTOMATION, 0);
    tabela->ReleaseTypeAttr(atributos);
    std::vector<std::string> membros;
    for (UINT i = 0; i < quantos; ++i) {
        FUNCDESC *funcao = nullptr;
        Exige(tabela->GetFuncDesc(i, &funcao));
        BSTR nomes[16]{};
        UINT escritos = 0;
        Exige(tabela->GetNames(funcao->memid, nomes, 16, &escritos));
        const auto lugar = funcao->oVft / static_cast<SHORT>(sizeof(void *)) - 6; // after those of IDispatch
        const std::map<INVOKEKIND, std::string> especies{
            {INVOKE_FUNC, "F"}, {INVOKE_PROPERTYGET, "G"}, {INVOKE_PROPERTYPUT, "S"}, {INVOKE_PROPERTYPUTREF, "S ref"}};
        std::string texto = std::to_string(lugar) + " " + std::to_string(funcao->memid) + " " +
                            especies.at(funcao->invkind) + " " + Texto(nomes[0]) + "(";
        std::string resposta;
        for (SHORT p = 0; p < funcao->cParams; ++p) {
            const ELEMDESC &argumento = funcao->lprgelemdescParam[p];
            const USHORT sinais = argumento.paramdesc.wParamFlags;
            const std::string nome = Texto(nomes[p + 1]);
            if ((sinais & PARAMFLAG_FRETVAL) != 0) {
                resposta = " " + Escrito(*tabela.Ponteiro(), *argumento.tdesc.lptdesc);
                continue;
            }
            texto += p == 0 ? "" : ", ";
            texto += (sinais & PARAMFLAG_FOPT) != 0 ? "optional " : "";
            texto += (sinais & PARAMFLAG_FOUT) != 0 ? "ref " : "";
            texto += Escrito(*tabela.Ponteiro(), argumento.tdesc);
            texto += funcao->invkind == INVOKE_FUNC ? " " + nome : "";
            if ((sinais & PARAMFLAG_FHASDEFAULT) != 0) {
                texto += " = " + Padrao(*argumento.paramdesc.pparamdescex);
            }
        }
        EXPECT_EQ(Escrito(*tabela.Ponteiro(), funcao->elemdescFunc.tdesc), "HRESULT");
        membros.push_back(texto + ")" + resposta);
        tabela->ReleaseFuncDesc(funcao);
    }
    return membros;
}

class BibliotecaDeTiposTeste : public testing::Test {
  protected:
    BibliotecaDeTiposTeste()
    {
        const std::wstring arquivo = ComponenteDeTeste::Pasta() + L"\\ZTAVOREQUIP.dll";
        Exige(LoadTypeLibEx(arquivo.c_str(), REGKIND_NONE, Biblioteca.Recebe()));
    }

    Com<ITypeLib> Biblioteca;
};

TEST_F(BibliotecaDeTiposTeste, OfTheLibrary_HasItsIdentityAndVersion)
{
    TLIBATTR *atributos = nullptr;
    ASSERT_EQ(Biblioteca->GetLibAttr(&atributos), S_OK);
    EXPECT_EQ(Identificador(atributos->guid), "{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}");
    EXPECT_EQ(atributos->wMajorVerNum, 1);
    EXPECT_EQ(atributos->wMinorVerNum, 9);
    EXPECT_EQ(atributos->syskind, sizeof(void *) == 8 ? SYS_WIN64 : SYS_WIN32);
    Biblioteca->ReleaseTLibAttr(atributos);
    BSTR nome = nullptr;
    BSTR texto = nullptr;
    ASSERT_EQ(Biblioteca->GetDocumentation(-1, &nome, &texto, nullptr, nullptr), S_OK);
    EXPECT_EQ(Texto(nome), "ZTAVOREQUIP");
    EXPECT_EQ(Texto(texto), "Cadastro de equipamentos eletrônicos de fiscalização");
}

TEST_F(BibliotecaDeTiposTeste, OfTheClasses_TellsTheirIdentifiersInterfacesAndThatOnlyOneIsCreated)
{
    const std::vector<std::vector<std::string>> esperadas{
        {"Geral", "{80D349F1-1D47-42CF-B53F-BA4AA48D1130}", "_Geral", "{96D691EE-4A71-4CEB-A769-18576E55B4EA}",
         "created"},
        {"Especifica", "{D599E5C6-7E0F-4CBC-9F9E-34515432F1E3}", "_Especifica",
         "{9D87B2B9-072C-44F6-9261-95A712E625DF}", ""},
        {"CVorEquip", "{0B361D02-D4D4-4C2D-ACA2-2631FF2DED68}", "_CVorEquip", "{811A0E52-B1BA-4C42-9692-4766E2C4F2A3}",
         ""},
        {"CVORPesqEquip", "{9EAB817F-EC1F-4500-AE98-0E8025CDC676}", "_CVORPesqEquip",
         "{1D2D8966-F0F4-438D-8314-0AEAE207955F}", ""},
    };
    std::vector<std::vector<std::string>> achadas;
    for (UINT i = 0; i < Biblioteca->GetTypeInfoCount(); ++i) {
        Com<ITypeInfo> tipo;
        TYPEATTR *atributos = nullptr;
        ASSERT_EQ(Biblioteca->GetTypeInfo(i, tipo.Recebe()), S_OK);
        ASSERT_EQ(tipo->GetTypeAttr(&atributos), S_OK);
        if (atributos->typekind == TKIND_COCLASS) {
            Com<ITypeInfo> face;
            HREFTYPE referencia = 0;
            INT sinais = 0;
            TYPEATTR *daFace = nullptr;
            ASSERT_EQ(atributos->cImplTypes, 1);
            ASSERT_EQ(tipo->GetImplTypeFlags(0, &sinais), S_OK);
            EXPECT_EQ(sinais, IMPLTYPEFLAG_FDEFAULT);
            ASSERT_EQ(tipo->GetRefTypeOfImplType(0, &referencia), S_OK);
            ASSERT_EQ(tipo->GetRefTypeInfo(referencia, face.Recebe()), S_OK);
            ASSERT_EQ(face->GetTypeAttr(&daFace), S_OK);
            EXPECT_EQ(daFace->wTypeFlags & (TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE),
                      TYPEFLAG_FDUAL | TYPEFLAG_FDISPATCHABLE);
            achadas.push_back({NomeDe(*tipo.Ponteiro()), Identificador(atributos->guid), NomeDe(*face.Ponteiro()),
                               Identificador(daFace->guid),
                               (atributos->wTypeFlags & TYPEFLAG_FCANCREATE) != 0 ? "created" : ""});
            face->ReleaseTypeAttr(daFace);
        }
        tipo->ReleaseTypeAttr(atributos);
    }
    EXPECT_EQ(achadas, esperadas);
}

TEST_F(BibliotecaDeTiposTeste, OfGeral_TellsItsMembersInOrder)
{
    const std::vector<std::string> esperados{
        "1 1 G MDB() IDispatch*",
        "2 1 S ref MDB(IDispatch*)",
        "3 2 G Depurar() VARIANT_BOOL",
        "4 2 S Depurar(VARIANT_BOOL)",
        "5 3 G InstanciarFormsClickMenu() VARIANT_BOOL",
        "6 3 S InstanciarFormsClickMenu(VARIANT_BOOL)",
        "7 4 G PossuiJanelaEnviaRecebe() VARIANT_BOOL",
        "8 4 S PossuiJanelaEnviaRecebe(VARIANT_BOOL)",
        "9 5 G ActBar() IDispatch*",
        "10 5 S ref ActBar(IDispatch*)",
        "11 6 G Modulo() IDispatch*",
        "12 7 F RegistraAM(optional VARIANT NomeAPP = \"\")",
        "13 8 F DesregistraAM(optional VARIANT NomeAPP = \"\")",
        "14 9 F Parametros(ref IDispatch** FormMDI, ref IDispatch** MenuDestino, ref IDispatch** Relatorios, "
        "ref IDispatch** Ajuda, ref IDispatch** MDB, ref IDispatch** oAppEXE)",
        "15 10 F Logon(ref IDispatch** objMTM, ref IDispatch** objSCA, VARIANT sMunicCreden)",
        "16 11 F Logoff()",
        "17 12 F FecharJanelasAtivas()",
        "18 13 F ClickMenu(VARIANT sTool) VARIANT_BOOL",
        "19 14 F Encerra()",
        "20 15 G CEspecifica() _Especifica*",
        "21 16 F HabilitarItem(VARIANT sTool) VARIANT_BOOL",
        "22 17 S ref cGlobal(IDispatch*)",
        "23 17 G cGlobal() IDispatch*",
        "24 18 G TrataBD() IDispatch*",
        "25 19 G UsandoModuloQMRauxiliar() VARIANT_BOOL",
        "26 20 S ref ObjInterface(IDispatch*)",
        "27 20 G ObjInterface() IDispatch*",
        "28 21 G SistemaQMR() BSTR",
        "29 22 G VersaoSistemaQMR() short",
        "30 23 G QMRModuloID() BSTR",
        "31 24 G QMRVersaoModulo() short",
        "32 25 F ObtemTransacao(BSTR sTransID) IDispatch*",
        "33 26 F ObtemTransacao2(BSTR sTransID, ref IDispatch** origem)",
        "34 27 F ObtemTransacao3(BSTR sTransID, ref VARIANT* origem)",
    };
    EXPECT_EQ(Membros(*Biblioteca.Ponteiro(), __uuidof(_Geral)), esperados);
}

TEST_F(BibliotecaDeTiposTeste, OfEspecifica_TellsItsMembersInOrder)
{
    const std::vector<std::string> esperados{
        "1 1 F Inicializa(ref IDispatch** oGeral)",
        "2 2 F ClickMenu(ref VARIANT* sTool) IDispatch*",
        "3 3 F HabilitarItem(BSTR sTool) VARIANT_BOOL",
        "4 4 F HabilitarMenu()",
        "5 5 F Menu(ref SAFEARRAY(IDispatch*)* oItens)",
        "6 6 F MenuAuxiliar(ref SAFEARRAY(IDispatch*)* oItens)",
        "7 7 F CreateCVORPesqEquip() _CVORPesqEquip*",
        "8 8 F CreateCVorEquip() _CVorEquip*",
        "9 9 F ImprimeAfericaoVigenteEquipto(long lSamdInfr, optional long lNroIntEquipto, optional long lCodOat, "
        "optional BSTR sSerie)",
    };
    EXPECT_EQ(Membros(*Biblioteca.Ponteiro(), __uuidof(_Especifica)), esperados);
}

TEST_F(BibliotecaDeTiposTeste, OfCVorEquip_TellsItsMembersInOrder)
{
    const std::vector<std::string> esperados{
        "1 1 G NroIntEquip() long",
        "2 2 G Modelo() BSTR",
        "3 3 G Codigo() BSTR",
        "4 4 G VelocPerm() short",
        "5 5 G NroInmetro() BSTR",
        "6 6 G MarcaInmetro() BSTR",
        "7 7 G DtVerifInmetro() DATE",
        "8 8 F SelecionaEquipamento(BSTR sCodEquip, optional BSTR sTipoEquip, optional DATE dtInfracao = date 0) "
        "VARIANT_BOOL",
        "9 9 F BuscaEquipamento(BSTR sCodEquip, optional BSTR sTipoEquip, optional DATE dtInfracao = date 0) "
        "VARIANT_BOOL",
        "10 10 F ImpCertificadoAfericaoEquipto(long lCodOat, BSTR sSerie, BSTR sTxtIdent, "
        "optional VARIANT_BOOL bPreview = True) VARIANT_BOOL",
        "11 11 F LimpaArqTemp()",
    };
    EXPECT_EQ(Membros(*Biblioteca.Ponteiro(), __uuidof(_CVorEquip)), esperados);
}

TEST_F(BibliotecaDeTiposTeste, OfCVORPesqEquip_TellsItsMembersInOrder)
{
    const std::vector<std::string> esperados{
        "1 1 F CarregaPesqEquip(ref long* lNroEquip, ref BSTR* sCodEquip, ref BSTR* sModelo) VARIANT_BOOL",
        "2 2 F CarregaPesqEquip2(ref long* lNroEquip, ref BSTR* sCodEquip, ref BSTR* sModelo, "
        "optional ref short* iVelPerm, optional BSTR sTipoEquipto) VARIANT_BOOL",
        "3 3 F CarregaPesqEquip3(ref long* lNroEquip, ref BSTR* sCodEquip, ref BSTR* sModelo, "
        "optional ref short* iVelPerm, optional BSTR sTipoEquipto, optional VARIANT_BOOL bUsaSetor) VARIANT_BOOL",
        "4 4 F BuscaEquipto(ref long* lNroEquip, ref BSTR* sCodEquip, ref BSTR* sModelo, "
        "optional ref short* iVelPerm, optional BSTR sTipoEquipto, optional VARIANT_BOOL bUsaSetor) VARIANT_BOOL",
        "5 5 F ConsultaAfericaoVigente(long lNroEquip, ref BSTR* sNroInmetro, ref BSTR* sMarcaInmetro, "
        "ref DATE* dDtInmetro, DATE dDtInfracao) VARIANT_BOOL",
    };
    EXPECT_EQ(Membros(*Biblioteca.Ponteiro(), __uuidof(_CVORPesqEquip)), esperados);
}

TEST_F(BibliotecaDeTiposTeste, OfEveryMember_TellsWhatItIsForInPortuguese)
{
    for (const IID &iid : {__uuidof(_Geral), __uuidof(_Especifica), __uuidof(_CVorEquip), __uuidof(_CVORPesqEquip)}) {
        Com<ITypeInfo> tipo;
        ASSERT_EQ(Biblioteca->GetTypeInfoOfGuid(iid, tipo.Recebe()), S_OK);
        for (MEMBERID membro = 1; membro <= 27; ++membro) {
            BSTR texto = nullptr;
            if (SUCCEEDED(tipo->GetDocumentation(membro, nullptr, &texto, nullptr, nullptr))) {
                EXPECT_GT(SysStringLen(texto), 10U) << NomeDe(*tipo.Ponteiro()) << " " << membro;
            }
            SysFreeString(texto);
        }
    }
    Com<ITypeInfo> geral;
    ASSERT_EQ(Biblioteca->GetTypeInfoOfGuid(__uuidof(_Geral), geral.Recebe()), S_OK);
    BSTR texto = nullptr;
    ASSERT_EQ(geral->GetDocumentation(11, nullptr, &texto, nullptr, nullptr), S_OK);
    EXPECT_EQ(Texto(texto), "Termina a sessão e fecha as janelas");
}

} // namespace
} // namespace nativo
