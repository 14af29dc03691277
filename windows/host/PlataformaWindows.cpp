#include "windows/host/PlataformaWindows.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "tela/Twips.h"
#include "windows/automation/Texto16.h"
#include "windows/host/FormRemoto.h"

#include <shlwapi.h>

#include <array>
#include <cmath>

namespace nativo {
namespace {

class AplicacaoDoComponente : public IAplicacao {
  public:
    std::string_view NomeTipo() const override { return "App"; }
    std::string Nome() const override { return std::string(NomeComponente); }
    std::string Titulo() const override { return "Equipamentos"; }
    std::string Descricao() const override { return "Registro de Equipamentos"; }
};

[[noreturn]] void FalhaDeArquivo(DWORD erro)
{
    switch (erro) {
    case ERROR_FILE_NOT_FOUND:
        throw Falha(NumeroFalha::ArquivoNaoEncontrado);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        throw Falha(NumeroFalha::CaminhoNaoEncontrado);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        throw Falha(NumeroFalha::DiscoCheio);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
        throw Falha(NumeroFalha::PermissaoNegada);
    default:
        throw Falha(NumeroFalha::ErroDeAcesso);
    }
}

bool EhPasta(const std::wstring &caminho)
{
    const DWORD atributos = GetFileAttributesW(caminho.c_str());
    return atributos != INVALID_FILE_ATTRIBUTES && (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// A text in the letters of the system's code page, which has not all of them.
std::string ParaAnsi(const std::string &texto)
{
    const std::wstring largo = ParaUtf16(texto);
    const int tamanho =
        WideCharToMultiByte(CP_ACP, 0, largo.c_str(), static_cast<int>(largo.size()), nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<std::size_t>(tamanho), '\0');
    WideCharToMultiByte(CP_ACP, 0, largo.c_str(), static_cast<int>(largo.size()), ansi.data(), tamanho, nullptr,
                        nullptr);
    return ansi;
}

struct FechaManipulador {
    using pointer = HANDLE;
    void operator()(HANDLE aberto) const { CloseHandle(aberto); }
};

} // namespace

class PlataformaWindows::Procura {
  public:
    explicit Procura(const std::wstring &padrao) : m_Figura(padrao.substr(padrao.find_last_of(L"\\/:") + 1))
    {
        m_Manipulador = FindFirstFileW(padrao.c_str(), &m_Dados);
        m_Tem = m_Manipulador != INVALID_HANDLE_VALUE;
    }
    Procura(const Procura &) = delete;
    Procura &operator=(const Procura &) = delete;
    ~Procura()
    {
        if (m_Manipulador != INVALID_HANDLE_VALUE) {
            FindClose(m_Manipulador);
        }
    }

    std::string Proximo()
    {
        std::string nome;
        while (m_Tem && nome.empty()) {
            // The system compares short names too, which nobody has given.
            constexpr DWORD naoComuns = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
            if ((m_Dados.dwFileAttributes & naoComuns) == 0 &&
                PathMatchSpecW(m_Dados.cFileName, m_Figura.c_str()) == TRUE) {
                nome = ParaUtf8(m_Dados.cFileName);
            }
            m_Tem = FindNextFileW(m_Manipulador, &m_Dados) == TRUE;
        }
        return nome;
    }

  private:
    std::wstring m_Figura;
    WIN32_FIND_DATAW m_Dados{};
    HANDLE m_Manipulador;
    bool m_Tem;
};

PlataformaWindows::PlataformaWindows(Ref<IJanelas> janelas, std::function<HWND()> janelaPrincipal)
    : m_Janelas(std::move(janelas)),
      m_JanelaPrincipal(std::move(janelaPrincipal)),
      m_Forms(m_Janelas),
      m_Aplicacao(Novo<AplicacaoDoComponente>())
{
}

void PlataformaWindows::DefinePonteiro(std::int16_t valor)
{
    m_Ponteiro = valor;
    m_Janelas->DefineEspera(valor == PonteiroAmpulheta);
}

std::int32_t PlataformaWindows::LarguraTela() const
{
    return m_Janelas->LarguraTela() * TwipsPorPixel;
}

std::int32_t PlataformaWindows::AlturaTela() const
{
    return m_Janelas->AlturaTela() * TwipsPorPixel;
}

bool PlataformaWindows::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim)
{
    return m_Janelas->PerguntaSimNao(texto, titulo, padraoSim);
}

void PlataformaWindows::CaixaInformacao(const std::string &texto, const std::string &titulo)
{
    m_Janelas->Informa(texto, titulo);
}

void PlataformaWindows::Descarrega(const Ref<IForm> &form)
{
    if (!Aberto(form)) {
        FechaInvolucro(form);
        return;
    }
    const Ref<IForm> viva = form;
    Ref<IForm> involucro;
    IgnoraErro([&] { involucro = viva->frmParent(); }); // a form need not have the member
    m_Forms.Descarrega(viva);
    if (!Aberto(viva)) {
        FechaInvolucro(involucro);
    }
}

void PlataformaWindows::FechaInvolucro(const Ref<IForm> &form) const
{
    const auto *alheio = dynamic_cast<const FormRemoto *>(form.Ponteiro());
    const HWND janela = alheio == nullptr ? nullptr : alheio->Manipulador();
    // The shell unloads a form and then what wraps it: one request is enough until the window has got it.
    MSG pendente;
    if (janela != nullptr && janela != m_JanelaPrincipal() &&
        PeekMessageW(&pendente, janela, WM_CLOSE, WM_CLOSE, PM_NOREMOVE | PM_QS_POSTMESSAGE) == FALSE) {
        PostMessageW(janela, WM_CLOSE, 0, 0);
    }
}

void PlataformaWindows::DefineTextoJanela(std::int64_t hwnd, const std::string &texto)
{
    if (m_Forms.DefineTexto(hwnd, texto)) {
        return;
    }
    if (const HWND janela = JanelaAlheia(hwnd)) {
        SetWindowTextA(janela, ParaAnsi(texto).c_str());
    }
}

Data PlataformaWindows::Agora() const
{
    SYSTEMTIME agora;
    GetLocalTime(&agora);
    return DataDe(agora.wDay, agora.wMonth, agora.wYear, agora.wHour, agora.wMinute, agora.wSecond);
}

std::string PlataformaWindows::DataCurta(Data data) const
{
    const PartesData partes = data.Partes();
    SYSTEMTIME dia{};
    dia.wDay = static_cast<WORD>(partes.Dia);
    dia.wMonth = static_cast<WORD>(partes.Mes);
    dia.wYear = static_cast<WORD>(partes.Ano);
    std::array<wchar_t, 80> texto{};
    if (GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &dia, nullptr, texto.data(),
                        static_cast<int>(texto.size()), nullptr) == 0) {
        return CStr(Data{std::trunc(data.Valor)});
    }
    return ParaUtf8(texto.data());
}

std::string PlataformaWindows::CaminhoModulo() const
{
    static const int deste = 0;
    HMODULE modulo = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t *>(&deste), &modulo);
    std::wstring arquivo(MAX_PATH, L'\0');
    DWORD tamanho = GetModuleFileNameW(modulo, arquivo.data(), static_cast<DWORD>(arquivo.size()));
    while (tamanho == arquivo.size()) {
        arquivo.resize(2 * arquivo.size());
        tamanho = GetModuleFileNameW(modulo, arquivo.data(), static_cast<DWORD>(arquivo.size()));
    }
    arquivo.resize(tamanho);
    return ParaUtf8(arquivo.substr(0, arquivo.find_last_of(L'\\')));
}

