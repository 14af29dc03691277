#include "host/IMDB.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Elemento.h"
#include "windows/host/OuAusente.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

class FieldsRemoto : public Remoto<IFields> {
  public:
    using Remoto::Remoto;

    ::Valor Value() const override { return Tardio(*this).Chama<::Valor>("Value"); }
};

class CursorRemoto : public Remoto<ICursor> {
  public:
    using Remoto::Remoto;

    bool EOF_() const override { return Tardio(*this).Chama<bool>("EOF"); }
    std::int32_t RecordCount() const override { return Tardio(*this).Chama<std::int32_t>("RecordCount"); }
    Ref<IFields> Fields(const std::string &nome) const override { return Elemento<IFields>(*this, "Fields", nome); }
    void MoveNext() override { Tardio(*this).Chama("MoveNext"); }
    void Close() override { Tardio(*this).Chama("Close"); }
};

class MDBRemoto : public Remoto<IMDB> {
  public:
    using Remoto::Remoto;

    std::string Name() const override { return Tardio(*this).Chama<std::string>("Name"); }
    Ref<ICursor> OpenRecordset(const std::string &sql, std::int16_t tipo, const Valor &opcoes,
                               const Valor &trava) override
    {
        return Tardio(*this).Chama<Ref<ICursor>>("OpenRecordset", sql, tipo, OuAusente(opcoes), OuAusente(trava));
    }
};

} // namespace

void RegistraBancoRemoto()
{
    RegistraRemoto<IMDB, MDBRemoto>();
    RegistraRemoto<ICursor, CursorRemoto>();
    RegistraRemoto<IFields, FieldsRemoto>();
}

} // namespace nativo
