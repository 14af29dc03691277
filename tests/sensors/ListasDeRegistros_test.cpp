#include "equipment/clsEquipto.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "tests/sensors/RegistrosCompletos.h"

#include <gtest/gtest.h>

// What the collections of sensors and of calibrations have in common.

namespace {

struct Sensores {
    using Lista = clsListaSensores;
    using Dono = clsEquipto;
    using Registro = clsSensor;
    using ED = SensorED;
    static constexpr const char *Nome = "clsListaSensores";
    static constexpr const char *Letra = "S";
    static constexpr const char *AddED = "AddSensorED";
    static constexpr const char *AddCopia = "AddSensor";

    static Ref<Lista> De(const Ref<Dono> &dono) { return dono->ListaSensores(); }
    static Ref<Registro> Acrescenta(const Ref<Lista> &lista, const std::string &texto) { return lista->Add(7, texto); }
    static Ref<Registro> AcrescentaED(const Ref<Lista> &lista, const Ref<SensorED> &ed)
    {
        return lista->AddSensorED(ed);
    }
    static Ref<Registro> AcrescentaCopia(const Ref<Lista> &lista, const Ref<Registro> &registro)
    {
        return lista->AddSensor(registro);
    }
    static Ref<Dono> DonoDe(const Registro &registro) { return registro.Equipto(); }
    static Ref<SensorED> Completo() { return SensorCompletoED(); }
    static std::string Campos() { return CamposDoSensor; }
    static std::string Campos(const std::string &texto) { return "{0, 7, " + texto + ", 0, 0, 0, , , }"; }
};

struct Afericoes {
    using Lista = clsListaAfericoes;
    using Dono = clsSensor;
    using Registro = clsAfericao;
    using ED = AfericaoED;
    static constexpr const char *Nome = "clsListaAfericoes";
    static constexpr const char *Letra = "A";
    static constexpr const char *AddED = "AddAfericaoED";
    static constexpr const char *AddCopia = "AddAfericao";