bool PlataformaWindows::ExisteArquivo(const std::string &caminho) const
{
    const std::wstring largo = ParaUtf16(caminho);
    return GetFileAttributesW(largo.c_str()) != INVALID_FILE_ATTRIBUTES && !EhPasta(largo);
}

std::int64_t PlataformaWindows::TamanhoArquivo(const std::string &caminho) const
{
    WIN32_FILE_ATTRIBUTE_DATA dados{};
    if (GetFileAttributesExW(ParaUtf16(caminho).c_str(), GetFileExInfoStandard, &dados) == FALSE) {
        FalhaDeArquivo(GetLastError());
    }
    if ((dados.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado);
    }
    return (static_cast<std::int64_t>(dados.nFileSizeHigh) << 32) | dados.nFileSizeLow;
}

void PlataformaWindows::ApagaArquivo(const std::string &caminho)
{
    const std::wstring largo = ParaUtf16(caminho);
    if (EhPasta(largo)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado); // a directory is no file, and stays
    }
    if (DeleteFileW(largo.c_str()) == FALSE) {
        FalhaDeArquivo(GetLastError());
    }
}

void PlataformaWindows::GravaArquivo(const std::string &caminho, const Bytes &bytes)
{
    const std::wstring largo = ParaUtf16(caminho);
    const HANDLE aberto = CreateFileW(largo.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (aberto == INVALID_HANDLE_VALUE) {
        const DWORD erro = GetLastError();
        FalhaDeArquivo(EhPasta(largo) ? ERROR_INVALID_NAME : erro);
    }
    const std::unique_ptr<HANDLE, FechaManipulador> arquivo(aberto);
    DWORD gravados = 0;
    if (WriteFile(aberto, bytes.data(), static_cast<DWORD>(bytes.size()), &gravados, nullptr) == FALSE) {
        FalhaDeArquivo(GetLastError());
    }
    if (gravados != bytes.size()) {
        FalhaDeArquivo(ERROR_DISK_FULL);
    }
}

std::string PlataformaWindows::PrimeiroArquivo(const std::string &padrao)
{
    m_Procura = std::make_shared<Procura>(ParaUtf16(padrao));
    return ProximoArquivo();
}

std::string PlataformaWindows::ProximoArquivo()
{
    std::string nome = m_Procura ? m_Procura->Proximo() : std::string();
    if (nome.empty()) {
        m_Procura.reset(); // the directory is let go of
    }
    return nome;
}

} // namespace nativo
