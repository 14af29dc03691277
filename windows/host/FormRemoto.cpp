#include "windows/host/FormRemoto.h"

#include "windows/automation/Tardio.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

// Above every handle of a window and every number of a form.
constexpr std::int64_t DoHospedeiro = std::int64_t{1} << 40;

} // namespace

HWND JanelaAlheia(std::int64_t hwnd)
{
    return hwnd < DoHospedeiro ? nullptr : reinterpret_cast<HWND>(static_cast<LONG_PTR>(hwnd - DoHospedeiro));
}

HWND ManipuladorDe(const ObjetoRemoto &objeto)
{
    HWND janela = nullptr;
    IgnoraErro([&] {
        // Handles have 32 significant bits, in whatever kind of number they come.
        const double numero = Tardio(objeto).Chama<double>("hWnd");
        janela = reinterpret_cast<HWND>(
            static_cast<LONG_PTR>(static_cast<std::uint32_t>(static_cast<std::int64_t>(numero))));
    });
    return IsWindow(janela) ? janela : nullptr;
}

HWND FormRemoto::Manipulador() const
{
    return ManipuladorDe(*this);
}

bool FormRemoto::Enabled() const
{
    return Tardio(*this).Chama<bool>("Enabled");
}

void FormRemoto::DefineEnabled(bool valor)
{
    Tardio(*this).Escreve("Enabled", valor);
}

bool FormRemoto::Visible() const
{
    return Tardio(*this).Chama<bool>("Visible");
}

void FormRemoto::DefineVisible(bool valor)
{
    Tardio(*this).Escreve("Visible", valor);
}

void FormRemoto::SetFocus()
{
    Tardio(*this).Chama("SetFocus");
}

std::string FormRemoto::Caption() const
{
    return Tardio(*this).Chama<std::string>("Caption");
}

void FormRemoto::DefineCaption(const std::string &valor)
{
    Tardio(*this).Escreve("Caption", valor);
}

std::int32_t FormRemoto::Left() const
{
    return Tardio(*this).Chama<std::int32_t>("Left");
}

void FormRemoto::DefineLeft(std::int32_t valor)
{
    Tardio(*this).Escreve("Left", valor);
}

std::int32_t FormRemoto::Top() const
{
    return Tardio(*this).Chama<std::int32_t>("Top");
}

void FormRemoto::DefineTop(std::int32_t valor)
{
    Tardio(*this).Escreve("Top", valor);
}

std::int32_t FormRemoto::Width() const
{
    return Tardio(*this).Chama<std::int32_t>("Width");
}

void FormRemoto::DefineWidth(std::int32_t valor)
{
    Tardio(*this).Escreve("Width", valor);
}

std::int32_t FormRemoto::Height() const
{
    return Tardio(*this).Chama<std::int32_t>("Height");
}

void FormRemoto::DefineHeight(std::int32_t valor)
{
    Tardio(*this).Escreve("Height", valor);
}

std::int16_t FormRemoto::WindowState() const
{
    return Tardio(*this).Chama<std::int16_t>("WindowState");
}

void FormRemoto::DefineWindowState(std::int16_t valor)
{
    Tardio(*this).Escreve("WindowState", valor);
}

bool FormRemoto::MDIChild() const
{
    return Tardio(*this).Chama<bool>("MDIChild");
}

std::int64_t FormRemoto::hwnd() const
{
    return DoHospedeiro + static_cast<std::int64_t>(reinterpret_cast<LONG_PTR>(Manipulador()));
}

void FormRemoto::ZOrder(std::int16_t posicao)
{
    Tardio(*this).Chama("ZOrder", posicao);
}

const std::vector<Ref<IControle>> &FormRemoto::Controles() const
{
    static const std::vector<Ref<IControle>> nenhum;
    return nenhum;
}

void FormRemoto::DefineControleAtivo(const Ref<IControle> &)
{
    throw Falha(NumeroFalha::MembroInexistente);
}

void FormRemoto::Unload(bool &)
{
    throw Falha(NumeroFalha::MembroInexistente);
}

void FormRemoto::Ativada()
{
    throw Falha(NumeroFalha::MembroInexistente);
}

void FormRemoto::Desativada()
{
    throw Falha(NumeroFalha::MembroInexistente);
}

void FormRemoto::Redimensionada()
{
    throw Falha(NumeroFalha::MembroInexistente);
}

void RegistraFormRemoto()
{
    RegistraRemoto<IForm, FormRemoto>();
}

} // namespace nativo