    static Ref<Lista> De(const Ref<Dono> &dono) { return dono->ListaAfericoes(); }
    static Ref<Registro> Acrescenta(const Ref<Lista> &lista, const std::string &texto)
    {
        return ::Acrescenta(lista, texto);
    }
    static Ref<Registro> AcrescentaED(const Ref<Lista> &lista, const Ref<AfericaoED> &ed)
    {
        return lista->AddAfericaoED(ed);
    }
    static Ref<Registro> AcrescentaCopia(const Ref<Lista> &lista, const Ref<Registro> &registro)
    {
        return lista->AddAfericao(registro);
    }
    static Ref<Dono> DonoDe(const Registro &registro) { return registro.Sensor(); }
    static Ref<AfericaoED> Completo() { return AfericaoCompletaED(); }
    static std::string Campos() { return CamposDaAfericao; }
    static std::string Campos(const std::string &texto) { return CamposDe(texto); }
};

template <class T> class ListaDeRegistros : public testing::Test {
  protected:
    void SetUp() override
    {
        for (const std::string texto : {"um", "dois", "tres"}) {
            T::Acrescenta(lista, texto);
        }
    }

    static std::string Chave(int numero) { return T::Letra + std::to_string(numero); }
    static std::string Fonte(const std::string &operacao)
    {
        return "ZTAVOREQUIP < " + std::string(T::Nome) + "." + operacao;
    }
    // The path of an operation that adds by another one.
    static std::string FonteDoAdd(const std::string &operacao)
    {
        return Fonte("Add < ") + std::string(T::Nome) + "." + operacao;
    }

    Ref<typename T::Dono> dono = Novo<typename T::Dono>();
    Ref<typename T::Lista> lista = T::De(dono);
};

using Ambas = testing::Types<Sensores, Afericoes>;
TYPED_TEST_SUITE(ListaDeRegistros, Ambas);

TYPED_TEST(ListaDeRegistros, Add_Several_InTheirOrderWithTheirValuesKeyAndOwnerAndNothingElse)
{
    EXPECT_EQ(Novo<typename TypeParam::Lista>()->Count(), 0);
    EXPECT_EQ(Retratos(*this->lista),
              (Textos{this->Chave(1) + TypeParam::Campos("um"), this->Chave(2) + TypeParam::Campos("dois"),
                      this->Chave(3) + TypeParam::Campos("tres")}));
    const auto novo = TypeParam::Acrescenta(this->lista, "");
    EXPECT_EQ(Retrato(*novo), this->Chave(4) + TypeParam::Campos(""));
    EXPECT_TRUE(TypeParam::DonoDe(*novo) == this->dono);
    EXPECT_TRUE(this->lista->Item(4) == novo);
    EXPECT_FALSE(this->dono->Alterado);
}

TYPED_TEST(ListaDeRegistros, Add_AfterARemovalOrAClear_KeyIsNotReusedOrRestarts)
{
    this->lista->Remove(this->Chave(2));
    EXPECT_EQ(TypeParam::Acrescenta(this->lista, "quatro")->Chave(), this->Chave(4));
    EXPECT_EQ(Retratos(*this->lista),
              (Textos{this->Chave(1) + TypeParam::Campos("um"), this->Chave(3) + TypeParam::Campos("tres"),
                      this->Chave(4) + TypeParam::Campos("quatro")}));
    this->lista->Remove(3); // the last
    EXPECT_EQ(TypeParam::Acrescenta(this->lista, "cinco")->Chave(), this->Chave(5));
    this->lista->Clear();
    this->lista->Clear();
    EXPECT_EQ(this->lista->Count(), 0);
    EXPECT_EQ(TypeParam::Acrescenta(this->lista, "seis")->Chave(), this->Chave(1));
    EXPECT_EQ(this->lista->Count(), 1);
}

TYPED_TEST(ListaDeRegistros, Add_Beyond32767_OverflowsAndAddsNothing)
{
    for (int vez = 4; vez <= 32767; ++vez) {
        TypeParam::Acrescenta(this->lista, "");
    }
    EXPECT_EQ(this->lista->Item(32767)->Chave(), this->Chave(32767));
    this->lista->Remove(this->Chave(1));
    for (int vez = 1; vez <= 2; ++vez) {
        EXPECT_TRUE(Lanca(6, this->Fonte("Add"), [&] { TypeParam::Acrescenta(this->lista, "a mais"); }));
    }
    EXPECT_TRUE(Lanca(6, this->FonteDoAdd(TypeParam::AddED),
                      [&] { TypeParam::AcrescentaED(this->lista, TypeParam::Completo()); }));
    EXPECT_TRUE(Lanca(6, this->FonteDoAdd(TypeParam::AddCopia),
                      [&] { TypeParam::AcrescentaCopia(this->lista, Novo<typename TypeParam::Registro>()); }));
    EXPECT_EQ(this->lista->Count(), 32766);
    this->lista->Clear();
    EXPECT_EQ(TypeParam::Acrescenta(this->lista, "")->Chave(), this->Chave(1));
}

TYPED_TEST(ListaDeRegistros, Item_PositionOrKey_FindsTheSameInactiveIncluded)
{
    const auto dois = this->lista->Item(2);
    dois->Ativo = false;
    EXPECT_TRUE(this->lista->Item(this->Chave(2)) == dois);
    EXPECT_TRUE(this->lista->Item(std::string(1, static_cast<char>(*TypeParam::Letra + 32)) + "2") == dois);
    EXPECT_EQ(this->lista->Count(), 3);
}

TYPED_TEST(ListaDeRegistros, ItemAndRemove_OutOfRangeOrUnknownOrStale_RaiseAndChangeNothing)
{
    this->lista->Remove(this->Chave(2));
    for (const std::int32_t posicao : {0, -1, 3}) {
        EXPECT_TRUE(Lanca(9, this->Fonte("Item (Property Get)"), [&] { this->lista->Item(posicao); }));
        EXPECT_TRUE(Lanca(9, this->Fonte("Remove"), [&] { this->lista->Remove(posicao); }));
    }
    for (const std::string chave : {"A2", "S2", "A4", "S4", "A01", "S01", " A1", " S1", "X1", ""}) {
        EXPECT_TRUE(Lanca(5, this->Fonte("Item (Property Get)"), [&] { this->lista->Item(chave); })) << chave;
        EXPECT_TRUE(Lanca(5, this->Fonte("Remove"), [&] { this->lista->Remove(chave); })) << chave;
    }
    EXPECT_EQ(this->lista->Count(), 2);
}

TYPED_TEST(ListaDeRegistros, AddED_EveryMember_IsCopiedUnaltered)
{
    const auto novo = TypeParam::AcrescentaED(this->lista, TypeParam::Completo());
    EXPECT_EQ(Retrato(*novo), this->Chave(4) + TypeParam::Campos() + " inativo");
    EXPECT_TRUE(TypeParam::DonoDe(*novo) == this->dono);
    EXPECT_TRUE(this->lista->Item(4) == novo);
}

TYPED_TEST(ListaDeRegistros, AddED_AnyActiveByteButTwo_GivesAnActiveOne)
{
    auto ED = TypeParam::Completo();
    for (const std::uint8_t octeto : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{3}, std::uint8_t{255}}) {
        ED->Ativo = octeto;
        EXPECT_TRUE(TypeParam::AcrescentaED(this->lista, ED)->Ativo) << int{octeto};
    }
    EXPECT_TRUE(TypeParam::AcrescentaED(this->lista, Novo<typename TypeParam::ED>())->Ativo);
}

TYPED_TEST(ListaDeRegistros, AddEDAndAddCopia_Nothing_RaiseFault91AndAddNothing)
{
    EXPECT_TRUE(Lanca(91, this->Fonte(TypeParam::AddED), [&] { TypeParam::AcrescentaED(this->lista, nullptr); }));
    EXPECT_TRUE(Lanca(91, this->Fonte(TypeParam::AddCopia), [&] { TypeParam::AcrescentaCopia(this->lista, nullptr); }));
    EXPECT_EQ(this->lista->Count(), 3);
    EXPECT_EQ(TypeParam::Acrescenta(this->lista, "")->Chave(), this->Chave(4));
}

TYPED_TEST(ListaDeRegistros, AddCopia_OfAListedOne_TakesValuesAndFlagsUnderANewKey)
{
    const auto outro = Novo<typename TypeParam::Dono>();
    const auto origem = TypeParam::AcrescentaED(TypeParam::De(outro), TypeParam::Completo());
    EXPECT_FALSE(TypeParam::AcrescentaCopia(this->lista, origem)->Alterado);
    origem->Alterado = true;

    const auto copia = TypeParam::AcrescentaCopia(this->lista, origem);

    EXPECT_EQ(Retrato(*copia), this->Chave(5) + TypeParam::Campos() + " inativo alterado");
    EXPECT_TRUE(TypeParam::DonoDe(*copia) == this->dono);
    EXPECT_TRUE(this->lista->Item(5) == copia);
    EXPECT_FALSE(copia == origem);
    EXPECT_EQ(origem->Chave(), this->Chave(1));
    EXPECT_TRUE(TypeParam::DonoDe(*origem) == outro);
    EXPECT_EQ(TypeParam::De(outro)->Count(), 1);
}

TYPED_TEST(ListaDeRegistros, AddCopia_OfOneOutsideAnyList_OnlyTheCopyGetsAKey)
{
    const auto novo = Novo<typename TypeParam::Registro>();
    novo->Alterado = true;
    const auto copia = TypeParam::AcrescentaCopia(this->lista, novo);
    EXPECT_EQ(novo->Chave(), "");
    EXPECT_EQ(copia->Chave(), this->Chave(4));
    EXPECT_TRUE(copia->Alterado);
}

TYPED_TEST(ListaDeRegistros, Remove_ByPositionOrKey_EndsThatOneAndNoOther)
{
    const auto um = this->lista->Item(1);
    const auto dois = this->lista->Item(2);
    const auto tres = this->lista->Item(3);
    this->lista->Remove(1);
    this->lista->Remove(this->Chave(3));
    EXPECT_EQ(Retratos(*this->lista), Textos{this->Chave(2) + TypeParam::Campos("dois")});
    EXPECT_TRUE(TypeParam::DonoDe(*um).Nada());
    EXPECT_TRUE(TypeParam::DonoDe(*tres).Nada());
    EXPECT_TRUE(TypeParam::DonoDe(*dois) == this->dono);
    EXPECT_EQ(Retrato(*um), this->Chave(1) + TypeParam::Campos("um"));
    EXPECT_FALSE(this->dono->Alterado);
}

TYPED_TEST(ListaDeRegistros, EveryOperation_AfterFinaliza_RaisesFault91)
{
    const RefFraca<Objeto> vigia = this->lista->Item(2);
    this->lista->Finaliza();
    this->lista->Finaliza();
    this->lista->Clear();
    EXPECT_TRUE(vigia.Nada());
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { this->lista->Count(); }));
    EXPECT_TRUE(Lanca(91, this->Fonte("Item (Property Get)"), [&] { this->lista->Item(1); }));
    EXPECT_TRUE(Lanca(91, this->Fonte("Item (Property Get)"), [&] { this->lista->Item(this->Chave(1)); }));
    EXPECT_TRUE(Lanca(91, this->Fonte("Add"), [&] { TypeParam::Acrescenta(this->lista, ""); }));
    EXPECT_TRUE(Lanca(91, this->FonteDoAdd(TypeParam::AddED),
                      [&] { TypeParam::AcrescentaED(this->lista, TypeParam::Completo()); }));
    EXPECT_TRUE(Lanca(91, this->FonteDoAdd(TypeParam::AddCopia),
                      [&] { TypeParam::AcrescentaCopia(this->lista, Novo<typename TypeParam::Registro>()); }));
    EXPECT_TRUE(Lanca(91, this->Fonte("Remove"), [&] { this->lista->Remove(1); }));
    EXPECT_TRUE(Lanca(91, this->Fonte("Remove"), [&] { this->lista->Remove(this->Chave(1)); }));
}

TYPED_TEST(ListaDeRegistros, ListHeldBeyondItsOwner_IsEnded)
{
    const auto guardado = this->lista->Item(1);
    const RefFraca<Objeto> outro = this->lista->Item(2);
    this->dono = nullptr;
    EXPECT_TRUE(TypeParam::DonoDe(*guardado).Nada());
    EXPECT_TRUE(outro.Nada());
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { this->lista->Count(); }));
}

} // namespace
